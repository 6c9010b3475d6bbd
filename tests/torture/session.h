#pragma once

#include "bank/record_bank.h"
#include "exchange/importer.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_files.h"
#include "keep/removed_file.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sound_files.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_files.h"
#include "scheduler/dead_time.h"
#include "store/course.h"
#include "store/course_params.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::torture {

/// What a user does to a course.
enum class Operation {
    know,     ///< a verdict: known
    know_not, ///< a verdict: not known
    undo,     ///< of the last verdict
    show,     ///< a question is shown without a verdict
    insert,   ///< a new record is saved
    change,   ///< a record is saved with other texts
    remove,   ///< a record is deleted
    reset_all,
    import_group, ///< the next step of an import, with up to four records
    invert,       ///< the other direction is asked
    settings,     ///< title, options and target level
    work_time,    ///< the work time is stored
    reopen,       ///< the course is closed and opened
    reorder,      ///< the same under another order of texts, so its indexes are rebuilt
    make_aids     ///< the same without the aid indexes, so they are made
};

inline constexpr int number_of_operations = 15;

[[nodiscard]] const char* name_of(Operation operation);

/// An operation, and the number that its texts, its record and its time are made from.
struct Step {
    Operation operation = Operation::know;
    std::uint64_t number = 0;
};

/// The program's order of texts, or the same backwards with another version.
class TwoOrders final : public platform::TextCompare {
public:
    [[nodiscard]] bool equal(std::string_view a, std::string_view b) const override { return order().equal(a, b); }
    [[nodiscard]] int compare(std::string_view a, std::string_view b) const override;
    [[nodiscard]] std::string fold(std::string_view text) const override { return order().fold(text); }
    [[nodiscard]] std::string lower(std::string_view text) const override { return order().lower(text); }
    [[nodiscard]] std::string nfc(std::string_view text) const override { return order().nfc(text); }
    [[nodiscard]] std::uint32_t order_version() const override { return order().order_version() + (turned ? 1 : 0); }

    bool turned = false; ///< to be changed only while no course is open

private:
    [[nodiscard]] static const platform::icu::IcuTextCompare& order();
};

/// Marks of sound files, in memory.
class KeptMarks final : public platform::SoundFiles {
public:
    [[nodiscard]] bool is_noted(const std::string& path, const std::string& mark) const noexcept override;
    void note(const std::string& path, const std::string& mark) noexcept override { marks_[path] = mark; }

private:
    std::map<std::string, std::string> marks_;
};

/// A clock that tells a second more at each look at its steady time; the time of day stands still.
class CountingClock final : public fakes::FakeClock {
public:
    [[nodiscard]] double steady_seconds() const override { return looks_++; }

private:
    mutable double looks_ = 0;
};

/// One run of the program on one course: the classes below the window, connected as the program connects them. The same
/// steps on the same file always give the same course. What leaves it is kept in "removed.txt" in its folder.
class Session {
public:
    explicit Session(const std::string& path);

    /// Creates the course, without opening it. Functions without noexcept may throw common::Error.
    void create();
    void open();
    void close() noexcept;

    /// Lets the step's time pass and carries it out.
    void perform(const Step& step);
    void let_time_pass(const Step& step);
    /// Opens the course first if an earlier step has left it closed.
    void carry_out(const Step& step);

    /// Of the import that the last step belonged to.
    [[nodiscard]] const exchange::Progress& import_progress() const { return progress_; }

    /// All rows of `qa` and `params`, as text, to be compared.
    [[nodiscard]] std::string dump();

private:
    void keep_lost(bank::Loss loss, const store::QaTexts& texts);
    void begin_use();
    void import_group(std::uint64_t number);
    void save(std::optional<common::Int16> changed, std::uint64_t number);
    void change_settings(std::uint64_t number, bool invert);
    void reopen();
    [[nodiscard]] std::optional<common::Int16> some_record(std::uint64_t number);

    TwoOrders order_;
    KeptMarks marks_;
    CountingClock clock_;
    fakes::FakeFiles files_;
    platform::system::SystemFiles real_files_;
    keep::RemovedFile removed_;
    platform::sqlite::SqliteDatabase database_;
    store::Course course_;
    store::CourseParamsStore params_;
    bank::RecordBank bank_;
    scheduler::DeadTimes dead_times_;
    std::optional<exchange::Importer> importer_;
    exchange::Progress progress_;
};

/// The rows of both tables of the open database.
[[nodiscard]] std::string dump_of(platform::Database& database);

} // namespace cuedrill::torture
