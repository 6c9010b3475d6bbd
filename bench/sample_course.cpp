#include "sample_course.h"

#include "common/date_time.h"
#include "common/errors.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "store/schema.h"

#include <cstdlib>
#include <fstream>

namespace cuedrill::bench {
namespace {

const char* const syllables[] = {"ka", "lo", "mi",     "re",   "su",       "ta",
                                 "ne", "vo", "\u00E9", "schi", "br\u00FC", "\u00F1a"};

/// A word that depends only on `number`. The words of neighbouring numbers are unrelated.
std::string word(unsigned number)
{
    unsigned state = number * 2654435761U; // Knuth's multiplicative hash
    std::string text;
    for (int i = 0; i < 4; ++i, state /= 12)
        text += syllables[state % 12];
    return text;
}

} // namespace

WorkFolder::WorkFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "cuedrill-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        throw common::Error("No folder for the benchmark files can be made.");
    path_ = name;
}

WorkFolder::~WorkFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string question_of(int number)
{
    const auto n = static_cast<unsigned>(number);
    return "What is the meaning of " + word(n) + " " + word(n + 7919) + " (" + std::to_string(number) + ")?";
}

std::string answer_of(int number)
{
    const auto n = static_cast<unsigned>(number);
    return "It means " + word(n + 104729) + ", " + word(n + 1299709) + ".";
}

void write_question_text(const std::string& path, int records)
{
    std::ofstream file(path, std::ios::binary);
    for (int number = 1; number <= records; ++number)
        file << "@Q@ " << question_of(number) << "\r\n@A@ " << answer_of(number) << "\r\n\r\n";
    if (!file.flush())
        throw common::Error("The question text for the benchmark cannot be written.");
}

void make_sample_course(const std::string& path, const platform::TextCompare& text_compare, int records)
{
    platform::sqlite::SqliteDatabase database(text_compare);
    store::create_course_db(database, path);
    database.close();
    database.open(path, store::course_tables());
    const common::DateTime now = platform::system::SystemClock().now();
    platform::Transaction transaction(database);
    for (int number = 1; number <= records; ++number) {
        const bool tested = number % 3 != 0;
        const double age = 0.001 * (number % 4000);
        database.execute("Insert into qa (q, a, q_attempts, a_attempts, q_fails, a_fails, a_successes, q_successes, "
                         "q_date_last_test, q_date_last_show) values (?1, ?2, 0, 0, 0, 0, 0, ?3, ?4, ?4)",
                         {question_of(number), answer_of(number), std::int64_t{tested ? number % 11 : 0},
                          tested ? platform::Value(now.plus_days(-age).day_number()) : platform::Value()});
    }
    transaction.commit();
}

const WorkFolder& sample_folder()
{
    static const WorkFolder folder;
    return folder;
}

std::string fresh_sample(const WorkFolder& folder, int records)
{
    const std::string made = sample_folder().file(std::to_string(records) + ".crs");
    if (!std::filesystem::exists(made))
        make_sample_course(made, platform::icu::IcuTextCompare(), records);
    std::string path = folder.file("sample.crs");
    std::filesystem::copy_file(made, path);
    return path;
}

} // namespace cuedrill::bench
