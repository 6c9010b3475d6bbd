// The real window, database engine and settings together: they are wired correctly, and the course contains what the
// window shows.

#include "program/program_fixture.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>

namespace cuedrill::program {
namespace {

TEST_F(ProgramTest, drills_a_course_and_finds_every_verdict_again)
{
    fakes::CourseBuilder builder;
    builder.question("one", "1");
    builder.question("two", "2");
    builder.question("three", "3");
    const std::string path = builder.write(folder);

    EXPECT_EQ(run(path,
                  [](Program& program) {
                      platform::Form1& form1 = program.form1().controls();
                      EXPECT_EQ(label(program, "panel_dialog"), "Shall I ask you a question?");
                      press(program, "bot_yes");
                      EXPECT_EQ(form1.Text_q.text(), "one");
                      EXPECT_EQ(form1.Text_a.text(), "");
                      press(program, "bot_yes");
                      EXPECT_EQ(form1.Text_a.text(), "1");
                      press(program, "bot_yes");
                      EXPECT_EQ(form1.Text_q.text(), "two");
                      press(program, "bot_yes");
                      press(program, "bot_no");
                      EXPECT_EQ(form1.Text_q.text(), "three");
                      EXPECT_EQ(label(program, "Panel_score"), "1");
                  }),
              0);

    const fakes::CourseContents contents = fakes::read_course(path);
    EXPECT_EQ(contents.qa.at(0).q_side.successes, 3);
    EXPECT_EQ(contents.qa.at(0).q_side.attempts, 1);
    EXPECT_EQ(contents.qa.at(1).q_side.successes, 0);
    EXPECT_EQ(contents.qa.at(1).q_side.fails, 1);
    EXPECT_EQ(contents.qa.at(2).q_side.attempts, std::nullopt);
    EXPECT_EQ(contents.number("score_TODAY"), 1);

    // The second start needs no path, because the course is remembered.
    EXPECT_EQ(run("",
                  [](Program& program) {
                      platform::Form1& form1 = program.form1().controls();
                      EXPECT_EQ(form1.window.caption(), "Cuedrill: Course course [course]");
                      EXPECT_EQ(label(program, "panel_total"), "3");
                      EXPECT_EQ(label(program, "Panel_score"), "1");
                  }),
              0);
    EXPECT_EQ(file_dialogs, 0);
}

TEST_F(ProgramTest, ends_with_its_main_window_also_while_the_message_window_is_open)
{
    fakes::CourseBuilder builder;
    builder.question("one", "1");
    bool shown = false;
    EXPECT_EQ(run(builder.write(folder),
                  [&shown](Program& program) {
                      choose(program, "m_version_history");
                      for (const QWidget* window : QApplication::topLevelWidgets())
                          shown = shown || (window->objectName() == QLatin1String("f_msgbox") && window->isVisible());
                  }),
              0);
    EXPECT_TRUE(shown);
}

TEST_F(ProgramTest, shows_the_record_of_a_line_of_a_list)
{
    fakes::CourseBuilder builder;
    builder.question("one", "1");
    builder.question("two", "2").level(3);
    EXPECT_EQ(run(builder.write(folder),
                  [](Program& program) {
                      choose(program, "m_show_sort_by_score");
                      platform::Form1& form1 = program.form1().controls();
                      EXPECT_EQ(label(program, "P_status"),
                                "2 questions (the number on the left is the question score)");
                      auto& list = *program.form1().widget().findChild<QAbstractItemView*>("listav");
                      EXPECT_EQ(list.model()->rowCount(), 2);
                      EXPECT_TRUE(form1.listav.has_focus());
                      list.setCurrentIndex(list.model()->index(1, 0));
                      press_with_keyboard(list);
                      EXPECT_EQ(form1.Text_q.text(), "two");
                      EXPECT_FALSE(form1.listav.visible());
                  }),
              0);
}

TEST_F(ProgramTest, goes_on_by_keyboard_when_the_pressed_button_disappears)
{
    fakes::CourseBuilder builder;
    builder.question("one", "1");
    builder.question("two", "2");
    const std::string path = builder.write(folder);
    EXPECT_EQ(run(path,
                  [](Program& program) {
                      press(program, "bot_yes");
                      press(program, "bot_yes");
                      QMainWindow& window = program.form1().widget();
                      auto* const ignore = window.findChild<QAbstractButton*>("bot_other");
                      ignore->setFocus();
                      EXPECT_TRUE(program.form1().controls().bot_other.has_focus());
                      press_with_keyboard(*ignore);
                      EXPECT_EQ(program.form1().controls().Text_q.text(), "two");
                      EXPECT_FALSE(ignore->isVisible());
                      EXPECT_EQ(window.focusWidget(), window.findChild<QAbstractButton*>("bot_yes"));
                      window.close();
                  }),
              0);
}

TEST_F(ProgramTest, names_a_damaged_course_and_lets_another_one_be_chosen)
{
    const std::string path = folder.write("broken.crs", "this is no course, and long enough to be looked at");
    EXPECT_EQ(run(path, [](Program&) { FAIL() << "no course can be open"; }), 0);
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_TRUE(boxes.at(0).starts_with("The course " + path + " cannot be opened.")) << boxes.at(0);
    EXPECT_EQ(file_dialogs, 1);
    EXPECT_EQ(folder.read("broken.crs"), "this is no course, and long enough to be looked at");
}

TEST_F(ProgramTest, ends_when_there_is_nothing_to_open_and_the_dialog_is_cancelled)
{
    EXPECT_EQ(run("", [](Program&) { FAIL() << "no course can be open"; }), 0);
    EXPECT_EQ(file_dialogs, 1);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(ProgramTest, opens_a_quoted_path)
{
    const std::string path = fakes::CourseBuilder().write(folder, "a course.crs");
    bool shown = false;
    EXPECT_EQ(run("\"" + path + "\"", [&](Program& program) { shown = program.course().db_path == path; }), 0);
    EXPECT_TRUE(shown);
}

TEST_F(ProgramTest, reports_a_course_that_fails_in_the_middle_and_goes_on)
{
    fakes::CourseBuilder builder;
    builder.question("one", "1");
    const std::string path = builder.write(folder);
    EXPECT_EQ(run(path,
                  [&](Program& program) {
                      press(program, "bot_yes");
                      press(program, "bot_yes");
                      std::filesystem::rename(path, path + ".away");
                      boxes.clear();
                      press(program, "bot_yes");
                      ASSERT_EQ(boxes.size(), 1U);
                      EXPECT_TRUE(boxes.at(0).starts_with("The course " + path + " could not be read or written."))
                          << boxes.at(0);
                      // No verdict was stored; the same question can be judged once the file is back.
                      EXPECT_EQ(label(program, "panel_dialog"), "Did you know the answer?");
                      std::filesystem::rename(path + ".away", path);
                      press(program, "bot_yes");
                  }),
              0);
    EXPECT_EQ(fakes::read_course(path).qa.at(0).q_side.attempts, 1);
}

} // namespace
} // namespace cuedrill::program
