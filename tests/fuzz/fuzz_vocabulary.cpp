// A vocabulary as an import reads it, in pieces of several sizes; and its texts as they are written and read again.
#include "common/text.h"
#include "exchange/decks/vocabulary_deck.h"
#include "exchange/decks/vocabulary_writer.h"
#include "fuzz/memory_files.h"
#include "fuzz/read_rows.h"
#include "platform/qt_xml/qt_xml.h"

#include <memory>
#include <string>

namespace {

using namespace cuedrill;
using fuzz::Reading;
using fuzz::Texts;

Reading read(const std::string& bytes, std::size_t piece)
{
    Reading result = fuzz::read([&]() -> std::unique_ptr<decks::Deck> {
        return std::make_unique<decks::VocabularyDeck>(std::make_unique<fuzz::MemoryFile>(bytes, piece),
                                                       platform::qt_xml::QtXml());
    });
    // As if a piece that ends within a text lost a character.
    if (fuzz::is_broken() && piece == 1 && result.rows.size() > 1 && !result.rows[1].texts.front().empty())
        result.rows[1].texts.front().pop_back();
    return result;
}

bool is_blank(const std::string& text)
{
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

/// Writes the texts and reads them again.
void check_return(const Texts& texts, const std::string& title)
{
    fuzz::MemoryReplacement file;
    fuzz::MemoryRows rows(texts);
    const decks::WrittenVocabulary written =
        decks::write_vocabulary(file, rows,
                                {.course_title = title,
                                 .written = common::DateTime::from_seconds(4'000'000'000),
                                 .question_language = title,
                                 .answer_language = title});
    const Reading reading = read(file.bytes(), 4096);
    fuzz::require(reading.refusal.empty() && reading.left_out.empty(), "a written file can be read");
    fuzz::require((written.changed == 0) == written.lines.empty(), "records with other characters are listed");
    Texts back;
    for (const decks::Row& row : reading.rows)
        back.emplace_back(row.texts.at(0), row.texts.at(1));
    Texts expected = texts;
    std::erase_if(expected, [](const auto& record) { return is_blank(record.first) && is_blank(record.second); });
    fuzz::require(written.changed > 0 || back == expected, "the texts come back as they were");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string input(fuzz::text_of(data, size));
    const Reading reading = read(input, input.size() + 1);
    for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, std::size_t{61}})
        fuzz::require(fuzz::same(reading, read(input, piece)), "the pieces of a file do not matter");
    Texts texts{{input.substr(0, size / 2), input.substr(size / 2)}};
    for (const decks::Row& row : reading.rows)
        texts.emplace_back(row.texts.front(), row.texts.back());
    check_return(texts, texts.back().first);
    return 0;
}
