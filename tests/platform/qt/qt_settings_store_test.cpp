#include "common/errors.h"
#include "platform/qt/qt_settings_store.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLockFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

namespace cuedrill::platform::qt {

namespace {

class QtSettingsStoreTest : public testing::Test {
protected:
    [[nodiscard]] QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }

    void write(const char* name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QTemporaryDir folder;
    QtSettingsStore store{folder.path().toStdString()};
};

TEST_F(QtSettingsStoreTest, AnAbsentKeyIsNothing)
{
    EXPECT_EQ(store.get("CUEDRILL", "general", "last_db_path"), std::nullopt);
}

TEST_F(QtSettingsStoreTest, GivesBackEveryText)
{
    for (const std::string text : {"/home/me/my course.crs", "", "a,b;c=d#e", "@Invalid()", "\"quoted\"", "C:\\x\\y",
                                   "\u00e4\u0436\U0001F600", "one\r\ntwo", " blanks "}) {
        store.set("CUEDRILL", "general", "last_db_path", text);
        EXPECT_EQ(QtSettingsStore(folder.path().toStdString()).get("CUEDRILL", "general", "last_db_path"), text);
    }
}

TEST_F(QtSettingsStoreTest, KeepsASectionInAFileOfItsOwnAndItsOtherKeys)
{
    store.set("CUEDRILL", "general", "first", "1");
    store.set("CUEDRILL", "general", "second", "2");
    store.set("CUEDRILL", "other", "first", "3");
    EXPECT_TRUE(QFile::exists(path("CUEDRILL/general.ini")));
    EXPECT_TRUE(QFile::exists(path("CUEDRILL/other.ini")));
    EXPECT_EQ(store.get("CUEDRILL", "general", "first"), "1");
    EXPECT_EQ(store.get("CUEDRILL", "general", "second"), "2");
}

/// Tests what happens, and how long the program waits, if something blocks the settings.
class SettingsInTheWay : public QtSettingsStoreTest {
protected:
    void SetUp() override { store.set("CUEDRILL", "general", "last_db_path", "before"); }

    void make_pipe(const char* name) const
    {
        QFile::remove(path(name));
        ASSERT_EQ(::mkfifo(path(name).toLocal8Bit().constData(), 0600), 0);
    }

    /// The text of the error.
    template <typename Operation>
    std::string refusal(const Operation& operation) const
    {
        QElapsedTimer timer;
        timer.start();
        std::string words = "no error";
        try {
            operation();
        } catch (const common::Error& error) {
            words = error.what();
        }
        EXPECT_LT(timer.elapsed(), 2000);
        return words;
    }
    std::string refusal_to_set()
    {
        return refusal([&] { store.set("CUEDRILL", "general", "last_db_path", "after"); });
    }
    [[nodiscard]] std::string name(const char* file) const { return path(file).toStdString(); }
};

TEST_F(SettingsInTheWay, APipeInPlaceOfTheFileIsRefusedAtOnce)
{
    make_pipe("CUEDRILL/general.ini");
    const std::string words = name("CUEDRILL/general.ini") + ": not an ordinary file";
    EXPECT_EQ(refusal([&] { (void)store.get("CUEDRILL", "general", "last_db_path"); }), words);
    EXPECT_EQ(refusal_to_set(), words);
}

TEST_F(SettingsInTheWay, APipeInPlaceOfTheLockIsRefusedAtOnce)
{
    make_pipe("CUEDRILL/general.ini.lock");
    EXPECT_EQ(refusal_to_set(), name("CUEDRILL/general.ini.lock") + ": not an ordinary file");
    EXPECT_EQ(store.get("CUEDRILL", "general", "last_db_path"), "before");
}

TEST_F(SettingsInTheWay, ALockThatAnotherProgramHoldsIsNotWaitedForLong)
{
    QLockFile held(path("CUEDRILL/general.ini.lock"));
    ASSERT_TRUE(held.lock());
    EXPECT_EQ(refusal_to_set(), name("CUEDRILL/general.ini.lock") + ": another program holds it");
    EXPECT_EQ(store.get("CUEDRILL", "general", "last_db_path"), "before");
    held.unlock();
    EXPECT_EQ(refusal_to_set(), "no error");
    EXPECT_EQ(store.get("CUEDRILL", "general", "last_db_path"), "after");
}

TEST_F(SettingsInTheWay, ALockOfAnotherMachineIsNotWaitedForLong)
{
    write("CUEDRILL/general.ini.lock", "1\ncuedrill\nelsewhere\nid\nboot\n");
    EXPECT_EQ(refusal_to_set(), name("CUEDRILL/general.ini.lock") + ": another program holds it");
}

// A file in place of the folder stands for a folder that cannot be written: it stops the superuser, too.
TEST_F(QtSettingsStoreTest, AFolderThatCannotBeMadeIsAnErrorWithItsPath)
{
    write("CUEDRILL", "in the way");
    try {
        store.set("CUEDRILL", "general", "last_db_path", "x");
        FAIL() << "no error";
    } catch (const common::Error& error) {
        EXPECT_NE(std::string(error.what()).find(path("CUEDRILL").toStdString() + ": "), std::string::npos);
    }
}

// A folder in place of the file stands for a file that cannot be opened.
TEST_F(QtSettingsStoreTest, AFileThatCannotBeOpenedIsAnErrorForReadingAndWriting)
{
    ASSERT_TRUE(QDir(folder.path()).mkpath("CUEDRILL/general.ini"));
    EXPECT_THROW(store.set("CUEDRILL", "general", "last_db_path", "x"), common::Error);
    EXPECT_THROW(static_cast<void>(store.get("CUEDRILL", "general", "last_db_path")), common::Error);
}

TEST_F(QtSettingsStoreTest, AFileOfSomethingElseIsAnErrorAndIsLeftAsItIs)
{
    ASSERT_TRUE(QDir(folder.path()).mkpath("CUEDRILL"));
    const QByteArray bytes("not a setting\nnor this\n");
    write("CUEDRILL/general.ini", bytes);
    EXPECT_THROW(store.set("CUEDRILL", "general", "last_db_path", "x"), common::Error);
    QFile file(path("CUEDRILL/general.ini"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
}

TEST_F(QtSettingsStoreTest, ReadsATextWithCommasThatSomebodyWroteByHand)
{
    ASSERT_TRUE(QDir(folder.path()).mkpath("CUEDRILL"));
    write("CUEDRILL/general.ini", "[General]\nlast_db_path=/home/me/a, b.crs\n");
    EXPECT_EQ(store.get("CUEDRILL", "general", "last_db_path"), "/home/me/a, b.crs");
}

TEST_F(QtSettingsStoreTest, TheFolderFollowsTheEnvironment)
{
    const QByteArray earlier = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", "/somewhere/config");
    EXPECT_EQ(QtSettingsStore::default_folder(), "/somewhere/config");
    for (const char* useless : {"", "relative"}) {
        qputenv("XDG_CONFIG_HOME", useless);
        EXPECT_EQ(QtSettingsStore::default_folder(), QDir::homePath().toStdString() + "/.config");
    }
    if (earlier.isNull())
        qunsetenv("XDG_CONFIG_HOME");
    else
        qputenv("XDG_CONFIG_HOME", earlier);
}

} // namespace

} // namespace cuedrill::platform::qt
