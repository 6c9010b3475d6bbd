// The window opens where it was left by the previous run of the whole program.

#include "program/program_fixture.h"

#include <QTest>
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

TEST_F(WindowPlaceTest, the_zoom_comes_back_with_the_place)
{
    const auto points = [](Program& program) {
        return program.form1().widget().findChild<QWidget*>("Text_q")->font().pointSizeF();
    };
    run(course, [&](Program& program) {
        program.form1().widget().setGeometry(chosen);
        program.form1().widget().activateWindow();
        QCoreApplication::processEvents();
        QTest::keyClick(&program.form1().widget(), Qt::Key_Plus, Qt::ControlModifier);
        EXPECT_NEAR(points(program), 9.9, 1e-6);
    });
    EXPECT_EQ(run(course,
                  [&](Program& program) {
                      EXPECT_NEAR(points(program), 9.9, 1e-6);
                      EXPECT_EQ(program.form1().widget().geometry(), chosen);
                  }),
              0);
}

} // namespace
} // namespace cuedrill::program
