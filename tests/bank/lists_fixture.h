#pragma once

#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "store/course.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::bank {

using Lines = std::vector<std::string>;

/// An open course described by the test. "Question" and "asked" refer to the direction of the test.
class ListsOfACourse : public testing::Test {
protected:
    ListsOfACourse();
    ~ListsOfACourse() override;

    /// A record of the course to be opened; either side can be described.
    struct NewRecord {
        fakes::QuestionBuilder asked;
        fakes::QuestionBuilder answered;
    };

    NewRecord add(const std::string& question, const std::string& answer = "answer");

    void open_course();
    /// Opens the course with more records: "item 1", "item 2" ... on both sides.
    void open_course_with_items(int count);
    /// Opens the course with more records. Their texts are the record number, the word "item" and this many letters,
    /// more than a course allows.
    void open_course_with_long_texts(int records, int letters, int answer_letters = 2);
    /// An SQL expression for a text of that many letters, an even number.
    static std::string text_of(int letters);
    /// Allows texts and numbers to be stored that the checks of a course forbid.
    void drop_checks();

    /// The text of the error with which the database rejects the statement.
    [[nodiscard]] std::string refusal_of(const std::string& sql);
    /// The message shown when a planned failure kept the course from being read.
    [[nodiscard]] std::string unreadable() const;

    [[nodiscard]] fakes::CourseContents file() const { return fakes::read_course(course.db_path); }

    /// Name of a column of the asked side.
    [[nodiscard]] std::string asked_column(const std::string& ending = "") const
    {
        return (inverted ? "a" : "q") + ending;
    }

    bool inverted = false;
    fakes::CourseBuilder builder;
    fakes::TempFolder folder;
    fakes::FakeClock clock;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    store::Course course{database};
};

/// Runs the tests in both directions; the parameter is whether the course is inverted.
class EitherDirectionLists : public ListsOfACourse, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override { inverted = GetParam(); }
};

std::string direction_name(const testing::TestParamInfo<bool>& is_inverted);

} // namespace cuedrill::bank
