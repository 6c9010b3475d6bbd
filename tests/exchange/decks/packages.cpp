#include "exchange/decks/packages.h"

#include "common/text.h"
#include "platform/archive/packing.h"

namespace cuedrill::decks {
namespace {

std::string joined(const std::vector<std::string>& parts, const std::string& separator)
{
    std::string result;
    for (std::size_t i = 0; i < parts.size(); ++i)
        result += (i == 0 ? "" : separator) + parts[i];
    return result;
}

std::string notes_table(const std::vector<Note>& notes)
{
    std::string sql = "CREATE TABLE notes (id integer primary key, guid text not null, mid integer not null, "
                      "mod integer not null, usn integer not null, tags text not null, flds text not null, "
                      "sfld integer not null, csum integer not null, flags integer not null, data text not null);"
                      "CREATE INDEX ix_notes_usn ON notes (usn); CREATE INDEX ix_notes_csum ON notes (csum);";
    for (const Note& note : notes)
        sql += "INSERT INTO notes VALUES (" + std::to_string(note.id) + ", 'guid" + std::to_string(note.id) + "', " +
               std::to_string(note.type) + ", 0, -1, '', " + sql_text(joined(note.fields, "\x1F")) + ", '', 0, 0, '');";
    return sql;
}

} // namespace

std::string sql_text(const std::string& text)
{
    return "'" + common::replace_all(text, "'", "''") + "'";
}

std::string json_text(const std::string& text)
{
    return "\"" + common::replace_all(common::replace_all(text, "\\", "\\\\"), "\"", "\\\"") + "\"";
}

std::string old_collection(const std::vector<NoteType>& types, const std::vector<Note>& notes)
{
    std::vector<std::string> models;
    for (const NoteType& type : types) {
        std::vector<std::string> fields;
        for (const std::string& field : type.fields)
            fields.push_back("{\"name\": " + json_text(field) + ", \"ord\": " + std::to_string(fields.size()) +
                             ", \"font\": \"Arial\", \"media\": []}");
        models.push_back(json_text(std::to_string(type.id)) + ": {\"name\": " + json_text(type.name) + ", \"flds\": [" +
                         joined(fields, ", ") + "], \"tmpls\": [{\"name\": \"Card 1\"}]}");
    }
    return "CREATE TABLE col (id integer primary key, crt integer, mod integer, scm integer, ver integer, dty integer, "
           "usn integer, ls integer, conf text, models text, decks text, dconf text, tags text);"
           "INSERT INTO col VALUES (1, 0, 0, 0, 11, 0, 0, 0, '{}', " +
           sql_text("{" + joined(models, ", ") + "}") + ", '{}', '{}', '{}');" + notes_table(notes);
}

std::string new_collection(const std::vector<NoteType>& types, const std::vector<Note>& notes)
{
    std::string sql =
        "CREATE TABLE col (id integer primary key, ver integer, models text);"
        "INSERT INTO col VALUES (1, 18, '');"
        "CREATE TABLE notetypes (id integer NOT NULL PRIMARY KEY, name text NOT NULL COLLATE unicase, "
        "mtime_secs integer NOT NULL, usn integer NOT NULL, config blob NOT NULL);"
        "CREATE UNIQUE INDEX idx_notetypes_name ON notetypes (name);"
        "CREATE TABLE fields (ntid integer NOT NULL, ord integer NOT NULL, name text NOT NULL COLLATE unicase, "
        "config blob NOT NULL, PRIMARY KEY (ntid, ord)) WITHOUT ROWID;"
        "CREATE UNIQUE INDEX idx_fields_name_ntid ON fields (name, ntid);";
    for (const NoteType& type : types) {
        sql +=
            "INSERT INTO notetypes VALUES (" + std::to_string(type.id) + ", " + sql_text(type.name) + ", 0, 0, x'');";
        for (std::size_t i = 0; i < type.fields.size(); ++i)
            sql += "INSERT INTO fields VALUES (" + std::to_string(type.id) + ", " + std::to_string(i) + ", " +
                   sql_text(type.fields[i]) + ", x'');";
    }
    return sql + notes_table(notes) + "CREATE INDEX idx_notes_mid ON notes (mid);";
}

std::string collection_that_asks_to_update()
{
    return old_collection({{.id = 1, .name = "Basic", .fields = {"Front", "Back"}}},
                          {{.id = 1, .type = 1, .fields = {"Please update to the latest version.", ""}}});
}

std::string package_of(int edition, const std::string& collection)
{
    const std::string bytes = packing::database_of(collection);
    std::vector<packing::PackedFile> files;
    if (edition == 1) {
        files.push_back({.name = "collection.anki2", .bytes = bytes});
    } else {
        files.push_back({.name = "collection.anki2", .bytes = packing::database_of(collection_that_asks_to_update())});
        if (edition == 2)
            files.push_back({.name = "collection.anki21", .bytes = bytes});
        else
            files.push_back({.name = "collection.anki21b", .bytes = packing::zstandard_of(bytes), .method = 0});
        files.push_back({.name = "meta", .bytes = std::string("\x08") + static_cast<char>(edition), .method = 0});
    }
    files.push_back({.name = "media", .bytes = "{}"});
    files.push_back({.name = "0", .bytes = "a picture"});
    return packing::zip_of(files);
}

} // namespace cuedrill::decks
