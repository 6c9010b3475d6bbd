#include "torture/effort.h"
#include "torture/surroundings.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <random>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

// Has the whole program used where a folder cannot be written or is missing, and with little of what a process has. The
// course is then the same as otherwise, or the program says what it cannot do and nothing is lost.
namespace cuedrill::torture {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;
using Variables = std::map<std::string, std::optional<std::string>>;

/// Exit code of a child whose surroundings cannot be made here.
constexpr int not_permitted = 77;

const Words creation{"clock=" + std::to_string(usual_clock),
                     "path=~/courses/course.crs",
                     "start",
                     "path=~/courses/questions.txt",
                     "choose=m_import",
                     "drill=7:9",
                     "press=pb_9",
                     "type=Text_q:new",
                     "type=Text_a:new",
                     "press=pb_10",
                     "press=pb_1",
                     "press=pb_8",
                     "type=Text_q:changed",
                     "press=pb_10",
                     "press=pb_11",
                     "path=~/courses/export.txt",
                     "choose=m_export",
                     "end"};
const Words next_day{"later=200000", "start=~/courses/course.crs", "copies=1", "drill=5:9", "end"};

Words operator+(Words words, const Words& more)
{
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

/// Makes something of the household unusable, or sets something of the process.
struct Trouble {
    std::string name;
    std::function<void(const Household&)> arrange{};
    std::function<Variables(const Household&)> variables{};
    std::function<void(const Household&)> prepare{}; ///< in the child
    std::string told{};                              ///< what the program has to say about it; empty for nothing
};

void forbid(const std::string& path)
{
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_exec);
}

class Folders : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        const Household household;
        household.give_away();
        usual_ = use(household, creation + next_day, {.ordinary_user = true});
    }

    void TearDown() override { report("folders", {{"troubles", troubles}, {"failures", failures}}); }

    void fail(const std::string& complaint)
    {
        ++failures;
        ADD_FAILURE() << "The surroundings do harm, " << complaint;
    }

    [[nodiscard]] static Use use_in(const Household& household, const Words& words, const Trouble& trouble)
    {
        household.give_away();
        if (trouble.arrange)
            trouble.arrange(household);
        return use(household, words,
                   {.variables = trouble.variables ? trouble.variables(household) : Variables(),
                    .ordinary_user = true,
                    .prepare = [&] {
                        if (trouble.prepare)
                            trouble.prepare(household);
                    }});
    }

    void check(const Trouble& trouble, const Use& found)
    {
        ++troubles;
        if (!found.complaint.empty())
            return fail(trouble.name + ": " + found.complaint + "\n" + found.words);
        if (!found.course || found.course != usual_.course)
            fail(trouble.name + ": the course is another one\n" + found.words);
        if (found.exported != usual_.exported)
            fail(trouble.name + ": the exported file is another one");
        if (found.lines("box: ") != usual_.lines("box: "))
            fail(trouble.name + ": other boxes\n" + found.words);
        if (found.words.find(trouble.told) == std::string::npos)
            fail(trouble.name + ": it does not say: " + trouble.told + "\n" + found.words);
    }

    /// @param reason why the refused steps failed.
    void check_full_disk(const Use& found, const std::string& reason)
    {
        ++troubles;
        if (!found.complaint.empty())
            return fail("full disk: " + found.complaint + "\n" + found.words);
        std::size_t refused = 0;
        for (const std::string& box : found.lines("box: "))
            refused += static_cast<std::size_t>(box.find(reason) != std::string::npos);
        // Two verdicts, the import and the new record; a verdict after the next opening. The export has words of its
        // own.
        if (refused != 5)
            fail("full disk: it says so " + std::to_string(refused) + " times\n" + found.words);
        if (!found.course || found.course->qa.size() != 7 || found.exported.find("@Q@") == std::string::npos)
            return fail("full disk: the course is another one\n" + found.words);
        std::int64_t attempts = 0;
        for (const fakes::QaRow& row : found.course->qa)
            attempts += row.q_side.attempts.value_or(0);
        if (attempts != static_cast<std::int64_t>(found.lines("verdict: ").size()))
            fail("full disk: " + std::to_string(attempts) + " verdicts are stored\n" + found.words);
    }

    static Use usual_;
    std::int64_t troubles = 0;
    std::int64_t failures = 0;
};

Use Folders::usual_;

TEST_F(Folders, AreUsedAsUsualWithoutTrouble)
{
    ASSERT_EQ(usual_.complaint, "") << usual_.words;
    ASSERT_TRUE(usual_.course);
    EXPECT_EQ(usual_.course->qa.size(), 6U) << usual_.words;
    EXPECT_EQ(usual_.lines("no copy").size(), 0U) << usual_.words;
    EXPECT_NE(usual_.exported, "");
    EXPECT_NE(usual_.surroundings.find("# user " + std::to_string(::geteuid() == 0 ? ordinary_user : ::geteuid())),
              std::string::npos);
}

TEST_F(Folders, OfTheProgramThatCannotBeUsedAreNotMissed)
{
    const auto set = [](Variables variables) {
        return [variables = std::move(variables)](const Household&) { return variables; };
    };
    const auto in_the_way = [](const std::string& name) {
        return [name](const Household& household) {
            fs::remove_all(household.file(name));
            std::ofstream(household.file(name)) << "no folder";
        };
    };
    const auto forbidden = [](const std::string& name) {
        return [name](const Household& household) { forbid(household.file(name)); };
    };
    const auto gone = [](const std::string& name) {
        return [name](const Household& household) { fs::remove_all(household.file(name)); };
    };
    const std::string no_copy = "no copy: No copy of the course could be made. ";
    const std::vector<Trouble> list{
        {"data folder that cannot be written", forbidden("data"), {}, {}, no_copy},
        {"data folder that is a file", in_the_way("data"), {}, {}, no_copy},
        {"data folder that is missing", gone("data"), {}, {}, {}},
        {"relative data folder", {}, set({{"XDG_DATA_HOME", "data"}}), {}, {}},
        {"empty data folder", {}, set({{"XDG_DATA_HOME", ""}}), {}, {}},
        {"settings folder that cannot be written", forbidden("config"), {}, {}, {}},
        {"settings folder that is a file", in_the_way("config"), {}, {}, {}},
        {"relative settings folder", {}, set({{"XDG_CONFIG_HOME", "config"}}), {}, {}},
        {"runtime folder that cannot be written", forbidden("run"), {}, {}, {}},
        {"runtime folder that is a file", in_the_way("run"), {}, {}, {}},
        {"runtime folder that is missing", gone("run"), {}, {}, {}},
        {"no runtime folder", {}, set({{"XDG_RUNTIME_DIR", {}}}), {}, {}},
        {"cache folder that cannot be written", forbidden("cache"), {}, {}, {}},
        {"no home folder",
         {},
         set({{"HOME", {}}, {"XDG_DATA_HOME", {}}, {"XDG_CONFIG_HOME", {}}, {"XDG_CACHE_HOME", {}}}),
         {},
         {}},
        {"home folder that is missing",
         {},
         set({{"HOME", "/nonexistent"}, {"XDG_DATA_HOME", {}}, {"XDG_CONFIG_HOME", {}}, {"XDG_CACHE_HOME", {}}}),
         {},
         no_copy},
        {"relative home folder", {}, set({{"HOME", "home"}}), {}, {}},
        {"home folder that cannot be written",
         forbidden("home"),
         set({{"XDG_DATA_HOME", {}}, {"XDG_CONFIG_HOME", {}}, {"XDG_CACHE_HOME", {}}}),
         {},
         no_copy},
        {"no folder for temporary files", {}, set({{"TMPDIR", "/nonexistent"}}), {}, {}},
        {"working folder that is removed",
         {},
         {},
         [](const Household& household) {
             fs::create_directory(household.file("work"));
             fs::current_path(household.file("work"));
             fs::remove(household.file("work"));
         },
         {}},
        {"closed streams",
         {},
         {},
         [](const Household&) {
             for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
                 ::close(stream);
         },
         {}},
        {"few files at once",
         {},
         {},
         [](const Household&) {
             const rlimit limit{40, 40};
             ::setrlimit(RLIMIT_NOFILE, &limit);
         },
         {}}};
    const auto most = static_cast<std::size_t>(effort(static_cast<int>(list.size())));
    for (std::size_t i = 0; i < std::min(most, list.size()); ++i) {
        const Household household;
        check(list[i], use_in(household, creation + next_day, list[i]));
    }
}

/// A file of settings that nobody would write by hand.
std::string hostile_settings(std::mt19937_64& random)
{
    using namespace std::string_literals;
    static const std::vector<std::string> pieces{"[settings]\n",
                                                 "[",
                                                 "]\n",
                                                 "geometry=",
                                                 "sound_courses=",
                                                 "\n",
                                                 "\\x",
                                                 "\"",
                                                 "@ByteArray(",
                                                 "@Variant(",
                                                 ")",
                                                 "=",
                                                 "AdnQywAD",
                                                 "last_db_path=/x/",
                                                 "\0"s,
                                                 "\xFF\xFE",
                                                 "%U20",
                                                 ",",
                                                 ";",
                                                 "9999999999"};
    std::string text;
    for (std::uint64_t left = random() % 200; left > 0; --left) {
        if (random() % 4 == 0)
            text += static_cast<char>(random() % 256);
        else
            text += pieces[random() % pieces.size()];
    }
    return text;
}

TEST_F(Folders, WithHostileSettingsAreUsedAsUsual)
{
    std::mt19937_64 random(seed());
    for (int i = 0; i < effort(5); ++i) {
        const Household household;
        check({"hostile settings " + std::to_string(i)},
              use_in(household, creation + next_day, {"hostile settings", [&random](const Household& house) {
                                                          const fs::path folder =
                                                              fs::path(house.file("config")) / "CUEDRILL";
                                                          fs::create_directory(folder);
                                                          for (const char* const name : {"general.ini", "window.ini"})
                                                              std::ofstream(folder / name, std::ios::binary)
                                                                  << hostile_settings(random);
                                                          house.give_away();
                                                      }}));
    }
}

/// The names in a folder, as one text.
std::string names_in(const std::string& folder)
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    std::string text;
    for (const std::string& name : names)
        text += name + " ";
    return text;
}

TEST_F(Folders, OfANewCourseThatCannotBeWrittenAreNamedAndStayEmpty)
{
    const Household household;
    const Use found = use_in(household, {"path=~/courses/course.crs", "start", "end"},
                             {"folder of a new course that cannot be written",
                              [](const Household& house) { forbid(house.file("courses")); }});
    ++troubles;
    EXPECT_EQ(found.complaint, "") << found.words;
    const Words boxes = found.lines("box: ");
    ASSERT_EQ(boxes.size(), 2U) << found.words;
    EXPECT_TRUE(boxes[1].starts_with("The course ~/courses/course.crs cannot be created.")) << boxes[1];
    EXPECT_EQ(names_in(household.file("courses")), "questions.txt ");
}

/// The course works before and after it cannot be written, and is the same then.
TEST_F(Folders, OfACourseThatCannotBeWrittenLoseNothing)
{
    struct Prohibition {
        std::string name;
        fs::perms folder;
        fs::perms file;
        std::string told; ///< in the only box
    };
    constexpr fs::perms read = fs::perms::owner_read;
    constexpr fs::perms write = fs::perms::owner_write;
    constexpr fs::perms enter = fs::perms::owner_exec;
    const std::string cannot = "The course ~/courses/course.crs cannot be opened. /  / ";
    const std::vector<Prohibition> list{
        {"read-only folder", read | enter, read | write, cannot + "Its folder cannot be written."},
        {"read-only file", read | write | enter, read, cannot + "It cannot be written."},
        {"read-only file and folder", read | enter, read, cannot + "It cannot be written."},
        {"file that cannot be read", fs::perms::owner_all, write, cannot + "You may not read it."},
        {"folder that cannot be entered", read, read | write, "File ~/courses/course.crs does not exist."}};
    for (const Prohibition& forbidden : list) {
        const Household household;
        const Use before = use_in(household, creation, {});
        const std::string names = names_in(household.file("courses"));
        fs::permissions(household.course(), forbidden.file);
        fs::permissions(household.file("courses"), forbidden.folder);
        const Use found = use(household,
                              {"clock=" + std::to_string(usual_clock + 86400), "start=~/courses/course.crs",
                               "drill=6:9", "end", "tool=check ~/courses/course.crs"},
                              {.ordinary_user = true});
        fs::permissions(household.file("courses"), fs::perms::owner_all);
        fs::permissions(household.course(), read | write);
        const fakes::CourseContents kept = fakes::read_course(household.course());
        const Use after =
            use(household,
                {"clock=" + std::to_string(usual_clock + 2 * 86400), "start=~/courses/course.crs", "drill=6:9", "end"},
                {.ordinary_user = true});
        ++troubles;
        if (!found.complaint.empty() || !after.complaint.empty())
            fail(forbidden.name + ": " + found.complaint + after.complaint);
        const Words boxes = found.lines("box: ");
        if (boxes.size() != 1 || boxes[0] != forbidden.told)
            fail(forbidden.name + ": " + found.words);
        if (kept != before.course)
            fail(forbidden.name + ": the course is another one");
        if (names_in(household.file("courses")) != names)
            fail(forbidden.name + ": there is " + names_in(household.file("courses")));
        if (after.lines("verdict: ").empty())
            fail(forbidden.name + ": it cannot be used afterwards\n" + after.words);
    }
}

/// A user does what needs the disk while it is full, and does it again when there is room.
Words use_of_full_disk(const std::string& full, const std::string& free)
{
    return {"clock=" + std::to_string(usual_clock), "path=~/small/course.crs", "start", "path=~/courses/questions.txt",
            "choose=m_import", "drill=6:9", full,
            // Refused.
            "press=bot_yes", "press=bot_yes", "path=~/small/export.txt", "choose=m_export",
            "path=~/courses/questions.txt", "choose=m_import", "press=pb_9", "type=Text_q:new", "type=Text_a:new",
            "press=pb_10", free,
            // Done.
            "press=pb_10", "press=pb_1", "drill=6:9", "path=~/small/export.txt", "choose=m_export", "end", full,
            "start=~/small/course.crs", "drill=3:9", free, "drill=6:9", "end",
            "copy=~/small/course.crs:~/courses/course.crs", "copy=~/small/export.txt:~/courses/export.txt"};
}

/// Whether this process, which is in the child, has mounts of its own from now on.
bool begin_own_mounts()
{
    if (::unshare(CLONE_NEWNS) == 0)
        return true;
    const std::string user = std::to_string(::geteuid());
    const std::string group = std::to_string(::getegid());
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    std::ofstream("/proc/self/setgroups") << "deny";
    std::ofstream("/proc/self/uid_map") << "0 " + user + " 1";
    std::ofstream("/proc/self/gid_map") << "0 " + group + " 1";
    return true;
}

/// In the child: a disk of one mebibyte. Ends the child if this is not permitted.
void mount_small_disk(const Household& household)
{
    if (!begin_own_mounts() || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("none", household.file("small").c_str(), "tmpfs", 0, "size=1m") != 0)
        std::_Exit(not_permitted);
}

TEST_F(Folders, OnAFullDiskLoseNothing)
{
    const Household household;
    fs::create_directory(household.file("small"));
    check_full_disk(use_in(household, use_of_full_disk("limit=100", "limit=none"), {}),
                    "A file would become larger than the system allows.");
}

TEST_F(Folders, OnASmallDiskLoseNothing)
{
    const Household household;
    fs::create_directory(household.file("small"));
    const Use found = use(household, use_of_full_disk("fill=~/small/filler", "remove=~/small/filler"),
                          {.prepare = [&] { mount_small_disk(household); }});
    if (found.complaint == "ended with " + std::to_string(not_permitted))
        GTEST_SKIP() << "This process may not mount a disk.";
    check_full_disk(found, "There is no room left on the disk.");
}

TEST_F(Folders, OfAProgramThatMayOpenFewFilesLoseNothing)
{
    for (const rlim_t files : {40U, 16U, 14U, 12U}) {
        const Household household;
        const Use found =
            use_in(household, creation + next_day, {.name = "few files", .prepare = [files](const Household&) {
                                                        const rlimit limit{files, files};
                                                        ::setrlimit(RLIMIT_NOFILE, &limit);
                                                    }});
        ++troubles;
        if (!found.complaint.empty())
            fail(std::to_string(files) + " files: " + found.complaint + "\n" + found.words);
        if (found.course != usual_.course && found.words.find("Too many files are open.") == std::string::npos)
            fail(std::to_string(files) + " files: the course is another one\n" + found.words);
        if (!found.course && names_in(household.file("courses")) != "questions.txt ")
            fail(std::to_string(files) + " files: there is " + names_in(household.file("courses")));
    }
}

TEST_F(Folders, OfFilesThatNobodyMayUseStayEmpty)
{
    for (const mode_t mask : {0777U, 0222U}) {
        const Household household;
        const Use found =
            use_in(household, creation, {.name = "umask", .prepare = [mask](const Household&) { ::umask(mask); }});
        ++troubles;
        if (!found.complaint.empty())
            fail("umask: " + found.complaint + "\n" + found.words);
        if (found.words.find("The course ~/courses/course.crs cannot be created.") == std::string::npos)
            fail("umask: it does not say why there is no course\n" + found.words);
        if (names_in(household.file("courses")) != "questions.txt ")
            fail("umask: there is " + names_in(household.file("courses")));
    }
}

} // namespace
} // namespace cuedrill::torture
