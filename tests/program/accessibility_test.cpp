// What assistive technology and the keyboard find in the real window, in each mode.

#include "program/program_fixture.h"

#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <set>

namespace cuedrill::program {
namespace {

/// What a tree of accessible objects contains, without invisible ones.
struct Found {
    std::vector<std::string> unnamed; ///< paths of controls that should have a name
    std::set<std::string> names;
    std::set<std::string> descriptions;
};

bool needs_name(QAccessible::Role role, const QAccessible::State& state)
{
    switch (role) {
    case QAccessible::Window:
    case QAccessible::MenuItem:
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::EditableText:
    case QAccessible::StaticText:
    case QAccessible::List:
    case QAccessible::ListItem:
    case QAccessible::ComboBox:
        return true;
    case QAccessible::PopupMenu:
        return true;
    default:
        return state.focusable;
    }
}

/// The name of a label is the value it shows, so it may be empty while there is no value. Its description says what the
/// value is.
bool may_be_empty(QAccessible::Role role)
{
    return role == QAccessible::StaticText;
}

void walk(QAccessibleInterface& item, const std::string& above, Found& found)
{
    const QAccessible::State state = item.state();
    const QAccessible::Role role = item.role();
    const bool in_menu = role == QAccessible::PopupMenu || role == QAccessible::MenuItem;
    // A closed menu is invisible but can be opened.
    const auto* const action = qobject_cast<QAction*>(item.object());
    if (state.invisible && (!in_menu || (action != nullptr && !action->isVisible())))
        return;
    const std::string name = item.text(QAccessible::Name).toStdString();
    const std::string description = item.text(QAccessible::Description).toStdString();
    const QString object = item.object() != nullptr ? item.object()->objectName() : QString();
    const std::string path = above + "/" + (object.isEmpty() ? "role " + std::to_string(role) : object.toStdString());
    if (needs_name(role, state) && name.empty() && (!may_be_empty(role) || description.empty()))
        found.unnamed.push_back(path);
    found.names.insert(name);
    found.descriptions.insert(description);
    for (int child = 0; child < item.childCount(); ++child) {
        if (QAccessibleInterface* const next = item.child(child))
            walk(*next, path, found);
    }
}

Found look_at(QWidget& window)
{
    Found found;
    QAccessibleInterface* const root = QAccessible::queryAccessibleInterface(&window);
    EXPECT_NE(root, nullptr);
    if (root != nullptr)
        walk(*root, "", found);
    return found;
}

bool takes_tab(const QWidget& widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.focusProxy() == nullptr && widget.isVisible() &&
           widget.isEnabled();
}

/// The controls that Tab can reach, in the order of their positions in the window.
std::vector<std::string> reachable_in_order(QWidget& window)
{
    std::vector<std::string> names;
    for (int number = 1; number <= platform::toolbar_buttons; ++number)
        names.push_back("pb_" + std::to_string(number));
    for (const char* name : {"Text_q", "Text_a", "t_hint", "listav", "bot_yes", "bot_no", "bot_other"})
        names.emplace_back(name);
    std::erase_if(names, [&](const std::string& name) {
        const auto* const widget = window.findChild<QWidget*>(QString::fromStdString(name));
        return widget == nullptr || !widget->isVisible() || !widget->isEnabled();
    });
    return names;
}

/// The controls that get the focus with Tab, from `first` until it returns there.
std::vector<std::string> tab_round(QWidget& window, const std::string& first)
{
    constexpr std::size_t too_many = 100;
    window.findChild<QWidget*>(QString::fromStdString(first))->setFocus();
    std::vector<std::string> round;
    do {
        QWidget* const focus = window.focusWidget();
        round.push_back(focus->objectName().toStdString());
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, "\t");
        QCoreApplication::sendEvent(focus, &tab);
    } while (window.focusWidget()->objectName().toStdString() != first && round.size() < too_many);
    return round;
}

class AccessibilityTest : public ProgramTest {
protected:
    struct Mode {
        const char* name;
        std::vector<const char*> buttons; ///< buttons that lead there
        const char* entry = "";           ///< menu entry chosen last
    };

    static std::vector<Mode> modes()
    {
        return {{"nothing", {}},
                {"question", {"bot_yes"}},
                {"answer", {"bot_yes", "bot_yes"}},
                {"hint", {"bot_yes", "pb_4"}},
                {"typing", {"bot_yes", "pb_5"}},
                {"masked hint", {"bot_yes", "pb_5", "pb_4"}},
                {"new", {"pb_9"}},
                {"edit", {"bot_yes", "pb_8"}},
                {"list", {"bot_yes"}, "m_show_all"},
                {"similar questions", {"bot_yes"}, "m_list_similar"},
                {"list while editing", {"bot_yes", "pb_8"}, "m_all_q_and_a"},
                {"message window", {"bot_yes"}, "m_version_history"}};
    }

    /// Calls `look` in each mode, including a course without questions.
    void in_each_mode(const std::function<void(QMainWindow&)>& look)
    {
        for (const Mode& mode : modes()) {
            const testing::ScopedTrace trace(__FILE__, __LINE__, mode.name);
            fakes::CourseBuilder builder;
            builder.question("capital of Norway", "Oslo").level(2);
            builder.question("capital of Italy", "Rome").level(1);
            look_in(builder.write(folder, std::string(mode.name) + ".crs"), mode, look);
        }
        const testing::ScopedTrace trace(__FILE__, __LINE__, "empty course");
        look_in(fakes::CourseBuilder().write(folder, "empty.crs"), {"empty course", {}}, look);
    }

private:
    void look_in(const std::string& course, const Mode& mode, const std::function<void(QMainWindow&)>& look)
    {
        bool looked = false;
        run(course, [&](Program& program) {
            for (const char* button : mode.buttons)
                press(program, button);
            if (*mode.entry != 0)
                choose(program, mode.entry);
            look(program.form1().widget());
            looked = true;
        });
        EXPECT_TRUE(looked);
    }
};

TEST_F(AccessibilityTest, every_control_tells_what_it_is)
{
    in_each_mode([](QMainWindow& window) {
        for (const std::string& path : look_at(window).unnamed)
            ADD_FAILURE() << path << " has no name";
    });
}

TEST_F(AccessibilityTest, boxes_and_figures_are_found_under_their_names)
{
    in_each_mode([](QMainWindow& window) {
        const Found found = look_at(window);
        const bool hint = window.findChild<QWidget*>("t_hint")->isVisible();
        const bool list = window.findChild<QWidget*>("listav")->isVisible();
        for (const char* name : {"Question", "Answer"})
            EXPECT_TRUE(found.names.contains(name)) << name;
        EXPECT_EQ(found.names.contains("Hint"), hint);
        EXPECT_EQ(found.names.contains("List"), list);
        for (const char* description : {"Prompt", "Status", "Question level", "Attempts", "Failures", "Elapsed"})
            EXPECT_TRUE(found.descriptions.contains(description)) << description;
        for (const char* description :
             {"Level 0", "Level 1", "Level 2", "Level 3", "Level 4", "Level 5", "Unpassed", "Total", "Score today",
              "Open time", "Time today", "Time ever", "Time now", "What is due"})
            EXPECT_EQ(found.descriptions.contains(description), !hint && !list) << description;
    });
}

TEST_F(AccessibilityTest, what_is_due_is_told_in_words)
{
    fakes::CourseBuilder builder;
    builder.question("capital of Norway", "Oslo").level(2).tested_ago(std::chrono::hours(24));
    builder.question("capital of Italy", "Rome");
    run(builder.write(folder), [](Program& program) {
        QMainWindow& window = program.form1().widget();
        const auto told = [&] {
            const Found found = look_at(window);
            return std::find_if(found.names.begin(), found.names.end(), [](const std::string& name) {
                       return name.starts_with("1 question is due now, 0 more today, tomorrow 0, ") &&
                              name.ends_with(". 1 question is new.");
                   }) != found.names.end();
        };
        EXPECT_TRUE(QTest::qWaitFor(told));
        const auto* const picture = window.findChild<QWidget*>("due_picture");
        ASSERT_NE(picture, nullptr);
        EXPECT_TRUE(picture->isVisible());
    });
}

TEST_F(AccessibilityTest, the_lines_of_a_list_can_be_read_and_chosen)
{
    fakes::CourseBuilder builder;
    builder.question("capital of Norway", "Oslo").level(2);
    builder.question("capital of Italy", "Rome").level(1);
    run(builder.write(folder), [](Program& program) {
        choose(program, "m_all_q_and_a");
        QMainWindow& window = program.form1().widget();
        auto* const list = QAccessible::queryAccessibleInterface(window.findChild<QWidget*>("listav"));
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(list->role(), QAccessible::List);
        ASSERT_EQ(list->childCount(), 2);
        EXPECT_EQ(list->child(0)->text(QAccessible::Name), "01 - capital of Italy  --->  Rome");
        ASSERT_NE(list->child(1)->actionInterface(), nullptr);
        list->child(1)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCoreApplication::processEvents();
        EXPECT_EQ(program.form1().controls().Text_q.text(), "capital of Norway");
    });
}

TEST_F(AccessibilityTest, the_message_window_tells_what_is_in_it)
{
    run(fakes::CourseBuilder().write(folder), [](Program& program) {
        choose(program, "m_version_history");
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() != QLatin1String("f_msgbox"))
                continue;
            const Found found = look_at(*window);
            EXPECT_TRUE(found.unnamed.empty()) << found.unnamed.front();
            EXPECT_TRUE(found.names.contains("Text"));
            EXPECT_TRUE(found.names.contains("OK"));
            return;
        }
        ADD_FAILURE() << "there is no message window";
    });
}

TEST_F(AccessibilityTest, the_boxes_are_named_as_boxes)
{
    in_each_mode([](QMainWindow& window) {
        for (const auto& [object, name] : {std::pair("Text_q", "Question"), {"Text_a", "Answer"}, {"t_hint", "Hint"}}) {
            auto* const item = QAccessible::queryAccessibleInterface(window.findChild<QWidget*>(QLatin1String(object)));
            ASSERT_NE(item, nullptr);
            EXPECT_EQ(item->role(), QAccessible::EditableText) << object;
            EXPECT_EQ(item->text(QAccessible::Name).toStdString(), name);
        }
    });
}

TEST_F(AccessibilityTest, every_menu_and_entry_tells_what_it_is)
{
    in_each_mode([](QMainWindow& window) {
        const Found found = look_at(window);
        for (const QAction* menu : window.menuBar()->actions()) {
            ASSERT_NE(menu->menu(), nullptr);
            EXPECT_FALSE(menu->menu()->actions().isEmpty());
            for (const QAction* entry : menu->menu()->actions()) {
                const std::string name = entry->text().remove(QLatin1Char('&')).toStdString();
                EXPECT_TRUE(!entry->isVisible() || entry->isSeparator() || found.names.contains(name)) << name;
            }
        }
    });
}

TEST_F(AccessibilityTest, tab_reaches_every_usable_control_in_the_order_of_the_window)
{
    in_each_mode([](QMainWindow& window) {
        const std::vector<std::string> expected = reachable_in_order(window);
        ASSERT_FALSE(expected.empty());
        EXPECT_EQ(tab_round(window, expected.front()), expected);

        std::set<std::string> usable;
        for (const QWidget* widget : window.findChildren<QWidget*>()) {
            if (takes_tab(*widget))
                usable.insert(widget->objectName().toStdString());
        }
        EXPECT_EQ(usable, std::set<std::string>(expected.begin(), expected.end()));
    });
}

} // namespace
} // namespace cuedrill::program
