#include "exchange/decks/deck_records.h"

#include "common/errors.h"
#include "common/text.h"
#include "exchange/collected_text.h"
#include "exchange/record_lines.h"
#include "store/schema.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace cuedrill::decks {
namespace {

bool is_empty(const std::string& text)
{
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

/// The lines of `text` with CR LF, however they end there.
std::string with_cr_lf(std::string_view text)
{
    std::string lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        if (end != 0)
            lines.append(text.substr(0, end)).append(common::cr_lf);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace

FieldChoice field_choice(std::string_view text)
{
    const std::size_t comma = text.find(',');
    const std::string_view question = common::trim_blanks(text.substr(0, comma));
    const std::string_view answer =
        comma == std::string_view::npos ? std::string_view() : common::trim_blanks(text.substr(comma + 1));
    if (question.empty() || answer.empty() || answer.find(',') != std::string_view::npos)
        throw common::Error("\"" + std::string(text) +
                            "\" does not name two fields. Name them, or give their numbers, with a comma between "
                            "them, the field of the question first.");
    if (question == answer)
        throw common::Error("The question and the answer need a field each.");
    return {.question = std::string(question), .answer = std::string(answer)};
}

DeckRecords::DeckRecords(std::unique_ptr<Deck> deck, std::string looked_for, const platform::TextCompare& text_compare,
                         RecordChoice choice)
    : deck_(std::move(deck)), looked_for_(std::move(looked_for)), text_compare_(text_compare),
      choice_(std::move(choice))
{
}

DeckRecords::Step DeckRecords::step()
{
    switch (deck_->step()) {
    case Deck::Step::end:
        return Step::end;
    case Deck::Step::row:
        return take(deck_->row()) ? Step::record : Step::reading;
    case Deck::Step::reading:
        break;
    }
    return Step::reading;
}

/// Returns false for a row that gives no record.
bool DeckRecords::take(const Row& row)
{
    if (std::all_of(row.texts.begin(), row.texts.end(), is_empty))
        return false;
    const auto places = places_in(deck_->kinds().at(row.kind));
    if (!places) {
        if (without_fields_++ == 0)
            first_without_fields_ = row.place;
        return false;
    }
    record_ = {.number = record_.number + 1,
               .question = read(row.texts.at(places->question)),
               .answer = read(row.texts.at(places->answer)),
               .place = row.place};
    return true;
}

std::optional<DeckRecords::Places> DeckRecords::places_in(const Kind& kind) const
{
    if (!choice_.fields)
        return kind.fields.size() < 2 ? std::nullopt : std::optional(Places{.question = 0, .answer = 1});
    const auto question = place_of_field(choice_.fields->question, kind);
    const auto answer = place_of_field(choice_.fields->answer, kind);
    if (!question || !answer)
        return std::nullopt;
    return Places{.question = *question, .answer = *answer};
}

std::optional<std::size_t> DeckRecords::place_of_field(const std::string& field, const Kind& kind) const
{
    auto named = std::find(kind.fields.begin(), kind.fields.end(), field);
    if (named == kind.fields.end())
        named = std::find_if(kind.fields.begin(), kind.fields.end(),
                             [&](const std::string& name) { return text_compare_.equal(name, field); });
    if (named != kind.fields.end())
        return static_cast<std::size_t>(named - kind.fields.begin());
    std::size_t number = 0;
    const char* const end = field.data() + field.size();
    const auto [rest, code] = std::from_chars(field.data(), end, number);
    if (code != std::errc() || rest != end || number == 0 || number > kind.fields.size())
        return std::nullopt;
    return number - 1;
}

exchange::ReadText DeckRecords::read(std::string_view text)
{
    exchange::CollectedText collected;
    for (;;) {
        const std::size_t end = text.find_first_of("\r\n");
        collected.add(text.substr(0, end));
        if (end == std::string_view::npos)
            break;
        collected.add_line_end();
        text.remove_prefix(end + (text.substr(end).starts_with(common::cr_lf) ? 2 : 1));
    }
    exchange::ReadText result = collected.take();
    if (choice_.truncate && cut_to_course(result, text_compare_))
        ++cut_texts_;
    return result;
}

bool cut_to_course(exchange::ReadText& text, const platform::TextCompare& text_compare)
{
    // In the form that is stored, so that no more is lost than has to be.
    const std::string stored = text_compare.nfc(text.text);
    if (text.cut_off == 0 && common::code_points(stored) <= std::size_t{store::longest_text})
        return false;
    std::string_view beginning = common::first_code_points(stored, std::size_t{store::longest_text});
    if (beginning.ends_with('\r'))
        beginning.remove_suffix(1); // the first half of a CR LF
    text.text = exchange::trim_exchange_text(beginning);
    text.cut_off = 0;
    return true;
}

std::string cut_words(std::int64_t texts)
{
    if (texts == 0)
        return {};
    return (texts == 1 ? "1 text was" : std::to_string(texts) + " texts were") + " cut to " +
           std::to_string(store::longest_text) + " characters." + std::string(common::cr_lf);
}

std::string DeckRecords::nothing_found() const
{
    std::string words = "No record was found: looked for " + looked_for_;
    if (choice_.fields)
        words += ", with the fields " + exchange::quoted_line(choice_.fields->question) + " and " +
                 exchange::quoted_line(choice_.fields->answer);
    return words + "." + std::string(common::cr_lf);
}

std::string DeckRecords::left_out() const
{
    std::string words = with_cr_lf(deck_->left_out());
    if (without_fields_ != 0) {
        words += (without_fields_ == 1 ? "1 row was" : std::to_string(without_fields_) + " rows were") +
                 " left out for want of ";
        words += choice_.fields ? "the fields " + exchange::quoted_line(choice_.fields->question) + " and " +
                                      exchange::quoted_line(choice_.fields->answer)
                                : std::string("two fields");
        words.append(". The first is " + first_without_fields_ + ".").append(common::cr_lf);
    }
    return words + cut_words(cut_texts_);
}

} // namespace cuedrill::decks
