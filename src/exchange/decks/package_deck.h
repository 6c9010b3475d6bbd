#pragma once

#include "exchange/decks/deck.h"
#include "exchange/decks/html_text.h"
#include "platform/archive.h"
#include "platform/files.h"
#include "platform/foreign_tables.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::decks {

/// The notes of a flashcard package (.apkg, .colpkg): a zip archive with a collection, which is a database, and with
/// pictures and sounds, which are left out. A kind of rows is a note type that has notes; a row is a note. The fields
/// of a note are HTML and become plain text.
class PackageDeck : public Deck {
public:
    /// The most bytes of an unpacked collection, which is held in memory.
    static constexpr std::size_t longest_collection = 512ULL * 1024 * 1024;

    /// Unpacks the collection and reads its note types. For 100 MiB that takes one or two seconds.
    /// @throws common::Error when the file is no such package, is of a later edition, is damaged, or cannot be read.
    PackageDeck(std::unique_ptr<platform::FileReading> file, const platform::Archives& archives,
                const platform::ForeignDatabases& databases);

    [[nodiscard]] const std::vector<Kind>& kinds() const override { return kinds_; }
    [[nodiscard]] Step step() override;
    [[nodiscard]] const Row& row() const override { return row_; }
    [[nodiscard]] std::optional<int> percent() const override;
    [[nodiscard]] std::string left_out() const override;

private:
    /// The note types by their ids.
    using NoteTypes = std::map<std::int64_t, Kind>;

    [[nodiscard]] NoteTypes read_note_types();
    void choose_kinds(NoteTypes types);
    [[nodiscard]] bool take_note();

    std::unique_ptr<platform::ForeignTables> tables_;
    std::vector<Kind> kinds_;
    std::map<std::int64_t, std::size_t> places_; ///< of the kinds, by the ids of their note types
    std::unique_ptr<platform::ForeignRows> notes_;
    std::optional<std::int64_t> last_id_; ///< of a note
    Row row_;
    std::int64_t count_ = 0; ///< of all notes
    std::int64_t read_ = 0;  ///< notes up to now
    bool at_end_ = false;
    HtmlLosses losses_;
    std::int64_t empty_notes_ = 0;
    std::int64_t longer_notes_ = 0;   ///< with more fields than their note type
    std::int64_t typeless_notes_ = 0; ///< whose note type is missing
};

} // namespace cuedrill::decks
