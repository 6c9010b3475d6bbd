#pragma once

#include "common/date_time.h"

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::platform {
class Database;
class TextCompare;
} // namespace cuedrill::platform

namespace cuedrill::fakes {

class TempFolder;

/// The database engine that the program uses.
class RealEngine {
public:
    RealEngine();
    RealEngine(const RealEngine&) = delete;
    RealEngine& operator=(const RealEngine&) = delete;
    ~RealEngine();

private:
    struct Adapters;
    std::unique_ptr<Adapters> adapters_;

public:
    const platform::TextCompare& text_compare;
    platform::Database& database;
};

/// The history of a record in one direction; a missing value is null.
struct SideRow {
    std::optional<std::int64_t> attempts{};
    std::optional<std::int64_t> fails{};
    std::optional<std::int64_t> successes{};
    std::optional<common::DateTime> date_last_test{};
    std::optional<common::DateTime> date_last_show{};

    friend bool operator==(const SideRow&, const SideRow&) = default;
};

/// A row of `qa`. A null text reads as empty.
struct QaRow {
    std::int64_t cnt = 0; ///< 0 in a row not written yet: the engine assigns the number
    std::string q{};
    std::string a{};
    SideRow q_side{};
    SideRow a_side{};

    friend bool operator==(const QaRow&, const QaRow&) = default;
};

/// A row of `params`; a missing value is null.
struct ParamRow {
    std::string param{};
    std::optional<common::DateTime> date_value{};
    std::optional<std::string> string_value{};
    std::optional<double> number_value{};

    friend bool operator==(const ParamRow&, const ParamRow&) = default;
};

/// The contents of a course file: `qa` ordered by number, `params` in the order of insertion.
struct CourseContents {
    std::vector<QaRow> qa{};
    std::vector<ParamRow> params{};

    friend bool operator==(const CourseContents&, const CourseContents&) = default;

    [[nodiscard]] std::optional<ParamRow> param(const std::string& name) const;
    /// The number of the parameter with exactly this name; std::nullopt if there is no row, or if it is null.
    [[nodiscard]] std::optional<double> number(const std::string& name) const;
    [[nodiscard]] std::vector<std::string> param_names() const;
};

/// Describes one record: texts, and no history by default. The functions for the history apply to the direction in
/// which `q` is asked, and after `inverted()` to the other one.
class QuestionBuilder {
public:
    QuestionBuilder(QaRow& row, common::DateTime now);

    QuestionBuilder& number(std::int64_t cnt);
    QuestionBuilder& inverted();
    QuestionBuilder& level(std::int64_t level);
    QuestionBuilder& attempts(std::int64_t attempts);
    QuestionBuilder& fails(std::int64_t fails);
    /// Sets the time of the last test, and so of the last display, to this long before the builder's present.
    QuestionBuilder& tested_ago(std::chrono::seconds time);
    QuestionBuilder& shown_ago(std::chrono::seconds time);
    QuestionBuilder& never_shown();

private:
    [[nodiscard]] common::DateTime before(std::chrono::seconds time) const;

    QaRow* row_;
    SideRow* side_;
    common::DateTime now_;
};

/// Makes course files with the real engine. `write` may be called several times.
class CourseBuilder {
public:
    /// The builder's present, from which times of tests and displays are counted back, is that of a new FakeClock.
    CourseBuilder();
    explicit CourseBuilder(common::DateTime now);
    CourseBuilder(CourseBuilder&& other) noexcept;
    CourseBuilder& operator=(CourseBuilder&& other) noexcept;
    ~CourseBuilder();

    /// Adds a record. The returned builder is valid as long as this object.
    QuestionBuilder question(std::string q, std::string a = "answer");
    CourseBuilder& number_param(std::string name, std::optional<double> value);
    CourseBuilder& text_param(std::string name, std::optional<std::string> value);
    CourseBuilder& date_param(std::string name, std::optional<common::DateTime> value);

    /// Writes the course as a new file in the folder and returns its full path.
    [[nodiscard]] std::string write(const TempFolder& folder, const std::string& name = "course.crs") const;

private:
    struct Rows;

    common::DateTime now_;
    std::unique_ptr<Rows> rows_;
};

/// The contents of the open database.
CourseContents contents_of(platform::Database& database);

/// The contents of the file, read through a separate connection: what another program would see now.
CourseContents read_course(const std::string& path);

// Makes Google Test print differing values readably.
void PrintTo(const SideRow& row, std::ostream* out);
void PrintTo(const QaRow& row, std::ostream* out);
void PrintTo(const ParamRow& row, std::ostream* out);
void PrintTo(const CourseContents& contents, std::ostream* out);

} // namespace cuedrill::fakes
