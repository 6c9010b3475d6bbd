#include "exchange/decks/vocabulary_deck.h"

#include "common/errors.h"
#include "exchange/decks/left_out_words.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace cuedrill::decks {
namespace {

/// Tokens that are read in one step.
constexpr int tokens_per_step = 200;

/// Shorter files are read so quickly that they need no progress display.
constexpr std::uint64_t long_file = 1024ULL * 1024;

constexpr std::string_view language = "/kvtml/identifiers/identifier";
constexpr std::string_view language_name = "/kvtml/identifiers/identifier/name";
constexpr std::string_view language_locale = "/kvtml/identifiers/identifier/locale";
constexpr std::string_view all_entries = "/kvtml/entries";
constexpr std::string_view one_entry = "/kvtml/entries/entry";
constexpr std::string_view translation = "/kvtml/entries/entry/translation";
constexpr std::string_view translated_text = "/kvtml/entries/entry/translation/text";

constexpr std::array<std::string_view, 2> media_elements{"image", "sound"};
constexpr std::array<std::string_view, 4> note_elements{"comment", "example", "paraphrase", "pronunciation"};

bool is_blank(std::string_view text)
{
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// Whether `path` is that of one of these elements in a translation.
template <typename Names>
bool is_part_of_translation(std::string_view path, const Names& names)
{
    if (!path.starts_with(translation) || path.size() == translation.size())
        return false;
    path.remove_prefix(translation.size() + 1);
    return std::find(names.begin(), names.end(), path) != names.end();
}

} // namespace

VocabularyDeck::VocabularyDeck(std::unique_ptr<platform::FileReading> file, const platform::Xml& xml)
    : size_(file->size()), xml_(xml.begin(std::move(file)))
{
    read_head();
}

void VocabularyDeck::read_head()
{
    while (!at_end_ && !is_in(all_entries))
        static_cast<void>(read_token());
    if (languages_.empty())
        throw common::Error("The vocabulary names no language.");
    name_fields();
}

/// A language without a name has its locale as name, and without that its number.
void VocabularyDeck::name_fields()
{
    Kind kind;
    for (const Language& one : languages_) {
        if (!is_blank(one.name))
            kind.fields.push_back(one.name);
        else
            kind.fields.push_back(is_blank(one.locale) ? std::to_string(kind.fields.size() + 1) : one.locale);
    }
    kind.fields = different(std::move(kind.fields));
    kinds_.push_back(std::move(kind));
}

VocabularyDeck::Step VocabularyDeck::step()
{
    for (int tokens = 0; tokens < tokens_per_step; ++tokens) {
        if (at_end_)
            return Step::end;
        if (read_token())
            return Step::row;
    }
    return Step::reading;
}

/// Returns true when a row is complete.
bool VocabularyDeck::read_token()
{
    using Token = platform::XmlReading::Token;
    switch (xml_->next()) {
    case Token::start:
        begin_element();
        return false;
    case Token::text:
        text_ += xml_->text();
        return false;
    case Token::end:
        return end_element();
    default:
        at_end_ = true;
        return false;
    }
}

void VocabularyDeck::begin_element()
{
    path_ += "/" + xml_->name();
    text_.clear();
    if (path_.find('/', 1) == std::string::npos) {
        if (!is_in("/kvtml"))
            throw common::Error("The file is not a vocabulary in the format KVTML.");
        if (!xml_->attribute("version").value_or("1").starts_with("2"))
            throw common::Error("The file is in the format KVTML 1. Only KVTML 2 can be read.");
    } else if (is_in(language) && kinds_.empty()) {
        if (languages_.size() == most_languages)
            throw common::Error("The vocabulary has more than " + std::to_string(most_languages) + " languages.");
        languages_.push_back({.id = xml_->attribute("id").value_or("")});
    } else if (is_in(one_entry)) {
        row_ = {.place = "entry " + std::to_string(++entries_), .kind = 0, .texts = {}};
        row_.texts.resize(languages_.size());
        has_text_.assign(languages_.size(), false);
    } else if (is_in(translation)) {
        begin_translation();
    }
}

void VocabularyDeck::begin_translation()
{
    const std::string id = xml_->attribute("id").value_or("");
    const auto found =
        std::find_if(languages_.begin(), languages_.end(), [&id](const Language& one) { return one.id == id; });
    language_.reset();
    if (found != languages_.end())
        language_ = static_cast<std::size_t>(found - languages_.begin());
}

bool VocabularyDeck::end_element()
{
    if (kinds_.empty() && is_in(language_name))
        languages_.back().name = text_;
    else if (kinds_.empty() && is_in(language_locale))
        languages_.back().locale = text_;
    else if (is_in(translated_text))
        end_text();
    else if (!is_blank(text_) && is_part_of_translation(path_, media_elements))
        ++media_;
    else if (!is_blank(text_) && is_part_of_translation(path_, note_elements))
        ++notes_;
    const bool is_row = is_in(one_entry) && !std::all_of(row_.texts.begin(), row_.texts.end(), is_blank);
    path_.resize(path_.size() - xml_->name().size() - 1);
    text_.clear();
    return is_row;
}

void VocabularyDeck::end_text()
{
    if (!language_ || has_text_[*language_]) {
        if (!is_blank(text_))
            ++strays_;
        return;
    }
    row_.texts[*language_] = std::move(text_);
    has_text_[*language_] = true;
}

std::optional<int> VocabularyDeck::percent() const
{
    constexpr std::uint64_t whole = 100;
    if (size_ < long_file)
        return std::nullopt;
    return static_cast<int>(std::min(xml_->bytes_read() * whole / size_, whole));
}

std::string VocabularyDeck::left_out() const
{
    return count_line(media_, "picture or sound was left out.", "pictures and sounds were left out.") +
           count_line(notes_, "comment or example was left out.", "comments and examples were left out.") +
           count_line(strays_, "text was left out, because its language is not named or has a text already.",
                      "texts were left out, because their language is not named or has a text already.");
}

} // namespace cuedrill::decks
