#include "platform/qt/qt_card.h"
#include "platform/qt/qt_list_box.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>

namespace cuedrill::platform::qt {

namespace {

class QtAccessibleLinesTest : public QtTest {
protected:
    QtAccessibleLinesTest()
    {
        card.surround(view);
        card.resize(300, 160);
        card.show();
        card.activateWindow();
        QCoreApplication::processEvents();
        box.set_name("List");
        box.set_lines({"ant", "bee\r\n\tbug", "cat"});
        box.on_click = [this](const std::string& line) { clicked.push_back(line); };
    }

    static void press(QAccessibleInterface& line)
    {
        line.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCoreApplication::processEvents();
    }

    [[nodiscard]] QAccessibleInterface& list() const { return *QAccessible::queryAccessibleInterface(&view); }

    QtGuard guard;
    Card card;
    QtActionGate gate{guard, card};
    QtKeyFilter keys;
    QtListBox box{"listav", gate, keys};
    LineView& view = box.widget();
    std::vector<std::string> clicked;
};

TEST_F(QtAccessibleLinesTest, TheListHasItsNameAndItsLinesAsChildren)
{
    EXPECT_EQ(list().role(), QAccessible::List);
    EXPECT_EQ(list().text(QAccessible::Name), "List");
    ASSERT_EQ(list().childCount(), 3);
    QAccessibleInterface& line = *list().child(1);
    EXPECT_EQ(line.role(), QAccessible::ListItem);
    EXPECT_EQ(line.text(QAccessible::Name), "bee  bug");
    EXPECT_EQ(line.parent(), &list());
    EXPECT_EQ(line.childCount(), 0);
    EXPECT_EQ(list().indexOfChild(&line), 1);
    EXPECT_EQ(list().child(1), &line);
    EXPECT_EQ(list().child(3), nullptr);
    EXPECT_EQ(list().child(-1), nullptr);
}

// Assistive technology assumes that a table manages its lines, and looks only at those on the screen.
TEST_F(QtAccessibleLinesTest, TheListIsATableOfOneColumnToo)
{
    QAccessibleTableInterface* const table = list().tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 3);
    EXPECT_EQ(table->columnCount(), 1);
    for (int row = 0; row < 3; ++row) {
        ASSERT_EQ(table->cellAt(row, 0), list().child(row));
        QAccessibleTableCellInterface* const cell = list().child(row)->tableCellInterface();
        ASSERT_NE(cell, nullptr);
        EXPECT_EQ(cell->rowIndex(), row);
        EXPECT_EQ(cell->columnIndex(), 0);
        EXPECT_EQ(cell->rowExtent(), 1);
        EXPECT_EQ(cell->columnExtent(), 1);
        EXPECT_EQ(cell->table(), &list());
    }
    EXPECT_EQ(table->cellAt(0, 1), nullptr);
    EXPECT_EQ(table->cellAt(3, 0), nullptr);
}

TEST_F(QtAccessibleLinesTest, TheCurrentLineIsTheSelectedRow)
{
    QAccessibleTableInterface& table = *list().tableInterface();
    view.setCurrentIndex({});
    EXPECT_EQ(table.selectedRowCount(), 0);
    EXPECT_EQ(table.selectedRows(), QList<int>());
    EXPECT_EQ(table.selectedCells(), QList<QAccessibleInterface*>());
    EXPECT_FALSE(table.isRowSelected(-1));
    EXPECT_TRUE(table.selectRow(1));
    EXPECT_EQ(view.currentIndex().row(), 1);
    EXPECT_TRUE(clicked.empty());
    EXPECT_EQ(table.selectedRowCount(), 1);
    EXPECT_EQ(table.selectedCellCount(), 1);
    EXPECT_EQ(table.selectedRows(), QList<int>{1});
    EXPECT_EQ(table.selectedCells(), QList<QAccessibleInterface*>{list().child(1)});
    EXPECT_TRUE(table.isRowSelected(1));
    EXPECT_FALSE(table.isRowSelected(0));
    EXPECT_TRUE(list().child(1)->tableCellInterface()->isSelected());
    EXPECT_FALSE(table.selectRow(3));
    EXPECT_FALSE(table.selectRow(-1));
    EXPECT_FALSE(table.unselectRow(1));
    box.set_enabled(false);
    EXPECT_FALSE(table.selectRow(0));
    EXPECT_EQ(view.currentIndex().row(), 1);
}

TEST_F(QtAccessibleLinesTest, ALineIsFoundWhereItIsDrawn)
{
    const QRect place = list().child(2)->rect();
    EXPECT_EQ(place, QRect(view.viewport()->mapToGlobal(view.visualRect(view.lines().index(2)).topLeft()),
                           view.visualRect(view.lines().index(2)).size()));
    EXPECT_EQ(list().childAt(place.left() + 5, place.center().y()), list().child(2));
    EXPECT_EQ(list().childAt(place.left() + 5, place.bottom() + 30), nullptr);
}

TEST_F(QtAccessibleLinesTest, PressingALineChoosesIt)
{
    EXPECT_TRUE(list().child(1)->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    press(*list().child(1));
    EXPECT_EQ(clicked, std::vector<std::string>{"bee\r\n\tbug"});
    EXPECT_TRUE(list().child(1)->state().selected);
    EXPECT_FALSE(list().child(0)->state().selected);
}

TEST_F(QtAccessibleLinesTest, PressingALineGoesThroughTheGate)
{
    gate.run([this] { press(*list().child(1)); });
    EXPECT_TRUE(clicked.empty());
    std::string reported;
    guard.on_error = [&](const std::exception& error) { reported = error.what(); };
    box.on_click = [](const std::string& line) { throw std::runtime_error(line + " failed"); };
    press(*list().child(0));
    EXPECT_EQ(reported, "ant failed");
}

TEST_F(QtAccessibleLinesTest, NothingIsChosenInAListThatIsDisabledOrNotVisible)
{
    box.set_enabled(false);
    EXPECT_TRUE(list().child(0)->state().disabled);
    press(*list().child(0));
    box.set_enabled(true);
    box.set_visible(false);
    EXPECT_TRUE(list().child(0)->state().invisible);
    press(*list().child(0));
    EXPECT_TRUE(clicked.empty());
    box.set_visible(true);
    press(*list().child(0));
    EXPECT_EQ(clicked.size(), 1U);
}

TEST_F(QtAccessibleLinesTest, AHandlerMayTakeTheLinesAwayThatWerePressed)
{
    box.on_click = [this](const std::string&) { box.set_lines({}); };
    press(*list().child(1));
    EXPECT_EQ(list().childCount(), 0);
}

TEST_F(QtAccessibleLinesTest, ALineCanBeGivenTheFocus)
{
    view.clearFocus();
    QAccessibleInterface& line = *list().child(2);
    line.actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(box.has_focus());
    EXPECT_TRUE(line.state().focused);
    EXPECT_EQ(list().focusChild(), &line);
    EXPECT_FALSE(list().child(1)->state().focused);
    EXPECT_TRUE(clicked.empty());
}

TEST_F(QtAccessibleLinesTest, LinesAreGoneWhenOthersAreShown)
{
    const QAccessible::Id old = QAccessible::uniqueId(list().child(1));
    ASSERT_NE(QAccessible::accessibleInterface(old), nullptr);
    box.replace_lines({"dog", "elk"}, std::nullopt);
    EXPECT_EQ(QAccessible::accessibleInterface(old), nullptr);
    EXPECT_EQ(list().child(1)->text(QAccessible::Name), "elk");
}

// A long list must cost assistive technology nothing until it looks at a line.
TEST_F(QtAccessibleLinesTest, NoLineIsMadeBeforeSomebodyLooksAtIt)
{
    constexpr int count = 9'000;
    const bool was_active = QAccessible::isActive();
    QAccessible::setActive(true);
    box.set_lines(std::vector<std::string>(count, "line"));
    view.setCurrentIndex({});
    QCoreApplication::processEvents();
    ASSERT_EQ(list().childCount(), count);
    EXPECT_EQ(list().tableInterface()->rowCount(), count);
    QAccessibleInterface* const looked_at = list().child(count / 2);
    // The identifiers are given in order, so those of lines made before lie next to this one.
    const QAccessible::Id id = QAccessible::uniqueId(looked_at);
    int made = 0;
    for (QAccessible::Id near = id - 2 * count; near != id + 2 * count; ++near) {
        const QAccessibleInterface* const one = QAccessible::accessibleInterface(near);
        made += one != nullptr && one->role() == QAccessible::ListItem ? 1 : 0;
    }
    EXPECT_EQ(made, 1);
    QAccessible::setActive(was_active);
}

TEST_F(QtAccessibleLinesTest, ALineFarBelowIsOffscreen)
{
    box.set_lines(std::vector<std::string>(10'000, "line"));
    ASSERT_EQ(list().childCount(), 10'000);
    EXPECT_FALSE(list().child(0)->state().offscreen);
    EXPECT_TRUE(list().child(9'999)->state().offscreen);
}

} // namespace

} // namespace cuedrill::platform::qt
