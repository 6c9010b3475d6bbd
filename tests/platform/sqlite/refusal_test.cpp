#include "platform/sqlite/support.h"

#include <filesystem>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

// Each test proves two things: the file is rejected with the right error, and it stays unchanged, with no new file next
// to it.
namespace cuedrill::platform::sqlite::test {
namespace {

class Refusal : public CourseTest {
protected:
    Refusal()
    {
        add("one");
        add("two");
        database.close();
    }

    void rewrite(const std::string& sql) { RawConnection(path).run(sql); }

    /// Replaces `qa` by a table with another definition.
    void remake_qa(const std::string& definition) { rewrite("DROP TABLE qa; " + definition); }

    std::string definition_of_qa()
    {
        return RawConnection(path).query("SELECT sql FROM sqlite_schema WHERE name='qa'");
    }

    std::string definition_with(const std::string& from, const std::string& to)
    {
        std::string text = definition_of_qa();
        EXPECT_NE(text.find(from), std::string::npos);
        return text.replace(text.find(from), from.size(), to);
    }

    std::string refused(DatabaseErrorKind kind)
    {
        const std::string bytes = bytes_of(path);
        const auto names = folder.names();
        const std::string words = error_words(kind, [&] { database.open(path, tables()); });
        EXPECT_FALSE(database.is_open());
        EXPECT_TRUE(bytes_of(path) == bytes) << "the file was changed";
        EXPECT_EQ(folder.names(), names);
        return words;
    }

    void put(std::size_t place, std::string_view bytes)
    {
        std::string all = bytes_of(path);
        all.replace(place, bytes.size(), bytes);
        write_bytes(path, all);
    }
};

TEST_F(Refusal, AMissingFile)
{
    std::filesystem::remove(path);
    error_words(DatabaseErrorKind::missing, [&] { database.open(path, tables()); });
    error_words(DatabaseErrorKind::missing, [&] { database.open("", tables()); });
    EXPECT_TRUE(folder.names().empty()) << "opening never creates";
}

TEST_F(Refusal, AnEmptyFile)
{
    write_bytes(path, "");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is empty.");
}

TEST_F(Refusal, AnotherKindOfFile)
{
    write_bytes(path, "Question;Answer\n");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course.");
    write_bytes(path, std::string(20000, 'x'));
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course.");
}

TEST_F(Refusal, ANameThatLeavesNoRoomForThatOfTheJournal)
{
    const std::string longer = folder / std::string(248, 'x');
    std::filesystem::rename(path, longer);
    path = longer;
    EXPECT_EQ(refused(DatabaseErrorKind::other), "The name is too long.");
}

TEST_F(Refusal, AFolder)
{
    EXPECT_EQ(error_words(DatabaseErrorKind::not_a_course, [&] { database.open(folder.path(), tables()); }),
              "It is a folder.");
}

TEST_F(Refusal, APipeWithoutWaitingForItsOtherEnd)
{
    std::filesystem::remove(path);
    ASSERT_EQ(::mkfifo(path.c_str(), 0666), 0);
    EXPECT_EQ(error_words(DatabaseErrorKind::not_a_course, [&] { database.open(path, tables()); }),
              "It is not an ordinary file.");
}

TEST_F(Refusal, AFileThatNobodyMayWrite)
{
    std::filesystem::permissions(path, std::filesystem::perms(0444));
    EXPECT_EQ(refused(DatabaseErrorKind::read_only), "It cannot be written.");
}

TEST_F(Refusal, AFolderThatNobodyMayWrite)
{
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    EXPECT_EQ(refused(DatabaseErrorKind::read_only), "Its folder cannot be written.");
}

TEST_F(Refusal, AFileThatAnotherProgramHolds)
{
    RawConnection other(path);
    other.run("BEGIN EXCLUSIVE");
    EXPECT_EQ(error_words(DatabaseErrorKind::locked, [&] { database.open(path, tables()); }),
              "Another program is using it.");
    other.run("ROLLBACK; BEGIN IMMEDIATE");
    error_words(DatabaseErrorKind::locked, [&] { database.open(path, tables()); });
    other.run("ROLLBACK");
    database.open(path, tables());
    EXPECT_EQ(count(database), 2);
}

TEST_F(Refusal, AFileOfAnotherProgram)
{
    rewrite("PRAGMA application_id = 7");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course (it belongs to another program).");
}

TEST_F(Refusal, AFileOfANewerVersion)
{
    rewrite("PRAGMA user_version = " + std::to_string(2 << 24));
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It was made by a newer version of the program.");
    rewrite("PRAGMA user_version = -1");
    refused(DatabaseErrorKind::not_a_course);
}

TEST_F(Refusal, AMissingTable)
{
    rewrite("DROP TABLE params");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course (there is no table params).");
}

TEST_F(Refusal, AViewInPlaceOfATable)
{
    rewrite("ALTER TABLE qa RENAME TO other; CREATE VIEW qa AS SELECT * FROM other");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course (its qa is not an ordinary table).");
}

TEST_F(Refusal, AVirtualTable)
{
    remake_qa("CREATE VIRTUAL TABLE qa USING fts5(cnt, q, a)");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course (its qa is not an ordinary table).");
}

TEST_F(Refusal, ATableWithoutRowIds)
{
    rewrite("DROP TABLE params; CREATE TABLE params (param TEXT COLLATE CUEDRILL PRIMARY KEY, date_value REAL, "
            "string_value TEXT COLLATE CUEDRILL, number_value REAL) STRICT, WITHOUT ROWID");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course (its params is not an ordinary table).");
}

TEST_F(Refusal, ATableThatIsNotStrict)
{
    remake_qa(definition_with(") STRICT", ")"));
    refused(DatabaseErrorKind::not_a_course);
}

TEST_F(Refusal, ATriggerOnATable)
{
    rewrite("CREATE TRIGGER evil AFTER INSERT ON qa BEGIN DELETE FROM params; END");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course (its table qa has a trigger).");
}

TEST_F(Refusal, AMissingColumn)
{
    rewrite("ALTER TABLE qa DROP COLUMN a_fails");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course (its table qa has other columns).");
}

TEST_F(Refusal, AColumnTooMany)
{
    rewrite("ALTER TABLE qa ADD COLUMN extra TEXT");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course (its table qa has other columns).");
}

TEST_F(Refusal, ColumnsInAnotherOrder)
{
    remake_qa(definition_with("\"q_fails\"", "\"swap\""));
    rewrite("ALTER TABLE qa RENAME COLUMN a_fails TO q_fails; ALTER TABLE qa RENAME COLUMN swap TO a_fails");
    refused(DatabaseErrorKind::not_a_course);
}

TEST_F(Refusal, AGeneratedColumn)
{
    remake_qa(definition_with("\"q_date_last_test\" REAL", "\"q_date_last_test\" REAL AS (1.5)"));
    refused(DatabaseErrorKind::not_a_course);
    remake_qa(definition_with("REAL AS (1.5)", "REAL AS (1.5) STORED"));
    refused(DatabaseErrorKind::not_a_course);
}

TEST_F(Refusal, AColumnWithADefault)
{
    remake_qa(definition_with("\"q_date_last_test\" REAL", "\"q_date_last_test\" REAL DEFAULT 5"));
    refused(DatabaseErrorKind::not_a_course);
}

TEST_F(Refusal, AColumnOfAnotherTypeOrOrder)
{
    const std::string sound = definition_of_qa();
    remake_qa(definition_with("\"q_date_last_test\" REAL", "\"q_date_last_test\" TEXT"));
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course),
              "It is not a course (the column q_date_last_test of its table qa is of another kind).");
    remake_qa(sound);
    remake_qa(definition_with("COLLATE CUEDRILL", "COLLATE NOCASE"));
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course),
              "It is not a course (the column q of its table qa is of another kind).");
}

TEST_F(Refusal, NumbersThatMayComeBack)
{
    remake_qa(definition_with(" AUTOINCREMENT", ""));
    refused(DatabaseErrorKind::not_a_course);
}

TEST_F(Refusal, AnotherPrimaryKey)
{
    remake_qa(definition_with("INTEGER PRIMARY KEY AUTOINCREMENT", "INTEGER"));
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course (its table qa has another key).");
}

// With such a key, two spellings of a parameter would count as two parameters.
TEST_F(Refusal, AKeyThatTellsUpperAndLowerCaseApart)
{
    rewrite("DROP TABLE params; CREATE TABLE params (param TEXT COLLATE CUEDRILL, date_value REAL, "
            "string_value TEXT COLLATE CUEDRILL, number_value REAL, PRIMARY KEY (param COLLATE BINARY)) STRICT");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It is not a course (its table params has another key).");
}

// Such an index was made with another program's rules for "like".
TEST_F(Refusal, AnIndexThatGoesByAPattern)
{
    rewrite("CREATE INDEX some ON qa (a) WHERE q LIKE 'o%'");
    EXPECT_NE(refused(DatabaseErrorKind::damaged).find("unsafe use of LIKE()"), std::string::npos);
}

TEST_F(Refusal, ADamagedPage)
{
    const std::size_t page = 4096;
    const auto root = std::stoul(RawConnection(path).query("SELECT rootpage FROM sqlite_schema WHERE name = 'qa'"));
    put((root - 1) * page + 3, "\xFF\xFF"); // the number of cells
    const std::string words = refused(DatabaseErrorKind::damaged);
    EXPECT_TRUE(words.starts_with("It is damaged (")) << words;
}

// The engine finds the record when it reads one after another, but not by its number.
TEST_F(Refusal, RecordsThatAreNotInTheirOrder)
{
    rewrite("CREATE INDEX other ON qa (q)");
    const std::size_t page = 4096;
    const auto root = std::stoul(RawConnection(path).query("SELECT rootpage FROM sqlite_schema WHERE name = 'qa'"));
    const std::string cells = bytes_of(path).substr((root - 1) * page + 8, 4); // where the two records begin
    put((root - 1) * page + 8, cells.substr(2) + cells.substr(0, 2));
    EXPECT_EQ(refused(DatabaseErrorKind::damaged), "It is damaged (no such rowid: 1).");
}

TEST_F(Refusal, ADamagedListOfTables)
{
    put(100, "\x07"); // the type of the first page
    refused(DatabaseErrorKind::damaged);
}

TEST_F(Refusal, AFileThatWasCutShort)
{
    const std::string bytes = bytes_of(path);
    write_bytes(path, bytes.substr(0, bytes.size() - 4096));
    refused(DatabaseErrorKind::damaged);
    write_bytes(path, bytes.substr(0, 50));
    refused(DatabaseErrorKind::damaged);
}

/// Five levels of pages, each of which refers 500 times to the same page below: as many rows as nobody can read, in a
/// file of a few pages.
TEST_F(Refusal, PagesThatAreReferredToManyTimes)
{
    constexpr std::size_t page = 4096;
    constexpr std::size_t references = 500;
    constexpr std::size_t levels = 5;
    const auto root = std::stoul(RawConnection(path).query("SELECT rootpage FROM sqlite_schema WHERE name = 'qa'"));
    std::string all = bytes_of(path);
    const std::string leaf = all.substr((root - 1) * page, page);
    ASSERT_EQ(leaf[0], 13);
    const auto big_endian = [](std::size_t number, unsigned bytes) {
        std::string text;
        for (unsigned i = bytes; i > 0; --i)
            text += static_cast<char>((number >> (8 * (i - 1))) & 0xFFU);
        return text;
    };
    const auto inner = [&](std::size_t below) {
        std::string places;
        std::string cells;
        for (std::size_t i = 1; i <= references; ++i) {
            places += big_endian(page - 5 * i, 2);
            cells += big_endian(below, 4) + '\x01'; // the page and a key
        }
        const std::string start = '\x05' + big_endian(0, 2) + big_endian(references, 2) +
                                  big_endian(page - cells.size(), 2) + '\0' + big_endian(below, 4) + places;
        return start + std::string(page - start.size() - cells.size(), '\0') + cells;
    };
    const std::size_t last = all.size() / page;
    all.replace((root - 1) * page, page, inner(last + 1));
    for (std::size_t i = 1; i < levels; ++i)
        all += inner(last + i + 1);
    all += leaf;
    all.replace(28, 4, big_endian(last + levels, 4));
    write_bytes(path, all);
    const std::string words = refused(DatabaseErrorKind::damaged);
    EXPECT_TRUE(words.starts_with("It is damaged (")) << words;
}

TEST_F(Refusal, ATextThatBreaksTheLengthRule)
{
    rewrite("PRAGMA ignore_check_constraints = ON; UPDATE qa SET q = printf('%.*c', 201, 'x')");
    refused(DatabaseErrorKind::damaged);
}

// Another program may define `qa` without the CHECK constraints on text lengths.
TEST_F(Refusal, ATextThatIsFarTooLongByItsRecordAndLength)
{
    std::string loose = definition_of_qa();
    for (const char* const column : {"q", "a"}) {
        const std::string rule = std::string(" CHECK (length(\"") + column + "\") <= 200)";
        loose.erase(loose.find(rule), rule.size());
    }
    remake_qa(loose);
    rewrite("INSERT INTO qa (cnt, q, a) VALUES (1, 'one', printf('%.*c', 10000, 'x')), (7, replace(printf('%.*c', "
            "10000, 'x'), 'x', char(228)), 'x')");
    database.open(path, tables());
    EXPECT_EQ(count(database), 2) << "of bytes there may be more";
    database.close();
    rewrite("UPDATE qa SET q = q || 'x' WHERE cnt = 7");
    EXPECT_EQ(refused(DatabaseErrorKind::damaged), "The text in column q of record 7 of its table qa has 10001 "
                                                   "characters; more than 10000 cannot be read.");
    rewrite("UPDATE qa SET q = 'x', a = printf('%.*c', 20000000, 'x') WHERE cnt = 7");
    EXPECT_EQ(refused(DatabaseErrorKind::damaged), "The text in column a of record 7 of its table qa has 20000000 "
                                                   "characters; more than 10000 cannot be read.");
}

TEST_F(Refusal, AChainOfPagesThatWouldTakeTheWholeStack)
{
    constexpr std::size_t page = 512;
    constexpr std::size_t pages = 100'000;
    rewrite("PRAGMA page_size = 512; VACUUM; CREATE TABLE deep (x)");
    const std::size_t root =
        std::stoul(RawConnection(path).query("SELECT rootpage FROM sqlite_schema WHERE name = 'deep'"));
    std::string all = bytes_of(path);
    const std::size_t last = all.size() / page;
    const auto big_endian = [](std::size_t number) {
        std::string bytes;
        for (unsigned shift = 32; shift > 0; shift -= 8)
            bytes += static_cast<char>((number >> (shift - 8)) & 0xFFU);
        return bytes;
    };
    // An interior table page without cells, which has a single child page. The chain ends with an empty leaf page.
    const auto inner = [&](std::size_t below) {
        return (std::string("\x05\0\0\0\0\x02\0\0", 8) + big_endian(below)).append(page - 12, '\0');
    };
    all.replace((root - 1) * page, page, inner(last + 1));
    for (std::size_t i = 1; i < pages; ++i)
        all += inner(last + i + 1);
    all += std::string("\x0D\0\0\0\0\x02\0\0", 8).append(page - 8, '\0');
    all.replace(28, 4, big_endian(last + pages));
    write_bytes(path, all);
    const std::string words = refused(DatabaseErrorKind::damaged);
    EXPECT_TRUE(words.starts_with("It is damaged (")) << words;
}

// The engine also reports a lack of memory if its integrity check compiles to too many instructions.
TEST_F(Refusal, AFileWhoseRulesAreTooMany)
{
    std::string rule = "CASE a";
    for (int i = 0; i < 1500; ++i)
        rule += " WHEN " + std::to_string(i) + " THEN b";
    std::string definitions = "BEGIN; ";
    for (int i = 0; i < 60; ++i)
        definitions += "CREATE TABLE t" + std::to_string(i) + " (a, b, CHECK (" + rule + " END)); ";
    rewrite(definitions + "COMMIT");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It would take too much memory to be looked through.");
}

// The engine counts characters up to the first NUL, and any number of continuation bytes as one character.
TEST_F(Refusal, ATextThatIsFarTooLongBehindTheRulesOfTheTable)
{
    rewrite("UPDATE qa SET q = 'x' || char(0) || printf('%.*c', 20000, 'y') WHERE cnt = 2");
    EXPECT_EQ(refused(DatabaseErrorKind::damaged), "The text in column q of record 2 of its table qa has 20002 "
                                                   "characters; more than 10000 cannot be read.");
    rewrite("UPDATE qa SET q = 'x', a = CAST(x'C3' AS TEXT) || replace(printf('%.*c', 20000, 'y'), 'y', CAST(x'80' AS "
            "TEXT)) WHERE cnt = 2");
    EXPECT_EQ(refused(DatabaseErrorKind::damaged), "The text in column a of record 2 of its table qa has 20000 "
                                                   "characters; more than 10000 cannot be read.");
}

TEST_F(Refusal, ATextIsMeasuredInWholeCharacters)
{
    for (const char* const before : {"", "x", "xx"}) {
        rewrite("UPDATE qa SET q = '" + std::string(before) +
                "' || char(0) || replace(printf('%.*c', 100000, 'y'), 'y', char(8364)) WHERE cnt = 2");
        EXPECT_NE(refused(DatabaseErrorKind::damaged)
                      .find(" has " + std::to_string(100'001 + std::string_view(before).size()) + " characters;"),
                  std::string::npos);
    }
}

TEST_F(Refusal, AFileThatTakesTooLong)
{
    rewrite("CREATE TABLE slow (x, CHECK (length(hex(zeroblob(x))) >= 0)); WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
            "SELECT i + 1 FROM n WHERE i < 20000) INSERT INTO slow SELECT 0 FROM n; PRAGMA ignore_check_constraints = "
            "ON; UPDATE slow SET x = 400000");
    EXPECT_EQ(refused(DatabaseErrorKind::not_a_course), "It would take too long to be looked through.");
}

TEST_F(Refusal, AFileInLogModeStaysInLogMode)
{
    rewrite("PRAGMA journal_mode = WAL; CREATE TRIGGER evil AFTER INSERT ON qa BEGIN DELETE FROM params; END");
    ASSERT_EQ(bytes_of(path)[18], 2);
    refused(DatabaseErrorKind::not_a_course);
}

TEST_F(Refusal, ALogThatWasLeftBehindIsNotCarriedOver)
{
    const TemporaryFolder elsewhere;
    {
        RawConnection other(path);
        other.run("PRAGMA journal_mode = WAL; ALTER TABLE qa ADD COLUMN extra TEXT");
        std::filesystem::copy(path, elsewhere / "course.crs");
        std::filesystem::copy(path + "-wal", elsewhere / "course.crs-wal");
    }
    const std::string file = elsewhere / "course.crs";
    const std::string bytes = bytes_of(file);
    const std::string log = bytes_of(file + "-wal");
    ASSERT_FALSE(log.empty());
    error_words(DatabaseErrorKind::not_a_course, [&] { database.open(file, tables()); });
    EXPECT_EQ(bytes_of(file), bytes);
    EXPECT_EQ(bytes_of(file + "-wal"), log);
    EXPECT_EQ(elsewhere.names(), (std::vector<std::string>{"course.crs", "course.crs-wal"}));
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
