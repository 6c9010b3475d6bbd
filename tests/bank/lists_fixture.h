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

/// An open course that the test describes. "Question" and "asked" go by the direction of the test.
class ListsOfACourse : public testing::Test {
protected:
    ListsOfACourse();
    ~ListsOfACourse() override;

    /// A record of the course to be opened, to be described on either side.
    struct NewRecord {
        fakes::QuestionBuilder asked;
        fakes::QuestionBuilder answered;
    };

    NewRecord add(const std::string& question, const std::string& answer = "answer");

    void open_course();
    /// Opens the course with more records: "item 1", "item 2" ... on both sides.
    void open_course_with_items(int count);
    /// Opens the course with more records, whose texts have so many letters behind the number of the record and the
    /// word "item". A course does not give its records such texts.
    void open_course_with_long_texts(int records, int letters, int answer_letters = 2);
    /// The statement's words for a text of so many letters, an even number.
    static std::string text_of(int letters);
    /// Lets texts and numbers be stored that a course does not give its records.
    void drop_checks();

    /// Why the database does not run the statement, in its own words.
    [[nodiscard]] std::string refusal_of(const std::string& sql);
    /// What is told when a planned failure has kept the course from being read.
    [[nodiscard]] std::string unreadable() const;

    [[nodiscard]] fakes::CourseContents file() const { return fakes::read_course(course.db_path); }

    /// Name of a column on the side that is asked.
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

/// The same in both directions; the parameter is whether the course is inverted.
class EitherDirectionLists : public ListsOfACourse, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override { inverted = GetParam(); }
};

std::string direction_name(const testing::TestParamInfo<bool>& is_inverted);

} // namespace cuedrill::bank
