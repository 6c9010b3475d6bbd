#include "exchange/decks/package_deck.h"

#include "common/errors.h"
#include "exchange/decks/collection_file.h"
#include "exchange/decks/left_out_words.h"
#include "exchange/text_decoding.h"
#include "platform/database.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace cuedrill::decks {
namespace {

/// Stands between the fields of a note.
constexpr char separator = '\x1F';

/// Fewer notes are read so quickly that they need no progress display.
constexpr std::int64_t many_notes = 5000;

/// The most fields of a note type, and the most note types.
constexpr std::size_t most_fields = 1000;
constexpr std::size_t most_types = 10'000;

/// Well-formed UTF-8, with exchange::unreadable_mark for each byte that belongs to no character.
std::string decoded(std::string bytes)
{
    exchange::TextDecoder decoder({.utf8 = true, .marked = false});
    std::string text = decoder.decode(std::move(bytes));
    return text += decoder.finish();
}

std::string plain(std::string bytes, HtmlLosses& losses)
{
    return html_to_text(decoded(std::move(bytes)), losses);
}

/// A name of a note type or a field, as one line.
std::string name_of(std::string bytes)
{
    std::string name = decoded(std::move(bytes));
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '\r' || c == '\n' || c == '\t'; }, ' ');
    return name;
}

[[noreturn]] void fail(const std::string& reason)
{
    throw common::Error("The collection in the package cannot be read. " + reason);
}

/// Runs `action` on the database and turns its errors into those of the package.
template <typename Action>
auto reading(const Action& action)
{
    try {
        return action();
    } catch (const platform::DatabaseError& error) {
        fail(error.what());
    }
}

} // namespace

PackageDeck::PackageDeck(std::unique_ptr<platform::FileReading> file, const platform::Archives& archives,
                         const platform::ForeignDatabases& databases)
{
    const std::unique_ptr<platform::Archive> package = archives.open(std::move(file));
    std::string collection = collection_of(*package, archives, longest_collection);
    reading([&] {
        tables_ = databases.open(std::move(collection));
        if (!tables_->has_table("notes"))
            fail("It has no notes.");
        choose_kinds(read_note_types());
        notes_ = tables_->query("SELECT id, mid, flds FROM notes NOT INDEXED ORDER BY id");
    });
}

/// Newer collections have a table of note types, older ones a text in JSON whose members are note types by their ids:
/// {"7":{"name":"Basic","flds":[{"name":"Front","ord":0}]}}.
PackageDeck::NoteTypes PackageDeck::read_note_types()
{
    constexpr std::string_view of_tables =
        "SELECT notetypes.id, notetypes.name, fields.name FROM notetypes JOIN fields ON fields.ntid = notetypes.id "
        "ORDER BY notetypes.id, fields.ord";
    constexpr std::string_view of_json =
        "SELECT CAST(type.key AS INTEGER), json_extract(type.value, '$.name'), json_extract(field.value, '$.name') "
        "FROM col, json_each(col.models) AS type, json_each(type.value, '$.flds') AS field "
        "ORDER BY CAST(type.key AS INTEGER), json_extract(field.value, '$.ord'), field.key";
    const bool has_tables = tables_->has_table("notetypes") && tables_->has_table("fields");
    NoteTypes types;
    const auto rows = tables_->query(has_tables ? of_tables : of_json);
    while (rows->next()) {
        Kind& type = types[rows->integer(0)];
        if (type.fields.empty())
            type.name = name_of(rows->text(1));
        type.fields.push_back(name_of(rows->text(2)));
        if (types.size() > most_types || type.fields.size() > most_fields)
            fail("It has too many note types or fields.");
    }
    return types;
}

/// The kinds are the note types that have notes.
void PackageDeck::choose_kinds(NoteTypes types)
{
    const auto rows = tables_->query("SELECT mid, count(*) FROM notes NOT INDEXED GROUP BY mid ORDER BY mid");
    while (rows->next()) {
        count_ += rows->integer(1);
        const auto type = types.find(rows->integer(0));
        if (type != types.end() && places_.emplace(type->first, kinds_.size()).second)
            kinds_.push_back(std::move(type->second));
    }
}

PackageDeck::Step PackageDeck::step()
{
    return reading([this] {
        at_end_ = at_end_ || !notes_->next();
        if (at_end_)
            return Step::end;
        return take_note() ? Step::row : Step::reading;
    });
}

/// Returns false for a note that is no row.
bool PackageDeck::take_note()
{
    const std::int64_t id = notes_->integer(0);
    // Pages of a damaged file may follow each other without end.
    if (last_id_ && id <= *last_id_)
        fail("Its notes are not in order.");
    last_id_ = id;
    ++read_;
    const auto place = places_.find(notes_->integer(1));
    if (place == places_.end()) {
        ++typeless_notes_;
        return false;
    }
    row_ = {.place = "note " + std::to_string(read_), .kind = place->second, .texts = {}};
    const std::size_t fields = kinds_[place->second].fields.size();
    const std::string contents = notes_->text(2);
    std::string_view rest = contents;
    bool more = true;
    while (more && row_.texts.size() < fields) {
        const std::size_t end = rest.find(separator);
        row_.texts.push_back(plain(std::string(rest.substr(0, end)), losses_));
        more = end != std::string_view::npos;
        rest.remove_prefix(more ? end + 1 : rest.size());
    }
    row_.texts.resize(fields);
    if (more)
        ++longer_notes_;
    const bool is_empty =
        std::all_of(row_.texts.begin(), row_.texts.end(), [](const std::string& text) { return text.empty(); });
    if (is_empty)
        ++empty_notes_;
    return !is_empty;
}

std::optional<int> PackageDeck::percent() const
{
    constexpr std::int64_t whole = 100;
    if (count_ < many_notes)
        return std::nullopt;
    return static_cast<int>(std::min(read_ * whole / count_, whole));
}

std::string PackageDeck::left_out() const
{
    return words_of(losses_) +
           count_line(empty_notes_, "note without any text was left out.", "notes without any text were left out.") +
           count_line(typeless_notes_, "note was left out, because its note type is missing.",
                      "notes were left out, because their note types are missing.") +
           count_line(longer_notes_, "note has more fields than its note type; they were left out.",
                      "notes have more fields than their note types; they were left out.");
}

} // namespace cuedrill::decks
