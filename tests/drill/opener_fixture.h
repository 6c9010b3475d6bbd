#pragma once

#include "drill/drill_fixture.h"

#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::drill {

inline const std::string opener_title = "Specify name of Cuedrill file to open or create";

/// Opening of courses, with the trace switched on and every box checked by the test. The courses are outside the
/// program's folder.
class OpenerFixture : public DrillFixture {
protected:
    /// @param questions the question text of the sample course; without one there is no sample.
    explicit OpenerFixture(std::string_view questions = {});

    /// A course with one question that is passed in neither direction.
    static fakes::CourseBuilder unpassed_course();

    void remember(const std::string& course_path);
    [[nodiscard]] std::string remembered() const;

    void expect_dialog_answer(const std::string& chosen);
    /// Expects the box that appears when the window shows a course without questions.
    void expect_notice_of_empty_course(int target_level = 5);

    /// The messages of the trace so far.
    [[nodiscard]] std::vector<std::string> traced() const;

    /// The contents of the course file, as another program sees them.
    [[nodiscard]] fakes::CourseContents file() const;

    [[nodiscard]] std::ptrdiff_t times_shown() const;
    [[nodiscard]] std::ptrdiff_t times_put_away() const;

    void expect_open(const std::string& course_path) const;
    void expect_nothing_open() const;

    static platform::MessageBox cannot_open(const std::string& course_path, const std::string& reason);

    fakes::TempFolder courses;
    store::Course& course;
    store::CourseParamsStore& params;
    CourseOpener& opener;

private:
    const LogicParts& make_traced_program(std::string_view questions);
};

} // namespace cuedrill::drill
