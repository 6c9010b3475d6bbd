// A question text file as the import reads it, in pieces of several sizes, and as the export writes it.
//
// The first byte of the input says how the others are used, by its bits:
//   1  in a digit: a byte 1F stands for as many of the byte behind it as bring a text to its limits, which takes long;
//   2  the others are no file but the texts of records to be exported, with a byte 1E between two texts;
//   4  the exported records are numbered.
#include "bank/new_records.h"
#include "common/errors.h"
#include "common/text.h"
#include "exchange/import_report.h"
#include "exchange/question_file.h"
#include "exchange/question_text_writer.h"
#include "fuzz/fuzzing.h"
#include "fuzz/memory_files.h"
#include "platform/icu/icu_text_compare.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace cuedrill;
using exchange::ReadRecord;
using exchange::ReadText;

using fuzz::MemoryFile;
using fuzz::MemoryReplacement;
using fuzz::MemoryRows;
using fuzz::Texts;

const platform::TextCompare& text_compare()
{
    static const platform::icu::IcuTextCompare compare;
    return compare;
}

struct Reading {
    std::vector<ReadRecord> records{};
    std::string refusal{};
    bool has_question = false;
};

bool same(const ReadText& a, const ReadText& b)
{
    return a.text == b.text && a.cut_off == b.cut_off && a.unreadable == b.unreadable;
}

bool same(const ReadRecord& a, const ReadRecord& b)
{
    return a.number == b.number && same(a.question, b.question) && same(a.answer, b.answer);
}

bool same(const Reading& a, const Reading& b)
{
    return a.refusal == b.refusal && a.has_question == b.has_question &&
           std::equal(a.records.begin(), a.records.end(), b.records.begin(), b.records.end(),
                      [](const ReadRecord& x, const ReadRecord& y) { return same(x, y); });
}

Reading read(std::string_view bytes, std::size_t piece)
{
    using Step = exchange::QuestionFile::Step;
    Reading result;
    exchange::QuestionFile file(std::make_unique<MemoryFile>(bytes, piece));
    try {
        for (Step step = file.step(); step != Step::end; step = file.step()) {
            if (step == Step::record)
                result.records.push_back(file.record());
        }
    } catch (const common::Error& error) {
        result.refusal = error.what();
    }
    result.has_question = file.has_question();
    // As if a piece that ends within a character lost it.
    if (fuzz::is_broken() && piece == 1 && result.records.size() > 1 && result.records[1].question.text.size() > 2)
        result.records[1].question.text.pop_back();
    return result;
}

void check_text(const ReadText& text)
{
    constexpr std::size_t bytes_of_replacement = 3;
    const std::size_t points = common::code_points(text.text);
    fuzz::require(common::is_utf8(text.text), "a text is valid UTF-8");
    fuzz::require(text.text.find('\0') == std::string::npos, "a text has no NUL");
    fuzz::require(points <= exchange::CollectedText::most_kept, "a text has no more characters than are kept");
    fuzz::require(text.text.size() <= exchange::CollectedText::most_kept + (bytes_of_replacement - 1) * text.unreadable,
                  "a text has no more bytes than are kept");
    fuzz::require(text.unreadable <= points + text.cut_off, "no more characters are unreadable than there are");
    fuzz::require(text.cut_off != 0 || exchange::trim_exchange_text(text.text) == text.text, "a whole text is trimmed");
    fuzz::require(text.cut_off == 0 || points > std::size_t{200}, "only a long text is cut off");
}

void check_records(const Reading& reading)
{
    std::int64_t number = 0;
    for (const ReadRecord& record : reading.records) {
        fuzz::require(record.number == ++number, "records are numbered from 1");
        check_text(record.question);
        check_text(record.answer);
        fuzz::require(!exchange::holds_marker(record.question.text, exchange::Marker::answer),
                      "a marker ends the question");
        fuzz::require(!exchange::holds_marker(record.answer.text, exchange::Marker::question),
                      "a marker ends the answer");
    }
    fuzz::require(reading.has_question || reading.records.empty(), "a record begins with a marker");
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

/// Exports the texts and imports the file again.
void check_return(const Texts& texts, const std::string& title, bool numbered)
{
    MemoryReplacement file;
    MemoryRows rows(texts);
    exchange::ReturnCheck check(text_compare());
    const exchange::QuestionTextForm form{
        .course_title = title, .written = common::DateTime::from_seconds(4'000'000'000), .numbered = numbered};
    const std::int64_t count = exchange::write_question_text(file, rows, form, check);
    fuzz::require(count == static_cast<std::int64_t>(texts.size()), "all records are written");

    const Reading reading = read(file.bytes(), file.bytes().size() + 1);
    fuzz::require(reading.refusal.empty(), "an exported file can be read");
    check_records(reading);
    Texts back = stored(reading.records);
    const std::string end = "\r\n\r\n\r\n" + std::string(exchange::closing_line);
    if (!back.empty() && back.back().second.ends_with(end))
        back.back().second.resize(back.back().second.size() - end.size());
    fuzz::require((check.changed() > 0) == (back != texts), "exactly the records that come back changed are found");
    fuzz::require(check.changed() <= count, "no more records come back changed than there are");
    fuzz::require((check.changed() == 0) == check.lines().empty(), "records that come back changed are listed");
}

std::string expanded(std::string_view input)
{
    constexpr char mark = '\x1F';
    constexpr std::size_t times = 33'000; // twice that is more than is kept of a text
    std::size_t marks_left = 2;
    std::string result;
    for (std::size_t i = 0; i < input.size(); ++i) {
        if (input[i] == mark && i + 1 < input.size() && marks_left > 0) {
            result.append(times, input[++i]);
            --marks_left;
        } else {
            result += input[i];
        }
    }
    return result;
}

/// Texts of any kind, as a course made elsewhere may hold them.
Texts texts_of(std::string_view input)
{
    std::vector<std::string> parts;
    for (bool more = true; more;) {
        const std::size_t end = input.find('\x1E');
        parts.push_back(text_compare().nfc(input.substr(0, end)));
        more = end != std::string_view::npos;
        input.remove_prefix(more ? end + 1 : input.size());
    }
    Texts result;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2)
        result.emplace_back(parts[i], parts[i + 1]);
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const unsigned how = data[0];
    std::string input(fuzz::text_of(data, size).substr(1));
    if (how >= '0' && how <= '9' && (how & 1U) != 0)
        input = expanded(input);
    if ((how & 2U) != 0) {
        const Texts texts = texts_of(input);
        check_return(texts, texts.empty() ? input : texts.front().first, (how & 4U) != 0);
        return 0;
    }
    const Reading reading = read(input, input.size() + 1);
    check_records(reading);
    for (const std::size_t piece : {std::size_t{1}, std::size_t{0}, std::size_t{4093}}) {
        // Small pieces of a long file take long.
        if (piece > 1000 || input.size() < 10'000)
            fuzz::require(same(reading, read(input, piece)), "the pieces of a file do not matter");
    }
    check_return(stored(reading.records), "title", (how & 4U) != 0);
    return 0;
}
