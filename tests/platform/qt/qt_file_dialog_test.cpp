#include "fakes/temp_folder.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_dialog_host.h"
#include "platform/qt/qt_test_tools.h"

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace cuedrill::platform::qt {

namespace {

class QtFileDialogTest : public QtTest {
protected:
    static void type(QFileDialog& dialog, const char* name)
    {
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromLatin1(name));
    }

    /// Does what a click on the dialog's accept button does.
    static void accept(QFileDialog& dialog) { static_cast<QDialog&>(dialog).accept(); }

    QtGuard guard;
    QtDialogHost host;
    QtDesktop desktop{guard, host};
};

TEST_F(QtFileDialogTest, TheFileDialogGivesTheFullPathOfANewFile)
{
    const QTemporaryDir folder;
    when_box_opens<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Specify name");
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(dialog.fileMode(), QFileDialog::AnyFile);
        EXPECT_EQ(dialog.nameFilters(), QStringList{"Course (*.crs)"});
        EXPECT_EQ(dialog.directory(), QDir(folder.path()));
        type(dialog, "new course");
        accept(dialog);
    });
    const ChosenFile chosen = desktop.open_file_dialog({.title = "Specify name",
                                                        .initial_folder = folder.path().toStdString(),
                                                        .default_extension = "crs",
                                                        .filter = "Course (*.crs)|*.crs"});
    EXPECT_EQ(chosen.path, folder.filePath("new course.crs").toStdString());
    EXPECT_EQ(chosen.title, "new course.crs");
}

TEST_F(QtFileDialogTest, TheFileDialogOffersTheInitialFile)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("mine.crs"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    when_box_opens<QFileDialog>([](QFileDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "mine.crs");
        accept(dialog);
    });
    const ChosenFile chosen = desktop.open_file_dialog(
        {.initial_folder = folder.path().toStdString(), .initial_file = "mine.crs", .default_extension = "crs"});
    EXPECT_EQ(chosen.path, folder.filePath("mine.crs").toStdString());
}

TEST_F(QtFileDialogTest, ACancelledFileDialogGivesNothing)
{
    when_box_opens<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    const ChosenFile chosen = desktop.open_file_dialog({});
    EXPECT_EQ(chosen.path, "");
    EXPECT_EQ(chosen.title, "");
}

TEST_F(QtFileDialogTest, TheFileDialogBelongsToItsHostWhileNoWindowIsShown)
{
    host.load();
    when_box_opens<QFileDialog>([this](QFileDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), host.widget());
        dialog.reject();
    });
    static_cast<void>(desktop.open_file_dialog({}));
    EXPECT_TRUE(host.widget()->isHidden());
}

TEST_F(QtFileDialogTest, TheSaveDialogGivesTheFullPathOfANewFile)
{
    const QTemporaryDir folder;
    when_box_opens<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Export to");
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(dialog.fileMode(), QFileDialog::AnyFile);
        EXPECT_EQ(dialog.nameFilters(), QStringList{"Text file (*.txt)"});
        EXPECT_EQ(dialog.directory(), QDir(folder.path()));
        EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "mine.txt");
        type(dialog, "new text");
        accept(dialog);
    });
    const ChosenFile chosen = desktop.save_file_dialog({.title = "Export to",
                                                        .initial_folder = folder.path().toStdString(),
                                                        .initial_file = "mine.txt",
                                                        .default_extension = "txt",
                                                        .filter = "Text file (*.txt)|*.txt"});
    EXPECT_EQ(chosen.path, folder.filePath("new text.txt").toStdString());
    EXPECT_EQ(chosen.title, "new text.txt");
    EXPECT_FALSE(QFile::exists(folder.filePath("new text.txt")));
}

TEST_F(QtFileDialogTest, AnExistingFileIsOnlyChosenWhenTheUserConfirmsIt)
{
    const fakes::TempFolder folder;
    folder.write("mine.txt", "old");
    std::vector<QMessageBox::StandardButton> answers{QMessageBox::No, QMessageBox::Yes};
    std::size_t asked = 0;
    when_box_opens<QFileDialog>([&](QFileDialog& dialog) {
        for (const QMessageBox::StandardButton answer : answers) {
            when_box_opens<QMessageBox>([&, answer](QMessageBox& box) {
                EXPECT_TRUE(box.text().contains("mine.txt"));
                ++asked;
                box.button(answer)->click();
            });
            type(dialog, "mine");
            accept(dialog);
            EXPECT_EQ(dialog.isVisible(), answer == QMessageBox::No);
        }
    });
    const ChosenFile chosen =
        desktop.save_file_dialog({.initial_folder = folder.path().string(), .default_extension = "txt"});
    EXPECT_EQ(asked, 2U);
    EXPECT_EQ(chosen.path, folder.file("mine.txt"));
    EXPECT_EQ(folder.read("mine.txt"), "old");
}

TEST_F(QtFileDialogTest, ANameWithQuotesIsOneName)
{
    const fakes::TempFolder folder;
    folder.write("b.crs", "another");
    for (const char* name : {"a \"b\" c.crs", "\"b.crs", "\"b\"", "\"", "\"b\" \"c\""}) {
        const std::string expected =
            std::string(name).ends_with(".crs") ? std::string(name) : std::string(name) + ".crs";
        when_box_opens<QFileDialog>([&](QFileDialog& dialog) {
            type(dialog, name);
            QAbstractButton& open = *dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
            EXPECT_TRUE(open.isEnabled()) << name;
            open.click();
            EXPECT_FALSE(dialog.isVisible()) << name;
        });
        const ChosenFile chosen =
            desktop.open_file_dialog({.initial_folder = folder.path().string(), .default_extension = "crs"});
        EXPECT_EQ(chosen.path, folder.file(expected));
        EXPECT_EQ(chosen.title, expected);
    }
}

TEST_F(QtFileDialogTest, AnExistingFileWithQuotesInItsNameCanBeClicked)
{
    const fakes::TempFolder folder;
    folder.write("a \"b\" c.crs", "mine");
    folder.write("b.crs", "another");
    when_box_opens<QFileDialog>([&](QFileDialog& dialog) {
        const QString name = "a \"b\" c.crs";
        auto& files = *dialog.findChild<QListView*>("listView");
        QModelIndex clicked;
        const auto find = [&] {
            const QModelIndexList found =
                files.model()->match(files.model()->index(0, 0, files.rootIndex()), Qt::DisplayRole, name, 1);
            clicked = found.isEmpty() ? QModelIndex() : found.front();
            return clicked.isValid();
        };
        ASSERT_TRUE(QTest::qWaitFor(find)); // the toolkit reads the folder in another thread
        dialog.findChild<QLineEdit*>("fileNameEdit")->clearFocus();
        files.selectionModel()->select(clicked, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), name);
        accept(dialog);
    });
    const ChosenFile chosen =
        desktop.open_file_dialog({.initial_folder = folder.path().string(), .default_extension = "crs"});
    EXPECT_EQ(chosen.path, folder.file("a \"b\" c.crs"));
}

/// Sends keys and clicks to an open dialog as the system does, and reports the results.
class UsedFileDialog {
public:
    explicit UsedFileDialog(QFileDialog& dialog) : dialog_(dialog)
    {
        dialog.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }

    /// Clicks a file, which must exist.
    void click(const QString& name) const
    {
        const QPoint place = place_of(name);
        if (!place.isNull())
            QTest::mouseClick(dialog_.windowHandle(), Qt::LeftButton, {}, place);
    }
    void double_click(const QString& name) const
    {
        const QPoint place = place_of(name);
        if (!place.isNull())
            QTest::mouseDClick(dialog_.windowHandle(), Qt::LeftButton, {}, place);
    }

    /// Replaces the name in the line by typing another one.
    void type_over(const char* name) const
    {
        QTest::mouseClick(dialog_.windowHandle(), Qt::LeftButton, {}, center_of(*line()));
        QTest::keyClick(dialog_.windowHandle(), Qt::Key_A, Qt::ControlModifier);
        for (const char* letter = name; *letter != '\0'; ++letter)
            QTest::keyClick(dialog_.windowHandle(), *letter);
        // The completer's popup would only close at the first click elsewhere.
        if (QWidget* const offers = QApplication::activePopupWidget())
            offers->hide();
    }

    /// Clicks "Open" or "Save".
    void finish() const
    {
        const auto which =
            dialog_.acceptMode() == QFileDialog::AcceptOpen ? QDialogButtonBox::Open : QDialogButtonBox::Save;
        const QPushButton& button = *dialog_.findChild<QDialogButtonBox*>()->button(which);
        EXPECT_TRUE(button.isEnabled());
        QTest::mouseClick(dialog_.windowHandle(), Qt::LeftButton, {}, center_of(button));
        expect_ended();
    }
    void expect_ended() const
    {
        if (!dialog_.isVisible())
            return;
        ADD_FAILURE() << "the dialog is still open with " << name();
        dialog_.reject(); // otherwise the test would never end
    }

    [[nodiscard]] std::string name() const { return line()->text().toStdString(); }
    [[nodiscard]] bool anything_selected() const { return files().selectionModel()->hasSelection(); }

private:
    /// The visible one of the two views.
    [[nodiscard]] QAbstractItemView& files() const
    {
        auto* const list = dialog_.findChild<QAbstractItemView*>("listView");
        return list->isVisible() ? *list : *dialog_.findChild<QAbstractItemView*>("treeView");
    }
    [[nodiscard]] QLineEdit* line() const { return dialog_.findChild<QLineEdit*>("fileNameEdit"); }
    [[nodiscard]] QPoint center_of(const QWidget& widget) const
    {
        return widget.mapTo(&dialog_, widget.rect().center());
    }
    [[nodiscard]] QPoint place_of(const QString& name) const
    {
        const QAbstractItemView& view = files();
        const QAbstractItemModel& model = *view.model();
        const auto all_files = dialog_.directory().entryList(QDir::Files).size();
        QRect place;
        const auto find = [&] {
            // The toolkit reads the folder in another thread, and sorts it afterwards.
            if (model.rowCount(view.rootIndex()) != all_files)
                return false;
            const QModelIndexList found = model.match(model.index(0, 0, view.rootIndex()), Qt::DisplayRole, name, 1);
            place = found.isEmpty() ? QRect() : view.visualRect(found.front());
            return !place.isEmpty();
        };
        EXPECT_TRUE(QTest::qWaitFor(find)) << name.toStdString();
        return place.isEmpty() ? QPoint() : view.viewport()->mapTo(&dialog_, place.center());
    }

    QFileDialog& dialog_;
};

/// A folder with some courses, two of them with quotes in their names.
class FileDialogInUse : public QtFileDialogTest {
protected:
    FileDialogInUse()
    {
        for (const char* name : {"mine.crs", "b.crs", quoted, "\"b\".crs"})
            folder.write(name, "a course");
    }

    ChosenFile choose(const std::function<void(const UsedFileDialog&)>& use)
    {
        when_box_opens<QFileDialog>([&](QFileDialog& dialog) { use(UsedFileDialog(dialog)); });
        return desktop.open_file_dialog({.initial_folder = folder.path().string(), .default_extension = "crs"});
    }

    static constexpr const char* quoted = "a \"b\" c.crs";
    fakes::TempFolder folder;
};

TEST_F(FileDialogInUse, TypingOverAClickedFileCounts)
{
    for (const char* name : {"new", "b.crs", quoted, "\"b\"", "new \"b\" c.crs"}) {
        const ChosenFile chosen = choose([&](const UsedFileDialog& dialog) {
            dialog.click("mine.crs");
            EXPECT_EQ(dialog.name(), "mine.crs");
            EXPECT_TRUE(dialog.anything_selected());
            dialog.type_over(name);
            EXPECT_EQ(dialog.name(), name);
            EXPECT_FALSE(dialog.anything_selected());
            dialog.finish();
        });
        const bool complete = std::string(name).ends_with(".crs");
        EXPECT_EQ(chosen.path, folder.file(complete ? name : std::string(name) + ".crs"));
    }
}

TEST_F(FileDialogInUse, AFileThatIsClickedAfterTypingCounts)
{
    for (const char* name : {"mine.crs", quoted, "\"b\".crs"}) {
        const ChosenFile chosen = choose([&](const UsedFileDialog& dialog) {
            dialog.type_over("b.crs");
            dialog.click(name);
            EXPECT_EQ(dialog.name(), name);
            dialog.finish();
        });
        EXPECT_EQ(chosen.path, folder.file(name));
        EXPECT_EQ(chosen.title, name);
    }
}

TEST_F(FileDialogInUse, TheSameFileCanBeClickedAgainAfterTyping)
{
    for (const char* name : {"mine.crs", quoted}) {
        const ChosenFile chosen = choose([&](const UsedFileDialog& dialog) {
            dialog.click(name);
            dialog.type_over("new");
            dialog.click(name);
            EXPECT_EQ(dialog.name(), name);
            dialog.finish();
        });
        EXPECT_EQ(chosen.path, folder.file(name));
    }
}

TEST_F(FileDialogInUse, TypingOverTheInitialFileCounts)
{
    when_box_opens<QFileDialog>([&](QFileDialog& dialog) {
        const UsedFileDialog used(dialog);
        EXPECT_EQ(used.name(), "mine.crs");
        used.type_over("new \"b\"");
        used.finish();
    });
    const ChosenFile chosen = desktop.save_file_dialog(
        {.initial_folder = folder.path().string(), .initial_file = "mine.crs", .default_extension = "crs"});
    EXPECT_EQ(chosen.path, folder.file("new \"b\".crs"));
}

TEST_F(FileDialogInUse, ADoubleClickOpensTheFileWithItsWholeName)
{
    for (const char* name : {"mine.crs", quoted, "\"b\".crs"}) {
        when_box_opens<QFileDialog>([&](QFileDialog& dialog) {
            const UsedFileDialog used(dialog);
            used.type_over("new");
            used.double_click(name);
            used.expect_ended();
        });
        const ChosenFile chosen =
            desktop.open_file_dialog({.initial_folder = folder.path().string(), .default_extension = "crs"});
        EXPECT_EQ(chosen.path, folder.file(name));
    }
}

TEST_F(QtFileDialogTest, AFolderWithQuotesInItsNameIsEntered)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir("my \"courses\""));
    when_box_opens<QFileDialog>([&](QFileDialog& dialog) {
        type(dialog, "my \"courses\"");
        accept(dialog);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(dialog.directory(), QDir(folder.filePath("my \"courses\"")));
        dialog.reject();
    });
    EXPECT_EQ(desktop.open_file_dialog({.initial_folder = folder.path().toStdString()}).path, "");
}

TEST_F(QtFileDialogTest, AnExistingFileWithQuotesIsOnlyReplacedWhenTheUserConfirmsIt)
{
    const fakes::TempFolder folder;
    folder.write("my \"text\".txt", "old");
    when_box_opens<QFileDialog>([&](QFileDialog& dialog) {
        for (const QMessageBox::StandardButton answer : {QMessageBox::No, QMessageBox::Yes}) {
            when_box_opens<QMessageBox>([&, answer](QMessageBox& box) {
                EXPECT_TRUE(box.text().contains("my \"text\".txt"));
                box.button(answer)->click();
            });
            type(dialog, "my \"text\"");
            accept(dialog);
            EXPECT_EQ(dialog.isVisible(), answer == QMessageBox::No);
        }
    });
    const ChosenFile chosen =
        desktop.save_file_dialog({.initial_folder = folder.path().string(), .default_extension = "txt"});
    EXPECT_EQ(chosen.path, folder.file("my \"text\".txt"));
}

TEST_F(QtFileDialogTest, WithoutATitleADialogHasThePlatformsOwn)
{
    const auto title_of = [](QString& title) {
        when_box_opens<QFileDialog>([&](QFileDialog& dialog) {
            title = dialog.windowTitle();
            dialog.reject();
        });
    };
    QString open;
    title_of(open);
    static_cast<void>(desktop.open_file_dialog({}));
    QString save;
    title_of(save);
    const ChosenFile chosen = desktop.save_file_dialog({});
    EXPECT_EQ(open, "Open");
    EXPECT_EQ(save, "Save As");
    EXPECT_EQ(chosen.path, "");
    EXPECT_EQ(chosen.title, "");
}

} // namespace

} // namespace cuedrill::platform::qt
