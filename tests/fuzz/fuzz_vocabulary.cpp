// A vocabulary as an import reads it, in pieces of several sizes; and its texts as they are written and read again.
#include "common/text.h"
#include "exchange/decks/vocabulary_deck.h"
#include "exchange/decks/vocabulary_writer.h"
#include "fuzz/read_rows.h"
#include "platform/archive/packing.h"
#include "platform/qt_xml/qt_xml.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace cuedrill;
using fuzz::Reading;

Reading read(const std::string& bytes, std::size_t piece)
{
    Reading result = fuzz::read([&]() -> std::unique_ptr<decks::Deck> {
        return std::make_unique<decks::VocabularyDeck>(packing::file_of(bytes, piece), platform::qt_xml::QtXml());
    });
    // As if a piece that ends within a text lost a character.
    if (fuzz::is_broken() && piece == 1 && result.rows.size() > 1 && !result.rows[1].texts.front().empty())
        result.rows[1].texts.front().pop_back();
    return result;
}

/// A file in memory.
class MemoryReplacement : public platform::Replacement {
public:
    [[nodiscard]] const std::string& path() const override { return path_; }
    void write(std::string_view bytes) override { bytes_.append(bytes); }
    void restart() override { bytes_.clear(); }
    void finish() override {}
    [[nodiscard]] const std::string& bytes() const { return bytes_; }

private:
    std::string path_;
    std::string bytes_;
};

using Texts = std::vector<std::pair<std::string, std::string>>; ///< question and answer of each record

/// Rows with the columns "q" and "a".
class MemoryRows : public platform::Recordset {
public:
    explicit MemoryRows(const Texts& texts) : texts_(texts) {}

    [[nodiscard]] bool bof() const override { return texts_.empty(); }
    [[nodiscard]] bool eof() const override { return place_ == texts_.size(); }
    void move_first() override { place_ = 0; }
    void move_next() override { ++place_; }
    [[nodiscard]] platform::Value field(std::string_view column) const override { return field(column == "a" ? 1 : 0); }
    [[nodiscard]] platform::Value field(int column) const override
    {
        const auto& [question, answer] = texts_.at(place_);
        return column == 0 ? question : answer;
    }

private:
    const Texts& texts_;
    std::size_t place_ = 0;
};

bool is_blank(const std::string& text)
{
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

/// Writes the texts and reads them again.
void check_return(const Texts& texts, const std::string& title)
{
    MemoryReplacement file;
    MemoryRows rows(texts);
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
