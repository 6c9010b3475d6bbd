// The window opens where it was left by the previous run of the whole program.

#include "program/program_fixture.h"

#include <csignal>

namespace cuedrill::program {
namespace {

class WindowPlaceTest : public ProgramTest {
protected:
    QRect place_at_start()
    {
        QRect place;
        EXPECT_EQ(run(course, [&](Program& program) { place = program.form1().widget().geometry(); }), 0);
        return place;
    }

    std::string course = fakes::CourseBuilder().write(folder);
    const QRect chosen{31, 59, 700, 610};
};

TEST_F(WindowPlaceTest, the_window_comes_back_where_it_was_when_the_program_ended)
{
    run(course, [&](Program& program) { program.form1().widget().setGeometry(chosen); });
    EXPECT_TRUE(std::filesystem::exists(folder.file("config/CUEDRILL/window.ini")));
    EXPECT_EQ(place_at_start(), chosen);
}

TEST_F(WindowPlaceTest, the_window_comes_back_where_it_was_when_the_session_ended)
{
    run(course, [&](Program& program) {
        program.form1().widget().setGeometry(chosen);
        program.form1().controls().window.on_session_end = {};
        std::raise(SIGTERM);
        QCoreApplication::processEvents();
        // The state is stored before the program is destroyed.
        EXPECT_TRUE(std::filesystem::exists(folder.file("config/CUEDRILL/window.ini")));
    });
    EXPECT_EQ(place_at_start(), chosen);
}

TEST_F(WindowPlaceTest, what_was_remembered_besides_is_untouched)
{
    run(course, [&](Program& program) { program.form1().widget().setGeometry(chosen); });
    const std::string general = folder.read("config/CUEDRILL/general.ini");
    EXPECT_EQ(place_at_start(), chosen);
    EXPECT_EQ(folder.read("config/CUEDRILL/general.ini"), general);
}

} // namespace
} // namespace cuedrill::program
