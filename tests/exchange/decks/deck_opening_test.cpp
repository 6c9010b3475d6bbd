#include "adapters/deck_adapters.h"
#include "exchange/decks/deck_fixture.h"
#include "exchange/decks/deck_opening.h"
#include "exchange/decks/packages.h"
#include "fakes/fake_files.h"

#include <gtest/gtest.h>

namespace cuedrill::decks {
namespace {

class DeckOpening : public testing::Test {
protected:
    OpenedDeck open(const std::string& path, const DeckOptions& options = {})
    {
        return open_deck(path, options, files, tools.tools());
    }

    Texts texts(const std::string& path, const DeckOptions& options = {})
    {
        return texts_of(rows_of(*open(path, options).deck));
    }

    fakes::FakeFiles files;
    adapters::DeckAdapters tools;
};

TEST(DeckName, is_that_of_a_table_a_package_or_a_vocabulary)
{
    for (const char* name : {"a.csv", "/b/c.tsv", "d.TAB", "e.txt.csv", "f.apkg", "g.colpkg", "h.KVTML"})
        EXPECT_TRUE(is_deck_name(name)) << name;
}

TEST(DeckName, is_no_other)
{
    for (const char* name : {"a.txt", "csv", ".csv", "a.csv.txt", "a.csv ", "", "a.cdr"})
        EXPECT_FALSE(is_deck_name(name)) << name;
}

TEST_F(DeckOpening, goes_by_the_name_of_the_file)
{
    files.files["/a.csv"] = "a;b\nc;d\n";
    EXPECT_EQ(texts("/a.csv"), (Texts{{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(open("/a.csv").looked_for, "rows with two fields separated by ;");
    files.files["/a.TSV"] = "a,b\tc\n";
    EXPECT_EQ(texts("/a.TSV"), (Texts{{"a,b", "c"}}));
    EXPECT_EQ(open("/a.TSV").looked_for, "rows with two fields separated by TAB");
}

TEST_F(DeckOpening, finds_packages_and_vocabularies)
{
    const std::string package = package_of(3, new_collection({{.id = 1, .name = "Basic", .fields = {"Front", "Back"}}},
                                                             {{.id = 1, .type = 1, .fields = {"Norway?", "Oslo"}}}));
    for (const char* const name : {"/a.apkg", "/a.colpkg"}) {
        files.files[name] = package;
        EXPECT_EQ(texts(name), (Texts{{"Norway?", "Oslo"}}));
        EXPECT_EQ(open(name).looked_for, "notes with two fields");
    }
    files.files["/a.kvtml"] = "<kvtml version=\"2.0\"><identifiers><identifier id=\"0\"/><identifier id=\"1\"/>"
                              "</identifiers><entries><entry><translation id=\"1\"><text>Oslo</text></translation>"
                              "</entry></entries></kvtml>";
    EXPECT_EQ(texts("/a.kvtml"), (Texts{{"", "Oslo"}}));
    EXPECT_EQ(open("/a.kvtml").looked_for, "entries with texts in two languages");
    EXPECT_EQ(texts("/a.kvtml", {.format = "KVTML"}), (Texts{{"", "Oslo"}}));
    expect_error([&] { static_cast<void>(open("/a.kvtml", {.format = "anki-package"})); },
                 "The file is not a package, or its end is missing.");
}

TEST_F(DeckOpening, goes_by_the_format_that_is_said)
{
    files.files["/a.txt"] = "#separator:comma\n#html:true\n<b>a</b>,b\n";
    EXPECT_EQ(texts("/a.txt", {.format = "anki-text"}), (Texts{{"a", "b"}}));
    EXPECT_EQ(open("/a.txt", {.format = "Anki-Text"}).looked_for, "rows with two fields separated by ,");
    files.files["/b.csv"] = "\"a\tb\nc,d\te\n";
    EXPECT_EQ(texts("/b.csv", {.format = "mnemosyne-text"}), (Texts{{"\"a", "b"}, {"c,d", "e"}}));
    EXPECT_EQ(open("/b.csv", {.format = "mnemosyne-text"}).looked_for,
              "lines with two or three texts separated by TAB");
    EXPECT_EQ(texts("/a.txt", {.format = "table"}).size(), 3U);
}

TEST_F(DeckOpening, goes_by_what_is_said_of_a_table)
{
    files.files["/a.csv"] = "\xE9,b;c\nd,e;f\n";
    EXPECT_EQ(texts("/a.csv",
                    {.format = {},
                     .table = {.separator = ',', .quote = {}, .has_header = true, .encoding = Encoding::iso_8859_2}}),
              (Texts{{"d", "e;f"}}));
    files.files["/b.txt"] = "\xED\t\xCF\n";
    EXPECT_EQ(texts("/b.txt", {.format = "mnemosyne-text", .table = {.encoding = Encoding::koi8_r}}),
              (Texts{{"М", "о"}}));
    EXPECT_EQ(texts("/b.txt", {.format = "anki-text", .table = {.encoding = Encoding::koi8_r}}), (Texts{{"М", "о"}}));
}

TEST_F(DeckOpening, of_an_unknown_format_is_refused)
{
    files.files["/a.csv"] = "a,b\n";
    expect_error([&] { static_cast<void>(open("/a.csv", {.format = "cards"})); },
                 "The format \"cards\" is not known. Known are table, anki-text, mnemosyne-text, anki-package, kvtml.");
    expect_error([&] { static_cast<void>(open("/a.txt")); }, "The name of /a.txt does not say its format.");
    EXPECT_EQ(deck_formats(), (Names{"table", "anki-text", "mnemosyne-text", "anki-package", "kvtml"}));
}

TEST_F(DeckOpening, of_a_file_that_is_not_there_is_refused)
{
    expect_error([&] { static_cast<void>(open("/a.csv")); }, "/a.csv: No such file or directory");
}

TEST_F(DeckOpening, of_a_file_that_is_too_long_is_refused)
{
    files.files["/a.csv"] = std::string(64 * 1024 * 1024 + 1, 'x');
    expect_error([&] { static_cast<void>(open("/a.csv")); }, "/a.csv: the file is too large");
}

} // namespace
} // namespace cuedrill::decks
