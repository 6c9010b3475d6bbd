#pragma once

#include "exchange/decks/deck.h"
#include "exchange/decks/deck_opening.h"
#include "platform/archive/zip_archives.h"
#include "platform/files.h"
#include "platform/icu/icu_text_conversions.h"
#include "platform/qt_xml/qt_xml.h"
#include "platform/sqlite/sqlite_foreign_databases.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::decks {

/// A file in memory that may fail after some reads.
class MemoryFile : public platform::FileReading {
public:
    explicit MemoryFile(std::string bytes) : bytes_(std::move(bytes)) {}

    /// @param reads_left reads that succeed.
    MemoryFile(std::string bytes, int reads_left) : bytes_(std::move(bytes)), reads_left_(reads_left) {}

    [[nodiscard]] std::uint64_t size() const override { return bytes_.size(); }
    [[nodiscard]] std::string read(std::size_t most) override;
    void rewind() override { at_ = 0; }
    void go_to(std::uint64_t place) override { at_ = static_cast<std::size_t>(place); }

private:
    std::string bytes_;
    std::size_t at_ = 0;
    int reads_left_ = 1'000'000;
};

[[nodiscard]] std::unique_ptr<platform::FileReading> file_of(std::string bytes);

/// Reads the deck to its end, and checks that it stays there and that each row has a text for each field of its kind.
[[nodiscard]] std::vector<Row> rows_of(Deck& deck);

/// The texts of the rows.
[[nodiscard]] std::vector<std::vector<std::string>> texts_of(const std::vector<Row>& rows);

/// The places of the rows.
[[nodiscard]] std::vector<std::string> places_of(const std::vector<Row>& rows);

/// The adapters that the program uses for decks.
class RealTools {
public:
    [[nodiscard]] DeckTools tools() const
    {
        return {.conversions = conversions_, .archives = archives_, .databases = databases_, .xml = xml_};
    }

private:
    platform::icu::IcuTextConversions conversions_;
    platform::archive::ZipArchives archives_;
    platform::sqlite::SqliteForeignDatabases databases_;
    platform::qt_xml::QtXml xml_;
};

/// Whether `action` throws common::Error with these words.
void expect_error(const std::function<void()>& action, std::string_view words);

using Texts = std::vector<std::vector<std::string>>;
using Names = std::vector<std::string>;

} // namespace cuedrill::decks
