#pragma once

#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "store/course.h"
#include "store/course_params.h"

#include <gtest/gtest.h>
#include <string>

namespace cuedrill::store {

/// A course in a temporary folder, on the real engine. Tests can make its database operations fail.
class CourseFixture : public testing::Test {
protected:
    fakes::TempFolder folder;
    fakes::FakeClock clock;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    Course course{database};
    CourseParamsStore params{course, clock};

    /// Writes the course and opens it, without reading its parameters.
    void open(const fakes::CourseBuilder& builder, const std::string& name = "course")
    {
        course.close();
        course.db_path = builder.write(folder, name + ".crs");
        course.course_name = name;
        course.apri_db();
        course.start_counting(clock.time);
    }

    /// The stored contents of the course, read as by another program.
    [[nodiscard]] fakes::CourseContents file() const { return fakes::read_course(course.db_path); }
};

} // namespace cuedrill::store
