#include "common/errors.h"
#include "program/program.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <utility>

// Drills a few questions of a copy of a course in the real main window, for machines without a display.
namespace {

constexpr int questions = 5;

/// A temporary folder for everything that the drill writes, removed at the end. The demonstration never touches the
/// user's settings and verdicts.
class Scratch {
public:
    /// Copies the course into the folder, and redirects the settings and the data folder there.
    /// @throws common::Error when the course cannot be copied.
    explicit Scratch(const std::filesystem::path& course)
    {
        namespace fs = std::filesystem;
        const fs::path folder = folder_.path().toStdString();
        std::error_code error;
        course_ = folder / course.filename();
        if (!folder_.isValid() || !fs::copy_file(course, course_, error))
            throw cuedrill::common::Error("A copy of " + course.string() + " cannot be made: " + error.message());
        fs::permissions(course_, fs::perms::owner_write, fs::perm_options::add);
        qputenv("XDG_CONFIG_HOME", folder_.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", folder_.filePath(QStringLiteral("data")).toLocal8Bit());
    }

    [[nodiscard]] std::string course() const { return course_.string(); }

private:
    QTemporaryDir folder_;
    std::filesystem::path course_;
};

class Demo {
public:
    Demo(cuedrill::program::Program& program, std::string picture) : program_(program), picture_(std::move(picture))
    {
        // Answers boxes as a user who has read them would.
        box_watch_.callOnTimeout([] {
            if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                say("box", box->text().toStdString());
                box->accept();
            } else if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                dialog->reject();
            }
        });
        box_watch_.start(0);
    }

    void run()
    {
        press("bot_yes");
        for (int number = 1; number <= questions; ++number) {
            if (!program_.shown().is_question()) {
                std::cout << "\nNothing more is mature for being asked; come back later.\n";
                break;
            }
            drill_one(number);
        }
        program_.form1().save_picture(picture_);
        say("picture", picture_);
        program_.form1().widget().close();
    }

private:
    static void say(const char* what, const std::string& text) { std::cout << what << ": " << text << '\n'; }

    cuedrill::platform::Form1& controls() { return program_.form1().controls(); }

    [[nodiscard]] std::string prompt() const
    {
        return program_.form1().widget().findChild<QLabel*>(QStringLiteral("panel_dialog"))->text().toStdString();
    }

    /// Presses a button of the window as the user does.
    void press(const char* name)
    {
        auto* const button = program_.form1().widget().findChild<QAbstractButton*>(QString::fromLatin1(name));
        if (button == nullptr || !button->isEnabled())
            throw cuedrill::common::Error(std::string("The button ") + name + " cannot be pressed.");
        button->click();
    }

    void drill_one(int number)
    {
        const auto record = program_.shown().current_cnt();
        std::cout << "\nquestion " << number << '\n';
        say("prompt", prompt());
        say("question", controls().Text_q.text());
        press("bot_yes");
        say("prompt", prompt());
        say("answer", controls().Text_a.text());

        // Some answers are unknown.
        const bool known = number % 3 != 0;
        press(known ? "bot_yes" : "bot_no");
        say("verdict", known ? "known" : "not known");
        auto& course = program_.course();
        std::cout << "new level: "
                  << cuedrill::store::single_number(course.database(),
                                                    "select " + course.Q_FIELD.successes +
                                                        " from qa where cnt = " + std::to_string(record))
                  << '\n';
    }

    cuedrill::program::Program& program_;
    std::string picture_;
    QTimer box_watch_;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: cuedrill-demo COURSE PICTURE\n";
        return EXIT_FAILURE;
    }
    try {
        const Scratch scratch(argv[1]);
        const QApplication application(argc, argv);
        cuedrill::program::Program program;
        Demo demo(program, argv[2]);
        bool drilled = false;
        const int code = program.run(scratch.course(), [&] {
            demo.run();
            drilled = true;
        });
        return drilled ? code : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::cerr << "cuedrill-demo: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
