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

/// The whole program without a screen, on courses in a temporary folder.
class ProgramTest : public testing::Test {
protected:
    ProgramTest()
    {
        qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(folder.file("config")));
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(folder.file("data")));
        box_watch_.callOnTimeout([this] { close_box(); });
        box_watch_.start(0);
    }

    /// Runs the program on a course until `use` returns or the program ends by itself.
    int run(const std::string& command_line, const std::function<void(Program&)>& use = {})
    {
        const int code = run_program(command_line, use);
        // Clears the toolkit's flag that makes all event loops return, so that the next program of this process can
        // run.
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
            // Needed if a failed assertion has left `use` early.
            program.form1().widget().close();
        });
    }

    /// The text of the label with this name.
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

    /// Chooses a menu entry and waits for its command.
    static void choose(Program& program, const char* name)
    {
        auto* const entry = program.form1().widget().findChild<QAction*>(QString::fromLatin1(name));
        ASSERT_NE(entry, nullptr) << name;
        ASSERT_TRUE(entry->isEnabled()) << name;
        entry->trigger();
        QCoreApplication::processEvents();
    }

    /// Presses a button with the space bar. The button must have the focus.
    static void press_with_keyboard(QWidget& button)
    {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, " ");
            QCoreApplication::sendEvent(&button, &event);
        }
    }

    fakes::TempFolder folder;
    std::vector<std::string> boxes; ///< texts of the message boxes that were shown
    int file_dialogs = 0;           ///< number of file dialogs, all cancelled

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
