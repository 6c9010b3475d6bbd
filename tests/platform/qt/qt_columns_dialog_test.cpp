#include "common/errors.h"
#include "platform/qt/qt_columns_dialog.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_dialog_host.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTableWidget>

namespace cuedrill::platform::qt {
namespace {

class QtColumnsDialogTest : public QtTest {
protected:
    [[nodiscard]] static ColumnsBox box()
    {
        return {.title = "Importing",
                .prompt = "Which columns?",
                .first_label = "Question",
                .second_label = "Answer",
                .names = {"No", "Word", "Translation"},
                .rows = {{"1", "one\r\ntwo", "uno"}, {"2", "three"}}};
    }

    static QComboBox& choice(QDialog& dialog, const QString& name)
    {
        for (QComboBox* found : dialog.findChildren<QComboBox*>()) {
            if (found->accessibleName() == name)
                return *found;
        }
        throw common::Error("no such choice");
    }

    static QPushButton& ok(QDialog& dialog)
    {
        return *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    }

    QtGuard guard;
    QtDialogHost host;
    QtDesktop desktop{guard, host};
};

TEST_F(QtColumnsDialogTest, ShowsTheFirstRowsAndPresetsTheFirstTwoColumns)
{
    when_box_opens<QDialog>([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Importing");
        const auto* const table = dialog.findChild<QTableWidget*>();
        EXPECT_EQ(table->rowCount(), 2);
        EXPECT_EQ(table->columnCount(), 3);
        EXPECT_EQ(table->horizontalHeaderItem(0)->text(), "Question: No");
        EXPECT_EQ(table->horizontalHeaderItem(1)->text(), "Answer: Word");
        EXPECT_EQ(table->horizontalHeaderItem(2)->text(), "Translation");
        EXPECT_EQ(table->item(0, 1)->text(), "one two");
        EXPECT_EQ(table->item(1, 2), nullptr) << "the second row has no third text";
        EXPECT_TRUE(table->item(0, 0)->font().bold());
        EXPECT_FALSE(table->item(0, 2)->font().bold());
        ok(dialog).click();
    });
    EXPECT_EQ(desktop.columns_box(box()), (ChosenColumns{.first = 0, .second = 1}));
}

TEST_F(QtColumnsDialogTest, GivesTheChosenColumnsAndMarksThem)
{
    when_box_opens<QDialog>([](QDialog& dialog) {
        choice(dialog, "Question").setCurrentIndex(1);
        choice(dialog, "Answer").setCurrentIndex(2);
        const auto* const table = dialog.findChild<QTableWidget*>();
        EXPECT_EQ(table->horizontalHeaderItem(0)->text(), "No");
        EXPECT_EQ(table->horizontalHeaderItem(2)->text(), "Answer: Translation");
        EXPECT_FALSE(table->item(0, 0)->font().bold());
        EXPECT_TRUE(table->item(0, 2)->font().bold());
        ok(dialog).click();
    });
    EXPECT_EQ(desktop.columns_box(box()), (ChosenColumns{.first = 1, .second = 2}));
}

TEST_F(QtColumnsDialogTest, WantsTwoColumns)
{
    when_box_opens<QDialog>([](QDialog& dialog) {
        choice(dialog, "Question").setCurrentIndex(1);
        EXPECT_FALSE(ok(dialog).isEnabled()) << "both are the second column";
        choice(dialog, "Answer").setCurrentIndex(0);
        EXPECT_TRUE(ok(dialog).isEnabled());
        ok(dialog).click();
    });
    EXPECT_EQ(desktop.columns_box(box()), (ChosenColumns{.first = 1, .second = 0}));
}

TEST_F(QtColumnsDialogTest, GivesNothingAfterACancelOrEscape)
{
    when_box_opens<QDialog>([](QDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(desktop.columns_box(box()));
    when_box_opens<QDialog>([](QDialog& dialog) { press_key(dialog, Qt::Key_Escape); });
    EXPECT_FALSE(desktop.columns_box(box()));
}

TEST_F(QtColumnsDialogTest, TellsAssistiveTechnologyWhatIsAsked)
{
    when_box_opens<QDialog>([](QDialog& dialog) {
        const QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&choice(dialog, "Answer"));
        // The name of such a choice is its value; its label says what it is for.
        EXPECT_EQ(spoken->text(QAccessible::Name), "Word");
        const auto labels = spoken->relations(QAccessible::Label);
        ASSERT_EQ(labels.size(), 1);
        EXPECT_EQ(labels[0].first->text(QAccessible::Name), "Answer:");
        EXPECT_EQ(spoken->text(QAccessible::Description), "Which columns?");
        EXPECT_EQ(dialog.findChild<QTableWidget*>()->accessibleName(), "The first records");
        EXPECT_EQ(dialog.focusWidget(), &choice(dialog, "Question"));
        dialog.reject();
    });
    desktop.columns_box(box());
}

TEST_F(QtColumnsDialogTest, ThrowsWhenTheProgramEndsBehindIt)
{
    QTimer::singleShot(0, [this] { guard.run([] { throw common::ProgramEnded{}; }); });
    EXPECT_THROW(desktop.columns_box(box()), common::ProgramEnded);
}

} // namespace
} // namespace cuedrill::platform::qt
