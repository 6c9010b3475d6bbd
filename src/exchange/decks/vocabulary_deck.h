#pragma once

#include "exchange/decks/deck.h"
#include "platform/files.h"
#include "platform/xml.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::decks {

/// A vocabulary in the format KVTML 2. It has one kind of rows, whose fields are the languages. An entry without any
/// text is no row.
class VocabularyDeck : public Deck {
public:
    /// The most languages of a file.
    static constexpr std::size_t most_languages = 100;

    /// Reads the file up to its first entry.
    /// @throws common::Error when it is another file, is damaged before the first entry, names no language, or cannot
    /// be read.
    VocabularyDeck(std::unique_ptr<platform::FileReading> file, const platform::Xml& xml);

    [[nodiscard]] const std::vector<Kind>& kinds() const override { return kinds_; }
    [[nodiscard]] Step step() override;
    [[nodiscard]] const Row& row() const override { return row_; }
    [[nodiscard]] std::optional<int> percent() const override;
    [[nodiscard]] std::string left_out() const override;

private:
    /// A language as the file describes it.
    struct Language {
        std::string id{};
        std::string name{};
        std::string locale{};
    };

    void read_head();
    [[nodiscard]] bool read_token();
    void begin_element();
    [[nodiscard]] bool end_element();
    void begin_translation();
    void end_text();
    void name_fields();
    [[nodiscard]] bool is_in(std::string_view path) const { return path_ == path; }

    std::uint64_t size_; ///< of the file
    std::unique_ptr<platform::XmlReading> xml_;
    std::string path_; ///< names of the open elements, with a "/" before each
    std::string text_; ///< of the innermost open element
    std::vector<Language> languages_;
    std::vector<Kind> kinds_;
    Row row_;
    std::int64_t entries_ = 0;            ///< up to now
    std::optional<std::size_t> language_; ///< of the open translation, as its place
    std::vector<bool> has_text_;          ///< for each language, whether the open entry has its text
    bool at_end_ = false;
    std::int64_t media_ = 0;
    std::int64_t notes_ = 0;
    std::int64_t strays_ = 0; ///< texts of languages that are not named, and second texts of a language
};

} // namespace cuedrill::decks
