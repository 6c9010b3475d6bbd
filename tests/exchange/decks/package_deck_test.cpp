#include "exchange/decks/package_deck.h"
#include "exchange/decks/packages.h"
#include "exchange/decks/read_deck.h"
#include "platform/archive/packing.h"
#include "platform/archive/zip_archives.h"
#include "platform/sqlite/sqlite_foreign_databases.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::decks {
namespace {

using Fields = std::vector<std::string>;
using packing::PackedFile;

std::unique_ptr<Deck> opened(const std::string& bytes)
{
    return std::make_unique<PackageDeck>(packing::file_of(bytes), platform::archive::ZipArchives(),
                                         platform::sqlite::SqliteForeignDatabases());
}

ReadDeck read(const std::string& bytes)
{
    return read_deck([&] { return opened(bytes); });
}

std::string failure(const std::string& bytes)
{
    return read(bytes).failure;
}

/// A package with these files, deflated.
std::string zip(const std::vector<PackedFile>& files)
{
    return packing::zip_of(files);
}

const std::vector<NoteType> types{
    {.id = 1500000000001, .name = "Basic", .fields = {"Front", "Back"}},
    {.id = 1500000000002, .name = "Unused", .fields = {"A", "B"}},
    {.id = 1500000000003, .name = "Verb \"strong\"", .fields = {"Infinitive", "Past", "Part\\iciple"}}};
const std::vector<Note> notes{{.id = 20, .type = 1500000000001, .fields = {"Norway?", "<b>Oslo</b>"}},
                              {.id = 30, .type = 1500000000003, .fields = {"go", "went", "gone"}},
                              {.id = 10, .type = 1500000000001, .fields = {"Peru?", "Lima"}}};
const std::string in_order = "note 1: Peru? | Lima\nnote 2: Norway? | Oslo\nnote 3: go | went | gone\n";

/// Each edition of the packages.
class PackageEdition : public testing::TestWithParam<int> {
protected:
    /// A package of this edition.
    static std::string package(const std::vector<NoteType>& with_types, const std::vector<Note>& with_notes)
    {
        return package_of(GetParam(), GetParam() == 3 ? new_collection(with_types, with_notes)
                                                      : old_collection(with_types, with_notes));
    }
};

TEST_P(PackageEdition, gives_the_notes_by_their_ids_and_their_types_as_kinds)
{
    const ReadDeck deck = read(package(types, notes));
    EXPECT_EQ(deck.failure, "");
    ASSERT_EQ(deck.kinds.size(), 2U) << "a type without notes is none";
    EXPECT_EQ(deck.kinds[0].name, "Basic");
    EXPECT_EQ(deck.kinds[0].fields, (Fields{"Front", "Back"}));
    EXPECT_EQ(deck.kinds[1].name, "Verb \"strong\"");
    EXPECT_EQ(deck.kinds[1].fields, (Fields{"Infinitive", "Past", "Part\\iciple"}));
    EXPECT_EQ(lines_of(deck.rows), in_order);
    EXPECT_EQ(deck.rows[0].kind, 0U);
    EXPECT_EQ(deck.rows[2].kind, 1U);
    EXPECT_EQ(deck.left_out, "");
}

TEST_P(PackageEdition, gives_plain_texts_and_tells_what_was_left_out)
{
    const ReadDeck deck =
        read(package(types, {{.id = 1,
                              .type = 1500000000001,
                              .fields = {"R&amp;D<br>{{c1::gap::hint}}", "<img src=\"a.png\">x[sound:b.mp3]"}}}));
    EXPECT_EQ(lines_of(deck.rows), "note 1: R&D\ngap | x\n");
    EXPECT_EQ(deck.left_out, "2 pictures and sounds were left out.\n1 cloze deletion was read as its text.\n");
}

TEST_P(PackageEdition, leaves_out_notes_without_text_or_type)
{
    const ReadDeck deck = read(package(types, {{.id = 1, .type = 7, .fields = {"lost"}},
                                               {.id = 2, .type = 1500000000001, .fields = {"<img>", " "}},
                                               {.id = 3, .type = 1500000000001, .fields = {"kept"}},
                                               {.id = 4, .type = 1500000000001, .fields = {"a", "b", "c", "d"}},
                                               {.id = 5, .type = 1500000000001, .fields = {"a", "b"}}}));
    EXPECT_EQ(deck.failure, "");
    EXPECT_EQ(lines_of(deck.rows), "note 3: kept | \nnote 4: a | b\nnote 5: a | b\n");
    EXPECT_EQ(deck.left_out, "1 picture or sound was left out.\n1 note without any text was left out.\n"
                             "1 note was left out, because its note type is missing.\n"
                             "1 note has more fields than its note type; they were left out.\n");
}

TEST_P(PackageEdition, may_have_no_notes)
{
    const ReadDeck deck = read(package(types, {}));
    EXPECT_EQ(deck.failure, "");
    EXPECT_TRUE(deck.kinds.empty());
    EXPECT_TRUE(deck.rows.empty());
}

TEST_P(PackageEdition, says_how_much_of_many_notes_was_read)
{
    std::vector<Note> many;
    for (int i = 1; i <= 6000; ++i)
        many.push_back({.id = i, .type = 1500000000001, .fields = {"question " + std::to_string(i), "answer"}});
    const auto deck = opened(package(types, many));
    EXPECT_EQ(deck->percent(), 0);
    int last = 0;
    int rows = 0;
    for (Deck::Step step = deck->step(); step != Deck::Step::end; step = deck->step()) {
        rows += step == Deck::Step::row ? 1 : 0;
        ASSERT_GE(deck->percent().value_or(-1), last);
        last = *deck->percent();
    }
    EXPECT_EQ(rows, 6000);
    EXPECT_EQ(last, 100);
    EXPECT_EQ(opened(package(types, notes))->percent(), std::nullopt) << "a few notes";
}

TEST_P(PackageEdition, survives_any_changed_byte)
{
    const std::string bytes = package(types, notes);
    int read_all_the_same = 0;
    const std::size_t directory = bytes.size() - 600;
    for (std::size_t place = 0; place < bytes.size(); place += place < 100 || place > directory ? 1U : 7U) {
        std::string changed = bytes;
        changed[place] = static_cast<char>(static_cast<unsigned char>(changed[place]) ^ 0x55U);
        const ReadDeck deck = read(changed);
        if (deck.failure.empty() && lines_of(deck.rows) == in_order)
            ++read_all_the_same;
    }
    EXPECT_GT(read_all_the_same, 0);
}

TEST_P(PackageEdition, whose_end_is_missing_is_refused)
{
    const std::string bytes = package(types, notes);
    for (std::size_t length = 0; length < bytes.size(); length += 97)
        EXPECT_EQ(failure(bytes.substr(0, length)), "The file is not a package, or its end is missing.") << length;
}

INSTANTIATE_TEST_SUITE_P(Each, PackageEdition, testing::Values(1, 2, 3));

TEST(PackageDeck, marks_bytes_that_are_no_characters)
{
    const ReadDeck deck =
        read(package_of(1, old_collection(types, {}) + "INSERT INTO notes VALUES (1, '', 1500000000001, 0, 0, '', "
                                                       "CAST(x'5AFF726963681F4F6B' AS TEXT), '', 0, 0, '')"));
    ASSERT_EQ(deck.rows.size(), 1U);
    EXPECT_EQ(deck.rows[0].texts, (Fields{"Z\xFFrich", "Ok"}));
}

TEST(PackageDeck, reads_the_newest_collection_of_a_package)
{
    const auto named = [](const char* text) {
        return packing::database_of(old_collection(types, {{.id = 1, .type = 1500000000001, .fields = {text}}}));
    };
    const PackedFile first{.name = "collection.anki2", .bytes = named("first")};
    const PackedFile second{.name = "collection.anki21", .bytes = named("second")};
    const PackedFile packed{.name = "collection.anki21b", .bytes = packing::zstandard_of(named("packed"))};
    const auto text = [](const std::vector<PackedFile>& files) { return lines_of(read(zip(files)).rows); };
    EXPECT_EQ(text({first}), "note 1: first | \n");
    EXPECT_EQ(text({first, second}), "note 1: second | \n");
    EXPECT_EQ(text({second}), "note 1: second | \n");
    EXPECT_EQ(text({first, second, packed}), "note 1: packed | \n");
    EXPECT_EQ(text({packed}), "note 1: packed | \n");
}

TEST(PackageDeck, does_not_take_the_request_to_update_for_the_collection)
{
    EXPECT_EQ(
        failure(zip({{.name = "meta", .bytes = "\x08\x03"},
                     {.name = "collection.anki2", .bytes = packing::database_of(collection_that_asks_to_update())}})),
        "The file is not a flashcard package: it has no collection.");
}

TEST(PackageDeck, refuses_a_later_edition)
{
    const auto with_meta = [](const std::string& meta) {
        return failure(zip({{.name = "meta", .bytes = meta},
                            {.name = "collection.anki21b",
                             .bytes = packing::zstandard_of(packing::database_of(new_collection(types, notes)))}}));
    };
    EXPECT_EQ(with_meta("\x08\x03"), "");
    EXPECT_EQ(with_meta("\x08\x03\x12\x01x"), "") << "there may be more fields";
    EXPECT_EQ(with_meta("\x08\x04"), "The package is of edition 4. Only packages up to edition 3 can be read.");
    EXPECT_EQ(with_meta("\x08\xAC\x02"), "The package is of edition 300. Only packages up to edition 3 can be read.");
    EXPECT_EQ(with_meta("\x12\x03"), "The package is damaged: it does not say of which edition it is.");
    EXPECT_EQ(with_meta(""), "The package is damaged: it does not say of which edition it is.");
    EXPECT_EQ(with_meta("\x08"), "The package is damaged: it does not say of which edition it is.");
    EXPECT_EQ(with_meta("\x08" + std::string(20, '\xFF')),
              "The package is damaged: it does not say of which edition it is.");
    EXPECT_EQ(with_meta(std::string(2000, '\x08')), "The file \"meta\" in the package has more than 1024 bytes.");
}

TEST(PackageDeck, refuses_other_archives)
{
    EXPECT_EQ(failure(zip({{.name = "word/document.xml", .bytes = "<a/>"}})),
              "The file is not a flashcard package: it has no collection.");
    EXPECT_EQ(failure("Norway;Oslo\n"), "The file is not a package, or its end is missing.");
}

TEST(PackageDeck, refuses_an_encrypted_collection)
{
    EXPECT_EQ(failure(zip({{.name = "collection.anki2", .bytes = "x", .password = "secret"}})),
              "The file \"collection.anki2\" in the package is encrypted.");
}

TEST(PackageDeck, refuses_a_collection_that_is_no_database)
{
    const std::string words = "The collection in the package cannot be read. It is not a database.";
    EXPECT_EQ(failure(zip({{.name = "collection.anki2", .bytes = ""}})), words);
    EXPECT_EQ(failure(zip({{.name = "collection.anki2", .bytes = std::string(8192, 'x')}})), words);
    EXPECT_EQ(failure(zip({{.name = "collection.anki21b", .bytes = packing::zstandard_of("text")}})), words);
    EXPECT_EQ(
        failure(zip({{.name = "collection.anki21b", .bytes = packing::database_of(old_collection(types, notes))}})),
        "The collection in the package is damaged: it cannot be unpacked.")
        << "it is not packed";
}

TEST(PackageDeck, refuses_a_collection_without_its_tables)
{
    const std::string start = "The collection in the package cannot be read. ";
    EXPECT_EQ(failure(package_of(1, "CREATE TABLE cards (id)")), start + "It has no notes.");
    EXPECT_EQ(failure(package_of(1, "CREATE TABLE notes (id, mid, flds)")),
              start + "The database engine reports: no such table: col.");
    EXPECT_EQ(failure(package_of(1, old_collection(types, notes) + "ALTER TABLE notes RENAME flds TO fields;")),
              start + "The database engine reports: no such column: flds.");
    EXPECT_EQ(failure(package_of(1, old_collection(types, notes) + "ALTER TABLE notes RENAME TO hidden;"
                                                                   "CREATE VIEW notes AS SELECT * FROM hidden;")),
              start + "It has no notes.");
    EXPECT_EQ(failure(package_of(1, old_collection(types, notes) + "CREATE VIRTUAL TABLE more USING fts5(text)")),
              start + "It has a table that is not an ordinary one.");
}

TEST(PackageDeck, refuses_note_types_that_are_no_json)
{
    const std::string collection = old_collection(types, notes);
    EXPECT_EQ(failure(package_of(1, collection + "UPDATE col SET models = '{\"1\": '")),
              "The collection in the package cannot be read. The database engine reports: malformed JSON.");
    const ReadDeck deck = read(package_of(1, collection + "UPDATE col SET models = '[1, 2, {\"flds\": 3}]'"));
    EXPECT_EQ(deck.failure, "");
    EXPECT_EQ(deck.left_out, "3 notes were left out, because their note types are missing.\n");
}

TEST(PackageDeck, orders_fields_by_their_numbers)
{
    const ReadDeck deck = read(package_of(
        1,
        old_collection(types, notes) +
            R"(UPDATE col SET models = '{"1500000000001":{"name":"x","flds":[{"name":"b","ord":1},{"name":"a","ord":0}]}}')"));
    ASSERT_EQ(deck.kinds.size(), 1U);
    EXPECT_EQ(deck.kinds[0].fields, (Fields{"a", "b"}));
}

TEST(PackageDeck, has_a_limit_on_note_types_and_fields)
{
    const std::string words = "The collection in the package cannot be read. It has too many note types or fields.";
    const auto with_fields = [](std::size_t count) {
        Fields fields;
        for (std::size_t i = 0; i < count; ++i)
            fields.push_back("field " + std::to_string(i));
        return failure(package_of(1, old_collection({{.id = 1, .name = "Basic", .fields = fields}}, {})));
    };
    EXPECT_EQ(with_fields(1000), "");
    EXPECT_EQ(with_fields(1001), words);
    const auto with_types = [](int count) {
        std::string sql = new_collection({}, {}) +
                          "WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n LIMIT " +
                          std::to_string(count) + ") ";
        return failure(package_of(3, sql + "INSERT INTO notetypes SELECT x, 'type ' || x, 0, 0, x'' FROM n;"
                                           "INSERT INTO fields SELECT id, 0, 'field', x'' FROM notetypes"));
    };
    EXPECT_EQ(with_types(10'000), "");
    EXPECT_EQ(with_types(10'001), words);
}

TEST(PackageDeck, gives_the_notes_before_a_damage)
{
    std::vector<Note> many;
    for (int i = 1; i <= 2000; ++i)
        many.push_back({.id = i, .type = 1, .fields = {"question " + std::to_string(i), "answer"}});
    std::string bytes =
        packing::database_of(old_collection({{.id = 1, .name = "Basic", .fields = {"Front", "Back"}}}, many));
    // The cells of the page with this note: its row then has no sense.
    const std::size_t page = bytes.find("question 1500\x1F") / 4096 * 4096;
    const std::string whole = lines_of(read(zip({{.name = "collection.anki2", .bytes = bytes}})).rows);
    bytes.replace(page + 8, 40, 40, '\xFF');
    const ReadDeck deck = read(zip({{.name = "collection.anki2", .bytes = bytes}}));
    EXPECT_TRUE(deck.failure.starts_with("The collection in the package cannot be read. It is damaged"))
        << deck.failure;
    EXPECT_TRUE(whole.starts_with(lines_of(deck.rows)));
}

TEST(PackageDeck, stops_when_the_pages_of_a_collection_lead_in_a_circle)
{
    std::vector<Note> many;
    for (int i = 1; i <= 300; ++i)
        many.push_back(
            {.id = i, .type = 1, .fields = {"question " + std::to_string(i) + std::string(100, 'x'), "answer"}});
    std::string bytes =
        packing::database_of(old_collection({{.id = 1, .name = "Basic", .fields = {"Front", "Back"}}}, many));
    // A page of notes that is copied over the next one: the same notes a second time.
    const std::size_t first = bytes.find("question 1x") / 4096 * 4096;
    const std::size_t second = bytes.find("question 100x") / 4096 * 4096;
    ASSERT_NE(first, second);
    bytes.replace(second, 4096, bytes.substr(first, 4096));
    EXPECT_EQ(failure(zip({{.name = "collection.anki2", .bytes = bytes}})),
              "The collection in the package cannot be read. Its notes are not in order.");
}

TEST(PackageDeck, refuses_a_collection_that_is_packed_too_tightly)
{
    // 64 MiB of one letter.
    const std::string bytes(64U << 20U, 'x');
    const std::string words = " in the package is packed so tightly that it is not an honest file.";
    EXPECT_EQ(failure(zip({{.name = "collection.anki2", .bytes = bytes}})), "The file \"collection.anki2\"" + words);
    EXPECT_EQ(failure(zip({{.name = "collection.anki21b", .bytes = packing::zstandard_of(bytes)}})),
              "The file \"collection\"" + words);
}

TEST(PackageDeck, reads_cloze_notes_as_their_texts)
{
    const ReadDeck deck = read(
        package_of(3, new_collection({{.id = 4, .name = "Cloze", .fields = {"Text", "Extra"}}},
                                     {{.id = 1, .type = 4, .fields = {"{{c1::Oslo}} is in {{c2::Norway}}", ""}}})));
    EXPECT_EQ(lines_of(deck.rows), "note 1: Oslo is in Norway | \n");
    EXPECT_EQ(deck.left_out, "2 cloze deletions were read as their texts.\n");
}

} // namespace
} // namespace cuedrill::decks
