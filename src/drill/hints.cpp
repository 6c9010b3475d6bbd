#include "drill/hints.h"

#include "common/text.h"
#include "store/records.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace cuedrill::drill {
namespace {

constexpr std::string_view word_separators = " ;,.?";

/// The record numbers to draw answers from. They are listed only if there are gaps between the lowest and the highest;
/// otherwise any number in that range belongs to a record.
class RecordNumbers {
public:
    RecordNumbers(platform::Database& database, std::int64_t record_count)
        : lowest_(store::single_number(database, "Select min(cnt) as conto from qa"))
    {
        const std::int64_t highest = store::single_number(database, "Select max(cnt) as conto from qa");
        count_ = highest - lowest_ + 1;
        if (count_ == record_count)
            return;
        for (const platform::Row row : database.query("Select cnt from qa order by cnt"))
            numbers_.push_back(static_cast<std::int64_t>(store::nz(row.field(0))));
        count_ = static_cast<std::int64_t>(numbers_.size());
    }

    [[nodiscard]] std::int64_t count() const { return count_; }

    [[nodiscard]] std::int64_t at(std::int64_t position) const
    {
        if (numbers_.empty())
            return lowest_ + position;
        return numbers_.at(static_cast<std::size_t>(position));
    }

private:
    std::int64_t lowest_;
    std::int64_t count_ = 0;
    std::vector<std::int64_t> numbers_;
};

bool is_letter_or_digit(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           (character >= '0' && character <= '9');
}

} // namespace

/// A random position from 0 to `count` - 1, uniformly distributed.
std::int64_t Hints::draw_position(std::int64_t count)
{
    const auto position = static_cast<std::int64_t>(random_.uniform() * static_cast<double>(count));
    return std::min(position, count - 1);
}

/// The right answer at a random position among answers drawn at random. An answer may occur more than once.
std::vector<std::string> Hints::draw_answers()
{
    std::vector<std::string> answers;
    const std::int64_t sample = course_.record_count < HintSampleSize ? course_.record_count - 1 : HintSampleSize;
    if (sample <= 0)
        return answers;
    const RecordNumbers numbers(course_.database(), course_.record_count);
    const std::int64_t place_of_answer = draw_position(sample);
    for (std::int64_t place = 0; place < sample; ++place) {
        if (place == place_of_answer) {
            answers.push_back(state_.shown.loaded_answer());
            continue;
        }
        // The record is missing only if another program has just deleted it.
        const std::int64_t cnt = numbers.at(draw_position(numbers.count()));
        if (const auto record = store::find_record(course_.database(), cnt))
            answers.push_back(store::shown_answer(store::side_of(*record, course_.A_FIELD).text));
    }
    return answers;
}

/// The words in order, each once, in the spelling of its first occurrence.
std::vector<std::string> Hints::sorted_words(const std::vector<std::string>& answers) const
{
    const auto before = [this](const std::string& a, const std::string& b) { return text_compare_.compare(a, b) < 0; };
    std::set<std::string, decltype(before)> words(before);
    for (std::string_view rest : answers) {
        while (!rest.empty()) {
            const std::string_view word = rest.substr(0, rest.find_first_of(word_separators));
            if (!word.empty())
                words.emplace(word);
            rest.remove_prefix(std::min(word.size() + 1, rest.size()));
        }
    }
    return {words.begin(), words.end()};
}

void Hints::BuildWordListHint()
{
    std::string text;
    std::vector<Word> words;
    std::vector<common::TextRange> places;
    std::size_t length = 0;
    for (std::string& word : sorted_words(draw_answers())) {
        const std::size_t begin = length + 2;
        const common::TextRange place{begin, begin + common::code_points(word)};
        text += " [" + word + "]  ";
        length = place.end + 3;
        places.push_back(place);
        words.push_back({std::move(word), place});
    }
    show(text, false);
    form1_.t_hint.set_words(std::move(places));
    words_ = std::move(words);
    announce_words();
}

void Hints::BuildMaskedHint()
{
    // Working on bytes is safe: no byte of a multi-byte UTF-8 character is an ASCII letter or digit.
    std::string text = state_.shown.loaded_answer();
    std::replace_if(text.begin(), text.end(), is_letter_or_digit, HintMask);
    show(text, true);
    announce_shape();
}

void Hints::announce_words() const
{
    std::string text;
    for (const Word& word : words_)
        text += (text.empty() ? "" : ", ") + word.text;
    form1_.window.announce("Hint with " + std::to_string(words_.size()) + " words: " + text + ".");
}

/// Tells how many characters are hidden between those that are not, because no voice speaks a placeholder.
void Hints::announce_shape() const
{
    const std::string shown = form1_.t_hint.text();
    std::string text;
    for (std::size_t at = 0; at < shown.size();) {
        const std::size_t end = std::min(shown.find_first_not_of(HintMask, at), shown.size());
        if (end == at) {
            text += shown[at++];
            continue;
        }
        text += (text.empty() || text.back() == ' ' ? "" : " ") + std::to_string(end - at) + " hidden";
        text += end < shown.size() && shown[end] == ' ' ? "," : " ";
        at = end;
    }
    form1_.window.announce("Hint: " + std::string(common::trim_blanks(text)) + ".");
}

void Hints::show(const std::string& text, bool masked)
{
    words_.clear();
    form1_.t_hint.set_text(text);
    state_.AnswerShown = true;
    state_.hint_is_masked = masked;
    state_.shared_place = SharedPlace::hint;
    layout_.RelayoutWindow();
}

std::optional<std::string> Hints::chosen_word() const
{
    const std::optional<std::size_t> caret = form1_.t_hint.caret();
    if (!caret)
        return std::nullopt;
    // A word's clickable area includes its brackets and the blanks after it, up to the next bracket.
    const auto word = std::find_if(words_.rbegin(), words_.rend(),
                                   [caret](const Word& one) { return *caret + 1 >= one.place.begin; });
    if (word == words_.rend())
        return std::nullopt;
    return word->text;
}

} // namespace cuedrill::drill
