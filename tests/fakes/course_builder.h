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

/// The database that the program runs on.
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

/// The history of a record in one direction; what is missing is null.
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
    std::int64_t cnt = 0; ///< 0 in a row still to be written: numbered by the engine
    std::string q{};
    std::string a{};
    SideRow q_side{};
    SideRow a_side{};

    friend bool operator==(const QaRow&, const QaRow&) = default;
};

/// A row of `params`; what is missing is null.
struct ParamRow {
    std::string param{};
    std::optional<common::DateTime> date_value{};
    std::optional<std::string> string_value{};
    std::optional<double> number_value{};

    friend bool operator==(const ParamRow&, const ParamRow&) = default;
};

/// All that a course file holds: `qa` in the order of the numbers, `params` in the order of insertion.
struct CourseContents {
    std::vector<QaRow> qa{};
    std::vector<ParamRow> params{};

    friend bool operator==(const CourseContents&, const CourseContents&) = default;

    [[nodiscard]] std::optional<ParamRow> param(const std::string& name) const;
    /// The number of the parameter of exactly that name; nothing without the row, or when it is null.
    [[nodiscard]] std::optional<double> number(const std::string& name) const;
    [[nodiscard]] std::vector<std::string> param_names() const;
};

/// Describes one record: texts without a history, until told otherwise. What is said about the history is about the
/// direction in which `q` is asked, after `inverted()` about the other one.
class QuestionBuilder {
public:
    QuestionBuilder(QaRow& row, common::DateTime now);

    QuestionBuilder& number(std::int64_t cnt);
    QuestionBuilder& inverted();
    QuestionBuilder& level(std::int64_t level);
    QuestionBuilder& attempts(std::int64_t attempts);
    QuestionBuilder& fails(std::int64_t fails);
    /// Tested, and so shown, that long before the builder's present.
    QuestionBuilder& tested_ago(std::chrono::seconds time);
    QuestionBuilder& shown_ago(std::chrono::seconds time);
    QuestionBuilder& never_shown();

private:
    [[nodiscard]] common::DateTime before(std::chrono::seconds time) const;

    QaRow* row_;
    SideRow* side_;
    common::DateTime now_;
};

/// Makes course files through the real engine: what is described is written by `write`, as often as wanted.
class CourseBuilder {
public:
    /// The present, from which the times of tests and shows are counted back, is that of a new FakeClock.
    CourseBuilder();
    explicit CourseBuilder(common::DateTime now);
    CourseBuilder(CourseBuilder&& other) noexcept;
    CourseBuilder& operator=(CourseBuilder&& other) noexcept;
    ~CourseBuilder();

    /// One more record. The builder that is returned lives as long as this one.
    QuestionBuilder question(std::string q, std::string a = "answer");
    CourseBuilder& number_param(std::string name, std::optional<double> value);
    CourseBuilder& text_param(std::string name, std::optional<std::string> value);
    CourseBuilder& date_param(std::string name, std::optional<common::DateTime> value);

    /// Writes the course as a new file of the folder, and gives its full path.
    [[nodiscard]] std::string write(const TempFolder& folder, const std::string& name = "course.crs") const;

private:
    struct Rows;

    common::DateTime now_;
    std::unique_ptr<Rows> rows_;
};

/// What the open database holds.
CourseContents contents_of(platform::Database& database);

/// What the file holds, read through a connection of its own: what another program would see now.
CourseContents read_course(const std::string& path);

// How Google Test shows the values that differ.
void PrintTo(const SideRow& row, std::ostream* out);
void PrintTo(const QaRow& row, std::ostream* out);
void PrintTo(const ParamRow& row, std::ostream* out);
void PrintTo(const CourseContents& contents, std::ostream* out);

} // namespace cuedrill::fakes
