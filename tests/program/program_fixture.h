#pragma once

#include "fakes/course_builder.h"
#include "fakes/temp_folder.h"
#include "program/program.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace cuedrill::program {

/// The whole program on courses of a folder of its own, without a screen.
class ProgramTest : public testing::Test {
protected:
    ProgramTest()
    {
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.file("config")));
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(folder.file("data")));
        box_watch_.callOnTimeout([this] { close_box(); });
        box_watch_.start(0);
    }

    /// Runs the program on a course until `use` has returned, or it has ended by itself.
    int run(const std::string& command_line, const std::function<void(Program&)>& use = {})
    {
        const int code = run_program(command_line, use);
        // The toolkit remembers that its loops are to return; the next program of this process starts afresh.
        QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
        QCoreApplication::exec();
        return code;
    }

    static int run_program(const std::string& command_line, const std::function<void(Program&)>& use)
    {
        Program program;
        return program.run(command_line, [&] {
            if (use)
                use(program);
            // Also where an expectation has left `use` early.
            program.form1().widget().close();
        });
    }

    /// What the label of that name shows.
    static std::string label(Program& program, const char* name)
    {
        const auto* const shown = program.form1().widget().findChild<QLabel*>(QString::fromLatin1(name));
        return shown != nullptr ? shown->text().toStdString() : std::string("no label ") + name;
    }

    static void press(Program& program, const char* name)
    {
        auto* const button = program.form1().widget().findChild<QAbstractButton*>(QString::fromLatin1(name));
        ASSERT_NE(button, nullptr) << name;
        ASSERT_TRUE(button->isEnabled() && button->isVisible()) << name;
        button->click();
    }

    /// Chooses an entry of the menus, and waits for its command.
    static void choose(Program& program, const char* name)
    {
        auto* const entry = program.form1().widget().findChild<QAction*>(QString::fromLatin1(name));
        ASSERT_NE(entry, nullptr) << name;
        ASSERT_TRUE(entry->isEnabled()) << name;
        entry->trigger();
        QCoreApplication::processEvents();
    }

    /// Presses a button that has the focus with the space bar.
    static void press_with_keyboard(QWidget& button)
    {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, " ");
            QCoreApplication::sendEvent(&button, &event);
        }
    }

    fakes::TempFolder folder;
    std::vector<std::string> boxes; ///< texts of the message boxes that were shown
    int file_dialogs = 0;           ///< each was cancelled

private:
    void close_box()
    {
        QWidget* const modal = QApplication::activeModalWidget();
        if (auto* const box = qobject_cast<QMessageBox*>(modal)) {
            boxes.push_back(box->text().toStdString());
            box->accept();
        } else if (auto* const dialog = qobject_cast<QFileDialog*>(modal)) {
            ++file_dialogs;
            dialog->reject();
        }
    }

    QTimer box_watch_;
};

} // namespace cuedrill::program
