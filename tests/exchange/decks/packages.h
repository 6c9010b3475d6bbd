#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace cuedrill::decks {

/// A note type of a collection.
struct NoteType {
    std::int64_t id = 0;
    std::string name{};
    std::vector<std::string> fields{};
};

/// A note of a collection.
struct Note {
    std::int64_t id = 0;
    std::int64_t type = 0;
    std::vector<std::string> fields{};
};

/// What stands in quotation marks in a statement, or in JSON.
[[nodiscard]] std::string sql_text(const std::string& text);
[[nodiscard]] std::string json_text(const std::string& text);

/// Statements that make a collection whose note types are a text in JSON (schema 11).
[[nodiscard]] std::string old_collection(const std::vector<NoteType>& types, const std::vector<Note>& notes);
/// Statements that make a collection whose note types are rows (schema 18).
[[nodiscard]] std::string new_collection(const std::vector<NoteType>& types, const std::vector<Note>& notes);

/// The collection that a newer package has for older programs: a single note that asks to update them.
[[nodiscard]] std::string collection_that_asks_to_update();

/// A package of edition 1, 2 or 3 with the collection that these statements make.
[[nodiscard]] std::string package_of(int edition, const std::string& collection);

} // namespace cuedrill::decks
