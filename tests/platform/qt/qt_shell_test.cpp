#include "platform/qt/qt_shell.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>
#include <gtest/gtest.h>
#include <stdexcept>
#include <unistd.h>

namespace cuedrill::platform::qt {

namespace {

/// What a program started by these tests recorded about itself.
struct Call {
    std::string command; ///< its name, then each argument in brackets
    std::string folder;  ///< working folder
    std::int64_t process = 0;
    std::int64_t session = 0;
    std::string streams; ///< where its input, output and error output lead
};

/// Records its call in the file %1, which gets its name when it is complete. %2 is the program's name.
constexpr auto script = R"sh(#!/bin/sh
exec 3>'%1.part'
printf '%2' >&3
for argument in "$@"; do printf ' [%s]' "$argument" >&3; done
printf '\n%s\n%s\n' "$(pwd -P)" "$$" >&3
for stream in 0 1 2; do printf '%s ' "$(readlink "/proc/$$/fd/$stream")" >&3; done
read -r status <"/proc/$$/stat"
set -- $status
printf '\n%s\n' "$6" >&3
exec 3>&-
mv '%1.part' '%1'
)sh";

/// Reads this process's input from a file of its own while an object of this class lives.
class OwnInput {
public:
    OwnInput()
    {
        if (!file_.open() || ::dup2(file_.handle(), STDIN_FILENO) < 0)
            throw std::runtime_error("no input");
    }
    OwnInput(const OwnInput&) = delete;
    OwnInput& operator=(const OwnInput&) = delete;
    ~OwnInput()
    {
        ::dup2(earlier_, STDIN_FILENO);
        ::close(earlier_);
    }

private:
    QTemporaryFile file_;
    int earlier_ = ::dup(STDIN_FILENO);
};

class QtShellTest : public testing::Test {
protected:
    /// Installs a program that records its call.
    void install(const char* name) const
    {
        write_program(name, QString::fromLatin1(script).arg(called_, QLatin1String(name)));
    }

    void write_program(const char* name, const QString& text) const
    {
        QFile file(programs_.filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    /// The call of the program started last.
    [[nodiscard]] Call call() const
    {
        constexpr int longest = 20'000; // milliseconds
        QFile file(called_);
        if (!QTest::qWaitFor([&] { return file.exists(); }, longest) || !file.open(QIODevice::ReadOnly)) {
            ADD_FAILURE() << "no program has told of its call";
            return {};
        }
        const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
        file.remove();
        return {.command = lines.value(0).toStdString(),
                .folder = lines.value(1).toStdString(),
                .process = lines.value(2).toLongLong(),
                .session = lines.value(4).toLongLong(),
                .streams = lines.value(3).toStdString()};
    }

    QTemporaryDir programs_;
    QTemporaryDir files_;
    QString called_ = files_.filePath(QStringLiteral("called"));
    QtShell shell{{programs_.path().toStdString()}};
};

TEST_F(QtShellTest, AFileIsOpenedByTheDesktopInTheFolderThatIsAskedFor)
{
    install("xdg-open");
    install("gio");
    EXPECT_TRUE(shell.open("/tmp/My notes; $(x) \u00e4 \"b\".pdf", files_.path().toStdString()));
    const Call made = call();
    EXPECT_EQ(made.command, "xdg-open [/tmp/My notes; $(x) \u00e4 \"b\".pdf]");
    EXPECT_EQ(made.folder, QDir(files_.path()).canonicalPath().toStdString());
}

TEST_F(QtShellTest, WithoutAFolderAProgramStartsInThatOfThisProcess)
{
    install("xdg-open");
    EXPECT_TRUE(shell.open("/tmp/a.pdf", ""));
    EXPECT_EQ(call().folder, QDir::current().canonicalPath().toStdString());
}

TEST_F(QtShellTest, AWebAddressKeepsItsSchemeOrGetsOne)
{
    install("xdg-open");
    for (const auto& [target, opened] : {std::pair("https://a.org/?b=c&d#e", "https://a.org/?b=c&d#e"),
                                         {"www.a.org", "http://www.a.org"},
                                         {"WWW.a.org", "http://WWW.a.org"}}) {
        EXPECT_TRUE(shell.open(target, ""));
        EXPECT_EQ(call().command, std::string("xdg-open [") + opened + "]");
    }
}

TEST_F(QtShellTest, TheAddressOfAFileGoesToTheOpenerThatKeepsItsAnchor)
{
    install("xdg-open");
    install("gio");
    EXPECT_TRUE(shell.open("file:///tmp/manual.html#lists", ""));
    EXPECT_EQ(call().command, "gio [open] [file:///tmp/manual.html#lists]");
}

TEST_F(QtShellTest, TheAddressOfAFileGoesToAnotherOpenerWhereThatOneIsMissing)
{
    install("xdg-open");
    EXPECT_TRUE(shell.open("file:///tmp/manual.html#lists", ""));
    EXPECT_EQ(call().command, "xdg-open [file:///tmp/manual.html#lists]");
}

TEST_F(QtShellTest, AFileIsNeverTakenForAnOption)
{
    install("xdg-open");
    EXPECT_TRUE(shell.open("--version", files_.path().toStdString()));
    EXPECT_EQ(call().command, "xdg-open [./--version]");
}

TEST_F(QtShellTest, AProgramSharesNeitherInputNorOutputWithThisOne)
{
    const OwnInput input;
    install("xdg-open");
    EXPECT_TRUE(shell.open("/tmp/a.pdf", ""));
    EXPECT_EQ(call().streams, "/dev/null /dev/null /dev/null ");
}

TEST_F(QtShellTest, AProgramDoesNotEndWithTheTerminalOfThisOne)
{
    install("xdg-open");
    EXPECT_TRUE(shell.open("/tmp/a.pdf", ""));
    const Call made = call();
    EXPECT_EQ(made.session, made.process) << "it is in the session of this process";
}

TEST_F(QtShellTest, TheOtherOpenerIsTakenWhereTheFirstOneIsMissingOrCannotBeStarted)
{
    install("gio");
    install("gedit");
    install("nautilus");
    EXPECT_TRUE(shell.open("/tmp/a.pdf", ""));
    EXPECT_EQ(call().command, "gio [open] [/tmp/a.pdf]");
    write_program("xdg-open", "#!/missing/interpreter\n");
    EXPECT_TRUE(shell.open_folder("/tmp"));
    EXPECT_EQ(call().command, "gio [open] [/tmp]");
    EXPECT_TRUE(shell.edit_text("/tmp/a.txt").has_value());
    EXPECT_EQ(call().command, "gio [open] [/tmp/a.txt]");
}

TEST_F(QtShellTest, AnOpenerThatFindsNothingIsNone)
{
    write_program("xdg-open", "#!/bin/sh\nexit 3\n");
    EXPECT_FALSE(shell.open("/tmp/a.pdf", ""));
    EXPECT_FALSE(shell.open_folder("/tmp"));
    EXPECT_FALSE(shell.edit_text("/tmp/a.txt").has_value());
    install("leafpad");
    EXPECT_TRUE(shell.edit_text("/tmp/a.txt").has_value());
    EXPECT_EQ(call().command, "leafpad [/tmp/a.txt]");
}

TEST_F(QtShellTest, AnOpenerThatIsTheProgramItselfIsNotWaitedFor)
{
    write_program("xdg-open", QStringLiteral("#!/bin/sh\nsleep 1\necho \"slow [$1]\" > '%1'\n").arg(called_));
    QtShell impatient{{programs_.path().toStdString()}, std::chrono::milliseconds(20)};
    EXPECT_TRUE(impatient.open("/tmp/a.pdf", ""));
    EXPECT_FALSE(QFile::exists(called_));
    EXPECT_EQ(call().command, "slow [/tmp/a.pdf]");
}

TEST_F(QtShellTest, AFolderIsShownByTheDesktopOrElseByTheFirstFileManagerThatThereIs)
{
    install("thunar");
    install("nemo");
    EXPECT_TRUE(shell.open_folder("/tmp/a b"));
    EXPECT_EQ(call().command, "thunar [/tmp/a b]");
    install("xdg-open");
    EXPECT_TRUE(shell.open_folder("/tmp/a b"));
    EXPECT_EQ(call().command, "xdg-open [/tmp/a b]");
}

TEST_F(QtShellTest, ATextIsEditedByTheDesktopsEditorOrElseByTheFirstOneThatThereIs)
{
    install("emacs");
    install("mousepad");
    EXPECT_TRUE(shell.edit_text("/tmp/a b.txt").has_value());
    EXPECT_EQ(call().command, "mousepad [/tmp/a b.txt]");
    install("xdg-open");
    const std::optional<std::int64_t> process = shell.edit_text("/tmp/a b.txt");
    const Call made = call();
    EXPECT_EQ(made.command, "xdg-open [/tmp/a b.txt]");
    EXPECT_EQ(process, made.process);
}

TEST_F(QtShellTest, NothingIsStartedWhereThereIsNoProgram)
{
    install("nautilus");
    EXPECT_FALSE(shell.open("/tmp/a.pdf", ""));
    EXPECT_EQ(shell.edit_text("/tmp/a.txt"), std::nullopt);
    QFile::remove(programs_.filePath("nautilus"));
    install("mousepad");
    EXPECT_FALSE(shell.open_folder("/tmp"));
    EXPECT_FALSE(QFile::exists(called_));
}

TEST_F(QtShellTest, NothingIsStartedInAFolderThatThereIsNot)
{
    install("xdg-open");
    EXPECT_FALSE(shell.open("/tmp/a.pdf", files_.filePath("missing").toStdString()));
}

} // namespace

} // namespace cuedrill::platform::qt
