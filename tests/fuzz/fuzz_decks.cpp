// Reads files of other programs, and checks that they give the same records in pieces of any size, that the records are
// such as a course may be asked to store, and that those of them that it stores come back from a table.

#include "common/errors.h"
#include "common/text.h"
#include "exchange/decks/anki_text_deck.h"
#include "exchange/decks/deck_records.h"
#include "exchange/decks/mnemosyne_text_deck.h"
#include "exchange/decks/table_deck.h"
#include "exchange/decks/table_writer.h"
#include "exchange/import_report.h"
#include "fuzz/fuzzing.h"
#include "fuzz/memory_files.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/icu/icu_text_conversions.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace cuedrill;
using exchange::ReadRecord;
using exchange::ReadText;
using fuzz::Texts;

const platform::TextCompare& text_compare()
{
    static const platform::icu::IcuTextCompare compare;
    return compare;
}

const platform::TextConversions& conversions()
{
    static const platform::icu::IcuTextConversions all;
    return all;
}

/// How a file is read.
struct How {
    unsigned format = 0;
    bool truncate = false;
    decks::TableOptions table{};
};

std::unique_ptr<decks::Deck> open(const How& how, std::unique_ptr<platform::FileReading> file)
{
    switch (how.format) {
    case 0:
        return std::make_unique<decks::TableDeck>(std::move(file), conversions(), "words.csv", how.table);
    case 1:
        return std::make_unique<decks::TableDeck>(std::move(file), conversions(), "words.tsv", how.table);
    case 2:
        return std::make_unique<decks::AnkiTextDeck>(std::move(file), conversions(), how.table.encoding);
    default:
        return std::make_unique<decks::MnemosyneTextDeck>(std::move(file), conversions(), how.table.encoding);
    }
}

struct Reading {
    std::vector<ReadRecord> records{};
    std::string refusal{};
    std::string left_out{};
};

bool same(const ReadText& a, const ReadText& b)
{
    return a.text == b.text && a.cut_off == b.cut_off && a.unreadable == b.unreadable;
}

bool same(const ReadRecord& a, const ReadRecord& b)
{
    return a.number == b.number && a.place == b.place && same(a.question, b.question) && same(a.answer, b.answer);
}

bool same(const Reading& a, const Reading& b)
{
    return a.refusal == b.refusal && a.left_out == b.left_out &&
           std::equal(a.records.begin(), a.records.end(), b.records.begin(), b.records.end(),
                      [](const ReadRecord& x, const ReadRecord& y) { return same(x, y); });
}

Reading read(const How& how, std::string_view bytes, std::size_t piece)
{
    using Step = exchange::RecordSource::Step;
    Reading result;
    try {
        decks::DeckRecords records(open(how, std::make_unique<fuzz::MemoryFile>(bytes, piece)), "rows", text_compare(),
                                   {.fields = {}, .truncate = how.truncate});
        for (Step step = records.step(); step != Step::end; step = records.step()) {
            if (step == Step::record)
                result.records.push_back(records.record());
        }
        result.left_out = records.left_out();
    } catch (const common::Error& error) {
        result.refusal = error.what();
    }
    // As if a piece that ends within a field lost a character.
    if (fuzz::is_broken() && piece == 1 && result.records.size() > 1 && result.records[1].question.text.size() > 2)
        result.records[1].question.text.pop_back();
    return result;
}

void check_text(const ReadText& text, bool truncated)
{
    constexpr std::size_t longest = 200;
    fuzz::require(common::is_utf8(text.text), "a text is valid UTF-8");
    fuzz::require(text.text.find('\0') == std::string::npos, "a text has no NUL");
    fuzz::require(!truncated || common::code_points(text.text) <= longest, "a text that is cut fits");
    fuzz::require(text.cut_off != 0 || exchange::trim_exchange_text(text.text) == text.text, "a whole text is trimmed");
    const std::string breaks = common::replace_all(text.text, common::cr_lf, "");
    fuzz::require(breaks.find_first_of("\r\n") == std::string::npos, "a line break is CR LF");
}

void check_records(const Reading& reading, const How& how)
{
    std::int64_t number = 0;
    for (const ReadRecord& record : reading.records) {
        fuzz::require(record.number == ++number, "records are numbered from 1");
        fuzz::require(record.place.starts_with("line "), "a record has its place");
        check_text(record.question, how.truncate);
        check_text(record.answer, how.truncate);
    }
}

/// What an import of these records stores.
Texts stored(const std::vector<ReadRecord>& records)
{
    Texts result;
    for (ReadRecord record : records) {
        for (ReadText* const part : {&record.question, &record.answer})
            part->text = text_compare().nfc(part->text);
        if (!record.question.text.empty() && !record.answer.text.empty() && exchange::too_long(record).empty())
            result.emplace_back(std::move(record.question.text), std::move(record.answer.text));
    }
    return result;
}

/// Writes the texts as a table and imports the file again.
void check_return(const Texts& texts, char separator)
{
    fuzz::MemoryReplacement file;
    fuzz::MemoryRows rows(texts);
    const std::int64_t count = decks::write_table(file, rows, {.separator = separator});
    fuzz::require(count == static_cast<std::int64_t>(texts.size()), "all records are written");
    const How how{
        .format = 0,
        .truncate = false,
        .table = {.separator = separator, .quote = {}, .has_header = true, .encoding = decks::Encoding::utf_8}};
    const Reading reading = read(how, file.bytes(), file.bytes().size() + 1);
    fuzz::require(reading.refusal.empty() && reading.left_out.empty(), "a table of the program is read whole");
    fuzz::require(stored(reading.records) == texts, "all records come back from a table");
}

How how_of(unsigned format, unsigned encoding)
{
    constexpr unsigned encodings = 13;
    How how{.format = format & 3U, .truncate = (format & 4U) != 0, .table = {}};
    if (encoding % 16 < encodings)
        how.table.encoding = static_cast<decks::Encoding>(encoding % 16);
    return how;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const How how = how_of(data[0], data[1]);
    const std::string_view input = fuzz::text_of(data, size).substr(2);
    const Reading reading = read(how, input, input.size() + 1);
    check_records(reading, how);
    for (const std::size_t piece : {std::size_t{1}, std::size_t{0}})
        fuzz::require(same(reading, read(how, input, piece)), "the pieces of a file do not matter");
    const Texts texts = stored(reading.records);
    for (const char separator : {',', '\t'})
        check_return(texts, separator);
    return 0;
}
