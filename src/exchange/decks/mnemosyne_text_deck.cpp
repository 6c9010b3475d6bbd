#include "exchange/decks/mnemosyne_text_deck.h"

#include "common/text.h"

#include <utility>

namespace cuedrill::decks {
namespace {

constexpr TableShape tab_separated{.separator = '\t', .quote = '\0', .comment = '\0'};

constexpr std::size_t card = 0;
constexpr std::size_t word = 1;

std::string plain(const std::string& text, HtmlLosses& losses)
{
    return html_to_text(common::replace_all(text, "\\n", "<br>"), losses);
}

} // namespace

MnemosyneTextDeck::MnemosyneTextDeck(std::unique_ptr<platform::FileReading> file,
                                     const platform::TextConversions& conversions, std::optional<Encoding> encoding)
    : file_(std::move(file), conversions, encoding),
      rows_(file_, tab_separated, 0, 1), kinds_{Kind{.name = "card", .fields = {"question", "answer"}},
                                                Kind{.name = "word", .fields = {"word", "meaning", "pronunciation"}}}
{
}

MnemosyneTextDeck::Step MnemosyneTextDeck::step()
{
    const std::optional<TableRow> row = rows_.next();
    if (!row)
        return rows_.at_end() ? Step::end : Step::reading;
    return take(*row) ? Step::row : Step::reading;
}

/// Returns false for a line that is no card.
bool MnemosyneTextDeck::take(const TableRow& row)
{
    const std::vector<std::string>& texts = row.fields;
    const bool is_word = texts.size() == 3;
    if (!is_word && texts.size() != 2) {
        if (other_lines_++ == 0)
            first_other_line_ = row.line;
        return false;
    }
    row_ = {.place = place_of(row), .kind = is_word ? word : card, .texts = {}};
    for (const std::string& text : texts)
        row_.texts.push_back(plain(text, losses_));
    if (is_word)
        std::swap(row_.texts[1], row_.texts[2]);
    return true;
}

std::string MnemosyneTextDeck::left_out() const
{
    std::string words = words_of(losses_);
    if (other_lines_ == 1)
        words += "Line " + std::to_string(first_other_line_) +
                 " was left out, because it has neither two nor three texts separated by TAB.\n";
    else if (other_lines_ > 1)
        words += std::to_string(other_lines_) +
                 " lines were left out, because they have neither two nor three texts separated by TAB. The first is "
                 "line " +
                 std::to_string(first_other_line_) + ".\n";
    return words;
}

} // namespace cuedrill::decks
