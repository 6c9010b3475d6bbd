#include "common/errors.h"
#include "program/program.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
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

// Drills a few questions of a copy of a course through the real main window, for machines without a display.
namespace {

constexpr int questions = 5;

/// A folder of its own for everything that the drill writes, removed at the end: the user's settings and verdicts are
/// none of the demonstration's business.
class Scratch {
public:
    /// Copies the course there and has the settings and the data kept there.
    /// @throws common::Error when the course cannot be copied.
    explicit Scratch(const std::filesystem::path& course)
    {
        namespace fs = std::filesystem;
        const fs::path folder = m_folder.path().toStdString();
        std::error_code error;
        m_course = folder / course.filename();
        if (!m_folder.isValid() || !fs::copy_file(course, m_course, error))
            throw cuedrill::common::Error("A copy of " + course.string() + " cannot be made: " + error.message());
        fs::permissions(m_course, fs::perms::owner_write, fs::perm_options::add);
        qputenv("XDG_CONFIG_HOME", m_folder.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", m_folder.filePath(QStringLiteral("data")).toLocal8Bit());
    }

    [[nodiscard]] std::string course() const { return m_course.string(); }

private:
    QTemporaryDir m_folder;
    std::filesystem::path m_course;
};

class Demo {
public:
    Demo(cuedrill::program::Program& program, std::string picture) : m_program(program), m_picture(std::move(picture))
    {
        // Boxes are answered as a user would who has read them.
        m_box_watch.callOnTimeout([] {
            if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                say("box", box->text().toStdString());
                box->accept();
            } else if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                dialog->reject();
            }
        });
        m_box_watch.start(0);
    }

    void run()
    {
        press("bot_yes");
        for (int number = 1; number <= questions; ++number) {
            if (m_program.course().current_cnt == 0) {
                std::cout << "\nNothing more is mature for being asked; come back later.\n";
                break;
            }
            drill_one(number);
        }
        m_program.form1().save_picture(m_picture);
        say("picture", m_picture);
        m_program.form1().widget().close();
    }

private:
    static void say(const char* what, const std::string& text) { std::cout << what << ": " << text << '\n'; }

    cuedrill::platform::Form1& controls() { return m_program.form1().controls(); }

    /// Presses a button of the window as the user does.
    void press(const char* name)
    {
        auto* const button = m_program.form1().widget().findChild<QAbstractButton*>(QString::fromLatin1(name));
        if (button == nullptr || !button->isEnabled())
            throw cuedrill::common::Error(std::string("The button ") + name + " cannot be pressed.");
        button->click();
    }

    void drill_one(int number)
    {
        const auto record = m_program.course().current_cnt;
        std::cout << "\nquestion " << number << '\n';
        say("prompt", controls().panel_dialog.caption());
        say("question", controls().Text_q.text());
        press("bot_yes");
        say("prompt", controls().panel_dialog.caption());
        say("answer", controls().Text_a.text());

        // Now and then somebody does not know an answer.
        const bool known = number % 3 != 0;
        press(known ? "bot_yes" : "bot_no");
        say("verdict", known ? "known" : "not known");
        auto& course = m_program.course();
        std::cout << "new level: "
                  << cuedrill::store::single_number(course.database(),
                                                    "select " + course.Q_FIELD.successes +
                                                        " from qa where cnt = " + std::to_string(record))
                  << '\n';
    }

    cuedrill::program::Program& m_program;
    std::string m_picture;
    QTimer m_box_watch;
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
