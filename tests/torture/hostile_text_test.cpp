#include "common/errors.h"
#include "exchange/importer.h"
#include "fakes/temp_folder.h"
#include "platform/system/system_clock.h"
#include "platform/system/system_files.h"
#include "torture/bounded_child.h"
#include "torture/course_check.h"
#include "torture/effort.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <utility>
#include <vector>

// Imports question text files that nobody would write by hand. Each gives the records that are in it or an error; never
// a crash, an endless loop or memory without bound. The file is never changed.
namespace cuedrill::torture {
namespace {

constexpr std::size_t mebibyte = 1024UL * 1024;
constexpr std::size_t longest_file = 64 * mebibyte;

/// The text again and again, in whole, up to this many bytes at least.
std::string repeated(const std::string& text, std::size_t bytes)
{
    constexpr std::size_t block = 4096; // appended at once, because the texts are long
    std::string part = text;
    while (part.size() < block && part.size() * 2 <= bytes)
        part += part;
    std::string all;
    all.reserve(bytes + part.size());
    while (all.size() + part.size() <= bytes)
        all += part;
    while (all.size() < bytes)
        all += text;
    return all;
}

struct HostileText {
    std::string name;
    std::function<std::string()> make;
    std::string expected; ///< "imported N" or "stopped N", where N records are stored; or "anything"
};

const std::vector<HostileText>& hostile_texts()
{
    using namespace std::string_literals;
    static const std::vector<HostileText> texts{
        {"empty", [] { return ""s; }, "imported 0"},
        {"one_byte", [] { return "@"s; }, "imported 0"},
        {"nul_bytes", [] { return repeated("\0"s, mebibyte); }, "imported 0"},
        {"nuls_in_texts", [] { return "@Q@ a\0b\0 @A@ \0c"s; }, "imported 1"},
        {"lone_question_mark", [] { return "@Q@"s; }, "imported 0"},
        {"lone_answer_mark", [] { return "@A@"s; }, "imported 0"},
        {"question_without_answer", [] { return "@Q@ a @A@ b @Q@ c"s; }, "imported 1"},
        {"half_markers", [] { return "@Q @A @Q@ a @ A@ @A@ b @Q"s; }, "imported 1"},
        {"only_question_marks", [] { return repeated("@Q@", mebibyte); }, "imported 0"},
        {"only_answer_marks", [] { return repeated("@A@", mebibyte); }, "imported 0"},
        {"only_markers", [] { return repeated("@Q@@A@", mebibyte / 4); }, "imported 0"},
        {"only_at_signs", [] { return repeated("@", 2 * mebibyte); }, "imported 0"},
        {"line_without_end", [] { return repeated("x", 2 * mebibyte); }, "imported 0"},
        {"question_without_end", [] { return "@Q@" + repeated("x", 2 * mebibyte); }, "imported 0"},
        {"answer_without_end", [] { return "@Q@ a @A@" + repeated("x ", 2 * mebibyte); }, "imported 0"},
        {"blanks_without_end", [] { return "@Q@ a @A@ b" + repeated(" ", 2 * mebibyte); }, "imported 1"},
        {"line_ends_without_end", [] { return "@Q@ a @A@ b" + repeated("\r\n", 2 * mebibyte); }, "imported 1"},
        {"comments_without_end", [] { return repeated("/*/", 2 * mebibyte) + "\n@Q@ a @A@ b"; }, "imported 1"},
        {"carriage_returns", [] { return "@Q@ a\r@A@ b\r\r" + repeated("\r", mebibyte / 4); }, "imported 1"},
        {"marks_of_utf_16_little", [] { return "\xFF\xFE@\0Q\0@\0"s; }, "stopped 0"},
        {"marks_of_utf_16_big", [] { return "\xFE\xFF\0@\0Q\0@"s; }, "stopped 0"},
        {"invalid_behind_a_mark", [] { return "\xEF\xBB\xBF@Q@ \xC0\xAF\xED\xA0\x80\xF5 @A@ \xFF"s; }, "imported 1"},
        {"invalid_without_a_mark", [] { return "@Q@ \xC0\xAF\x81 @A@ \xFF"s; }, "imported 1"},
        {"character_cut_at_the_end", [] { return "\xEF\xBB\xBF@Q@ a @A@ b\xE2\x82"s; }, "imported 1"},
        {"accents_without_end", [] { return "@Q@ a @A@ e" + repeated("\xCC\x81", mebibyte); }, "imported 0"},
        {"letters_that_grow", [] { return "@Q@ a @A@ " + repeated("\xEF\xB7\xBA", 150); }, "imported 1"},
        {"more_than_a_course_holds", [] { return repeated("@Q@a@A@b", 40000 * 8UL); }, "stopped 32767"},
        {"longest", [] { return repeated("x", longest_file); }, "imported 0"},
        {"too_long", [] { return repeated("x", longest_file + 1); }, "stopped 0"}};
    return texts;
}

class HostileTexts : public testing::Test {
protected:
    void TearDown() override { report("hostile_texts", {{"files", files}, {"failures", failures}}); }

    /// In the child.
    [[nodiscard]] std::string import(const std::string& path) const
    {
        TwoOrders order;
        platform::sqlite::SqliteDatabase database(order);
        platform::system::SystemFiles system_files;
        platform::system::SystemClock clock;
        store::Course course(database);
        course.db_path = folder.file(course_name);
        course.apri_db();
        course.set_side_fields();
        exchange::Importer importer(course, system_files, clock, order, path);
        std::string words = "imported ";
        try {
            while (!importer.step(exchange::Importer::usual_step).finished) {
            }
        } catch (const common::Error&) {
            words = "stopped ";
        }
        if (is_broken("lose_records"))
            database.execute("Delete from qa where cnt % 2 = 0");
        const std::int64_t stored = course.count_records();
        return importer.progress().stored == stored ? words + std::to_string(stored)
                                                    : "the import has told a falsehood";
    }

    /// @param make makes the same text each time; one that is kept would count as memory of the child.
    void try_text(const std::string& name, const std::function<std::string()>& make, const std::string& expected)
    {
        if (failures >= 5)
            return;
        ++files;
        std::filesystem::remove(folder.file(course_name));
        Session(folder.file(course_name)).create();
        const std::string path = folder.write("questions.txt", make());
        const ChildOutcome outcome = run_bounded([&] { return import(path); });
        std::string complaint = outcome.death;
        if (complaint.empty() && outcome.peak_kilobytes > most_import_kilobytes)
            complaint = "it took " + std::to_string(outcome.peak_kilobytes) + " KiB";
        const bool is_told = outcome.words.starts_with("imported ") || outcome.words.starts_with("stopped ");
        if (complaint.empty() && (!is_told || (expected != "anything" && outcome.words != expected)))
            complaint = outcome.words + " instead of " + expected;
        if (complaint.empty() && read_image(folder.path().string()).at("questions.txt") != make())
            complaint = "the file was changed";
        if (complaint.empty())
            return;
        ++failures;
        ADD_FAILURE() << name << ", seed " << seed() << ": " << complaint;
    }

    fakes::TempFolder folder;
    std::int64_t files = 0;
    std::int64_t failures = 0;
};

TEST_F(HostileTexts, GiveTheirRecordsOrAnError)
{
    for (const HostileText& text : hostile_texts())
        try_text(text.name, text.make, text.expected);
}

TEST_F(HostileTexts, OfRandomPiecesGiveRecordsOrAnError)
{
    using namespace std::string_literals;
    const std::vector<std::string> pieces{"@Q@",       "@A@",      "@q@",  "@",
                                          "/*/",       "\r",       "\n",   "\r\n",
                                          " ",         "\t",       "\0"s,  "\xEF\xBB\xBF",
                                          "x",         "\xC3\xA9", "\xE9", "\xF0\x9F\x98\x80",
                                          "long text", "\xFF"};
    std::mt19937_64 random(seed());
    for (int i = 0; i < effort(100); ++i) {
        std::string text;
        for (std::uint64_t left = random() % 2000; left > 0; --left)
            text += pieces[random() % pieces.size()];
        try_text(
            "pieces " + std::to_string(i), [&text] { return text; }, "anything");
    }
}

} // namespace
} // namespace cuedrill::torture
