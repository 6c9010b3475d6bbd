// Tests when the check of the whole file is deferred or skipped at opening. A deferred check comes before any write.
#include "platform/sqlite/support.h"

#include <map>
#include <sqlite3.h>

namespace cuedrill::platform::sqlite::test {
namespace {

class NotedFiles : public SoundFiles {
public:
    [[nodiscard]] bool is_noted(const std::string& path, const std::string& mark) const noexcept override
    {
        const auto found = marks.find(path);
        return knows_everything || (found != marks.end() && found->second == mark);
    }
    void note(const std::string& path, const std::string& mark) noexcept override { marks[path] = mark; }

    std::map<std::string, std::string> marks;
    bool knows_everything = false; ///< treats every file as noted
};

class SoundFile : public CourseTest {
protected:
    SoundFile()
    {
        add("one");
        add("two");
        database.close();
    }

    void rewrite(const std::string& sql) { RawConnection(path).run(sql); }

    /// Stores a text that is longer than its column allows, which only a check of the whole file finds.
    void damage()
    {
        rewrite("PRAGMA ignore_check_constraints = ON; UPDATE qa SET q = printf('%.*c', 201, 'x') WHERE cnt = 2");
    }

    /// Opens the course and closes it as the program does.
    void use()
    {
        late.open(path, tables());
        late.finish_check();
        late.close();
    }

    NotedFiles noted;
    SqliteDatabase late{compare, std::chrono::milliseconds(0), &noted};
};

TEST_F(SoundFile, IsNotedWhenItIsClosedAndNotCheckedAgain)
{
    use();
    ASSERT_EQ(noted.marks.size(), 1U);
    ASSERT_EQ(noted.marks.count(path), 1U);
    EXPECT_EQ(noted.marks.at(path).find_first_of(" \n"), std::string::npos);
    const NotedFiles before = noted;
    use();
    EXPECT_EQ(noted.marks, before.marks);
}

TEST_F(SoundFile, HasAnotherMarkAfterEachChange)
{
    use();
    const std::string first = noted.marks.at(path);
    late.open(path, tables());
    add_row(late, "three");
    late.close();
    const std::string second = noted.marks.at(path);
    EXPECT_NE(second, first);
    rewrite("UPDATE qa SET a = 'other' WHERE cnt = 1");
    late.open(path, tables());
    late.close();
    EXPECT_EQ(noted.marks.at(path), second) << "changed by another program and not checked since";
    use();
    EXPECT_NE(noted.marks.at(path), second);
}

TEST_F(SoundFile, ThatAnotherProgramChangesAfterTheCheckIsNotNoted)
{
    late.open(path, tables());
    late.finish_check();
    damage();
    late.close();
    EXPECT_TRUE(noted.marks.empty());
}

TEST_F(SoundFile, ThatIsNotedAndThenChangedByAnotherProgramIsNotNotedAgain)
{
    use();
    noted.marks.clear();
    noted.knows_everything = true;
    late.open(path, tables());
    damage();
    add_row(late, "three");
    late.close();
    EXPECT_TRUE(noted.marks.empty());
}

TEST_F(SoundFile, ThatIsNotedIsNotReadAsAWhole)
{
    damage();
    noted.knows_everything = true;
    late.open(path, tables());
    late.finish_check();
    EXPECT_EQ(count(late), 2);
    add_row(late, "three");
    EXPECT_EQ(count(late), 3);
}

TEST_F(SoundFile, IsOpenedFirstAndCheckedAfterwards)
{
    damage();
    const std::string bytes = bytes_of(path);
    late.open(path, tables());
    EXPECT_EQ(count(late), 2);
    const std::string words = error_words(DatabaseErrorKind::damaged, [&] { late.finish_check(); });
    EXPECT_TRUE(words.starts_with("It is damaged (CHECK constraint failed")) << words;
    EXPECT_EQ(error_words(DatabaseErrorKind::damaged, [&] { late.finish_check(); }), words) << "it stays unchecked";
    late.close();
    EXPECT_TRUE(bytes_of(path) == bytes) << "the file was changed";
    EXPECT_TRUE(noted.marks.empty());
}

TEST_F(SoundFile, IsCheckedBeforeTheFirstWrite)
{
    damage();
    const std::string bytes = bytes_of(path);
    late.open(path, tables());
    error_words(DatabaseErrorKind::damaged, [&] { add_row(late, "three"); });
    error_words(DatabaseErrorKind::damaged, [&] { late.begin(); });
    EXPECT_EQ(count(late), 2) << "what can be read is read";
    late.close();
    EXPECT_TRUE(bytes_of(path) == bytes) << "the file was changed";
}

TEST_F(SoundFile, IsWrittenAfterASuccessfulCheck)
{
    late.open(path, tables());
    add_row(late, "three");
    EXPECT_EQ(count(late), 3);
    late.close();
    EXPECT_EQ(noted.marks.size(), 1U) << "the write checked it";
}

TEST_F(SoundFile, WaitsWithItsCheckWhileAnotherProgramWrites)
{
    late.open(path, tables());
    {
        RawConnection other(path);
        other.run("BEGIN IMMEDIATE");
        error_words(DatabaseErrorKind::locked, [&] { late.finish_check(); });
    }
    late.finish_check();
    late.close();
    EXPECT_EQ(noted.marks.size(), 1U);
}

TEST_F(SoundFile, IsNotNotedBeforeItIsChecked)
{
    late.open(path, tables());
    EXPECT_EQ(count(late), 2);
    late.close();
    EXPECT_TRUE(noted.marks.empty());
}

TEST_F(SoundFile, InWhichAStatementMeetsDamageIsNotNotedAgain)
{
    use();
    noted.marks.clear();
    noted.knows_everything = true;
    const auto root = std::stoul(RawConnection(path).query("SELECT rootpage FROM sqlite_schema WHERE name = 'qa'"));
    std::string bytes = bytes_of(path);
    bytes.replace((root - 1) * 4096 + 3, 2, "\xFF\xFF"); // the number of cells
    write_bytes(path, bytes);
    late.open(path, tables());
    error_words(DatabaseErrorKind::damaged, [&] { static_cast<void>(late.query("Select * from qa not indexed")); });
    late.close();
    EXPECT_TRUE(noted.marks.empty());
}

// An earlier copy with the same change counter may have the name by then.
TEST_F(SoundFile, WhoseNameLeadsElsewhereIsNotNoted)
{
    late.open(path, tables());
    late.finish_check();
    const std::string bytes = bytes_of(path);
    ASSERT_EQ(std::rename(path.c_str(), (folder / "moved.crs").c_str()), 0);
    write_bytes(path, bytes);
    late.close();
    EXPECT_TRUE(noted.marks.empty());
}

TEST_F(SoundFile, OfAnotherMakerIsCheckedAtOnce)
{
    rewrite("CREATE INDEX some ON qa (a)");
    damage();
    error_words(DatabaseErrorKind::damaged, [&] { late.open(path, tables()); });
    EXPECT_FALSE(late.is_open());
}

TEST_F(SoundFile, WithoutItsAidIndexesIsCheckedBeforeTheyAreMade)
{
    std::vector<TableSchema> aided = tables();
    aided[0].aids = {{.name = "aid",
                      .statement = "CREATE INDEX aid ON " + aided[0].name + " (" +
                                   (aided[0].name == "qa" ? "a" : "string_value") + ")"}};
    damage();
    const std::string bytes = bytes_of(path);
    error_words(DatabaseErrorKind::damaged, [&] { late.open(path, aided); });
    EXPECT_TRUE(bytes_of(path) == bytes) << "the file was changed";
}

TEST_F(SoundFile, WithALogIsCheckedAtOnce)
{
    damage();
    rewrite("PRAGMA journal_mode = WAL");
    noted.knows_everything = true;
    error_words(DatabaseErrorKind::damaged, [&] { late.open(path, tables()); });
}

TEST_F(SoundFile, ThatIsNewIsNotedToo)
{
    const std::string other = folder / "new.crs";
    create_course(late, other);
    add_row(late, "one");
    late.close();
    EXPECT_EQ(noted.marks.count(other), 1U);
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
