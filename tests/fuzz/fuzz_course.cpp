// A course file, and a journal or a write-ahead log next to it, opened and used as the program does. Only the program's
// own errors may come out, a refused file stays as it is, and a file that was found sound stays sound.
//
// The input is the bytes of the file, those of its journal, and four bytes at the end that tell how to take them apart:
// the length of the journal (two bytes), a byte whose bits are the ways of opening, and one without a meaning.
#include "bank/question_list.h"
#include "bank/record_search.h"
#include "common/errors.h"
#include "fuzz/course_seeds.h"
#include "fuzz/fuzzing.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sound_files.h"
#include "platform/sqlite/sqlite_database.h"
#include "scheduler/counts.h"
#include "scheduler/next_question.h"
#include "scheduler/verdict.h"
#include "store/course.h"
#include "store/course_params.h"
#include "store/records.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

namespace {

using namespace cuedrill;
using fuzz::CourseImage;

constexpr std::size_t most_bytes = 65536;
constexpr std::size_t trailer_size = 4;
constexpr unsigned with_sound_files = 1;
constexpr unsigned journal_is_log = 2;

class FixedClock : public platform::Clock {
public:
    [[nodiscard]] common::DateTime now() const override { return common::DateTime::from_day_number(46341.25); }
    [[nodiscard]] double seconds_since_midnight() const override { return 21600; }
    [[nodiscard]] double steady_seconds() const override { return 0; }
};

class FixedRandom : public platform::RandomSource {
public:
    double uniform() override { return 0.5; }
};

/// Knows no file: each check is put off, none is left out.
class NoSoundFiles : public platform::SoundFiles {
public:
    [[nodiscard]] bool is_noted(const std::string&, const std::string&) const noexcept override { return false; }
    void note(const std::string&, const std::string&) noexcept override {}
};

const platform::TextCompare& text_compare()
{
    static const platform::icu::IcuTextCompare compare;
    return compare;
}

/// The folder of this process in TMPDIR; where that is not set, in memory, if the system has such a place. It is
/// removed at the end, but not after a crash.
class Folder {
public:
    Folder()
    {
        std::error_code missing;
        const bool in_memory = std::getenv("TMPDIR") == nullptr && std::filesystem::is_directory("/dev/shm", missing);
        std::string name = (in_memory ? "/dev/shm" : std::filesystem::temp_directory_path().string()) + "/fuzz-XXXXXX";
        fuzz::require(::mkdtemp(name.data()) != nullptr, "a temporary folder is made");
        path_ = name;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string course() const { return path_ + "/course.crs"; }

    void clear() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            std::filesystem::remove(entry.path());
    }
    [[nodiscard]] std::size_t files() const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
    }

private:
    std::string path_;
};

const Folder& folder()
{
    static const Folder made;
    return made;
}

const std::vector<CourseImage>& seeds()
{
    static const std::vector<CourseImage> made = fuzz::make_course_seeds(folder().path(), text_compare());
    return made;
}

/// An input, taken apart.
struct Input {
    CourseImage image{};
    bool put_off = false; ///< whether the check of the file may be put off
};

Input taken_apart(std::string_view bytes)
{
    Input input;
    if (bytes.size() < trailer_size)
        return input;
    const std::string_view trailer = bytes.substr(bytes.size() - trailer_size);
    bytes.remove_suffix(trailer_size);
    const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(trailer[place]); };
    const std::size_t journal = std::min(static_cast<std::size_t>(byte(0)) * 256U + byte(1), bytes.size());
    input.image.course = bytes.substr(0, bytes.size() - journal);
    input.image.journal = bytes.substr(bytes.size() - journal);
    input.image.is_log = (byte(2) & journal_is_log) != 0;
    input.put_off = (byte(2) & with_sound_files) != 0;
    return input;
}

std::string put_together(const Input& input)
{
    const std::size_t journal = input.image.journal.size();
    std::string bytes = input.image.course + input.image.journal;
    bytes += static_cast<char>(journal / 256);
    bytes += static_cast<char>(journal % 256);
    bytes += static_cast<char>((input.put_off ? with_sound_files : 0U) | (input.image.is_log ? journal_is_log : 0U));
    return bytes += '\0';
}

/// Runs `action`; false if it ends with one of the program's errors.
bool succeeds(const std::function<void()>& action)
{
    try {
        action();
        return true;
    } catch (const common::Error& error) {
        fuzz::require(*error.what() != '\0', "an error has a text");
        return false;
    }
}

/// A course that is open, with what the window needs to use it.
class OpenCourse {
public:
    explicit OpenCourse(platform::SoundFiles* sound_files)
        : database_(text_compare(), std::chrono::milliseconds(0), sound_files)
    {
        dead_times_.init_dead_time_array();
    }

    /// As at the start of the program.
    [[nodiscard]] bool open()
    {
        return succeeds([&] {
            course_.db_path = folder().course();
            course_.apri_db();
        });
    }

    [[nodiscard]] bool read_params()
    {
        return succeeds([&] {
            params_.read_params();
            course_.set_side_fields();
            course_.record_count = course_.count_records();
            course_.start_counting(clock_.now());
        });
    }

    /// What the window reads: everything that an unsound file may mislead. It ends at the first error, because each
    /// statement on a hostile file may take all the time that it is given.
    void read()
    {
        if (!records())
            return;
        succeeds([&] {
            static_cast<void>(scheduler::count(course_));
            static_cast<void>(scheduler::count_mature(course_, dead_times_, clock_.now()));
            auto list = bank::read_questions(course_, "order by q", true);
            if (list)
                bank::make_lines(*list, course_, text_compare());
            static_cast<void>(bank::search(course_, course_.Q_FIELD, "*e?t*"));
        });
    }

    [[nodiscard]] bool finish_check()
    {
        const bool sound = succeeds([&] { database_.finish_check(); });
        fuzz::require(sound || !fuzz::is_broken(), "the check finds nothing");
        return sound;
    }

    /// All records; std::nullopt after an error.
    [[nodiscard]] std::optional<std::vector<store::QaRecord>> records()
    {
        std::vector<store::QaRecord> found;
        const bool complete = succeeds([&] {
            database_.query("Select * from qa order by cnt", std::span<const platform::Value>(),
                            [&](const platform::Row& row) {
                                found.push_back(store::record_of(row));
                                return true;
                            });
        });
        return complete ? std::optional(std::move(found)) : std::nullopt;
    }

    /// One verdict, and the work time.
    void write()
    {
        succeeds([&] {
            const auto next = scheduler::next_question(course_, dead_times_, 0, clock_.now(), random_);
            if (next)
                scheduler::judge(course_, dead_times_, *next, true, clock_.now());
        });
        succeeds([&] { params_.save_work_time(clock_.now()); });
    }

    void close() { course_.close(); }

private:
    FixedClock clock_;
    FixedRandom random_;
    platform::sqlite::SqliteDatabase database_;
    store::Course course_{database_};
    store::CourseParamsStore params_{course_, clock_};
    scheduler::DeadTimes dead_times_;
};

void use(const Input& input)
{
    NoSoundFiles sound_files;
    OpenCourse course(input.put_off ? &sound_files : nullptr);
    if (!course.open()) {
        // The engine rolls a journal back as soon as it reads the file, refused or not.
        const bool unchanged = !input.image.journal.empty() ||
                               (folder().files() == 1 && fuzz::bytes_of(folder().course()) == input.image.course);
        fuzz::require(unchanged, "a refused file is unchanged");
        return;
    }
    const bool usable = course.read_params();
    if (usable)
        course.read();
    if (!course.finish_check())
        return;
    if (usable)
        course.write();
    const auto records = course.records();
    course.close();

    OpenCourse again(nullptr);
    const bool opened = again.open();
    fuzz::require(opened, "a sound course is opened again");
    fuzz::require(again.records() == records, "a course has the same records when it is opened again");
}

using Engine = std::minstd_rand;

std::size_t below(Engine& engine, std::size_t end)
{
    return end == 0 ? 0 : engine() % end;
}

std::size_t page_size_of(const std::string& file)
{
    constexpr std::size_t place = 16;
    if (file.size() < place + 2)
        return 512;
    const std::size_t size =
        static_cast<unsigned char>(file[place]) * 256U + static_cast<unsigned char>(file[place + 1]);
    return size < 512 || (size & (size - 1)) != 0 ? 512 : size;
}

/// Changes the bytes from `place` up to `place + size` as libFuzzer does.
void change(std::string& file, std::size_t place, std::size_t size)
{
    size = std::min(size, file.size() - std::min(place, file.size()));
    if (size != 0)
        LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(file.data() + place), size, size);
}

/// Changes the file at a place that has a meaning for the engine: numbers of pages, cells, lengths.
void change_within_page(std::string& file, Engine& engine)
{
    constexpr std::array<char, 8> interesting{0, 1, 2, 5, 10, 13, '\x7F', '\xFF'};
    const std::size_t page_size = page_size_of(file);
    const std::size_t page = below(engine, file.size() / page_size);
    const std::size_t start = page * page_size + (page == 0 ? 100 : 0);
    const std::size_t end = std::min((page + 1) * page_size, file.size());
    switch (below(engine, 5)) {
    case 0: // the head of the page and the first places of cells
        change(file, start + below(engine, 16), 1 + below(engine, 4));
        break;
    case 1: // any bytes
        change(file, start + below(engine, page_size), 1 + below(engine, 16));
        break;
    case 2: { // a small number that may be that of another page
        const std::size_t place = start + below(engine, page_size);
        if (place < end)
            file[place] = static_cast<char>(below(engine, file.size() / page_size + 2));
        break;
    }
    case 3: {
        const std::size_t place = start + below(engine, page_size);
        if (place < end)
            file[place] = interesting.at(below(engine, interesting.size()));
        break;
    }
    default: // the head of the file: free pages, versions, sizes
        change(file, 18 + below(engine, 76), 1 + below(engine, 4));
    }
}

/// Changes which pages there are.
void change_pages(std::string& file, const CourseImage& other, Engine& engine)
{
    const std::size_t page_size = page_size_of(file);
    const std::size_t pages = file.size() / page_size;
    const std::size_t from = below(engine, pages) * page_size;
    const std::size_t to = below(engine, pages) * page_size;
    switch (below(engine, 4)) {
    case 0:
        file.replace(to, page_size, file.substr(from, page_size));
        break;
    case 1:
        file += file.substr(from, page_size);
        break;
    case 2:
        file.resize(file.size() - std::min(file.size(), 1 + below(engine, 2 * page_size)));
        break;
    default:
        if (to + page_size <= other.course.size())
            file.replace(to, page_size, other.course.substr(to, page_size));
    }
}

Input mutated(Input input, Engine& engine)
{
    const CourseImage& seed = seeds().at(below(engine, seeds().size()));
    if (input.image.course.size() < 100 || !input.image.course.starts_with("SQLite format 3") ||
        below(engine, 256) == 0)
        input.image = seed;
    for (std::size_t changes = 1 + below(engine, 4); changes > 0; --changes) {
        std::string& journal = input.image.journal;
        if (!journal.empty() && below(engine, 3) == 0)
            change(journal, below(engine, 2) == 0 ? below(engine, 40) : below(engine, journal.size()),
                   1 + below(engine, 8));
        else if (below(engine, 6) == 0)
            change_pages(input.image.course, seed, engine);
        else
            change_within_page(input.image.course, engine);
    }
    if (below(engine, 16) == 0)
        input.put_off = !input.put_off;
    if (below(engine, 32) == 0)
        input.image.journal = seed.journal;
    if (below(engine, 64) == 0)
        input.image.is_log = !input.image.is_log;
    return input;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/)
{
    static_cast<void>(seeds());
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned number)
{
    Engine engine(number);
    const std::string bytes = put_together(mutated(taken_apart(fuzz::text_of(data, size)), engine));
    if (bytes.size() > most)
        return LLVMFuzzerMutate(data, size, most);
    std::memcpy(data, bytes.data(), bytes.size());
    return bytes.size();
}

/// The course of one input with the pages of the other behind some page.
extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* data, std::size_t size, const std::uint8_t* other,
                                                 std::size_t other_size, std::uint8_t* out, std::size_t most,
                                                 unsigned number)
{
    Engine engine(number);
    Input input = taken_apart(fuzz::text_of(data, size));
    const Input second = taken_apart(fuzz::text_of(other, other_size));
    const std::size_t page_size = page_size_of(input.image.course);
    const std::size_t place = (1 + below(engine, input.image.course.size() / page_size)) * page_size;
    if (place < input.image.course.size() && place < second.image.course.size())
        input.image.course.replace(place, std::string::npos, second.image.course.substr(place));
    const std::string bytes = put_together(input);
    if (bytes.size() > most)
        return 0;
    std::memcpy(out, bytes.data(), bytes.size());
    return bytes.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > most_bytes)
        return -1;
    const Input input = taken_apart(fuzz::text_of(data, size));
    if (input.image.course.empty())
        return -1;
    folder().clear();
    fuzz::write_bytes(folder().course(), input.image.course);
    if (!input.image.journal.empty())
        fuzz::write_bytes(folder().course() + (input.image.is_log ? "-wal" : "-journal"), input.image.journal);
    use(input);
    return 0;
}
