// Drills one question in the program into which it is loaded, by the controls of the window, and closes the window.
// Prints what it sees. Where a file dialog asks for a course, it chooses the one that the environment variable
// CUEDRILL_ROBOT_COURSE names. Where CUEDRILL_ROBOT_COPIES is set, it copies the answer and prints the clipboard.
// Whatever it does not find in time ends the program with exit code 3.

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

constexpr int failed = 3;
/// For a busy machine; the drill takes less than a second.
constexpr std::chrono::seconds longest_run{60};

void say(const char* what, const QString& text)
{
    std::cout << what << ": " << text.toStdString() << std::endl;
}

class Robot : public QObject {
public:
    explicit Robot(QObject* parent) : QObject(parent)
    {
        step_soon();
        QTimer::singleShot(longest_run, this, [] { give_up("the drill did not come to its end"); });
    }

private:
    [[noreturn]] static void give_up(const char* reason)
    {
        std::cerr << "robot: " << reason << std::endl;
        std::_Exit(failed);
    }

    static QMainWindow* window()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == QLatin1String("Form1") && widget->isVisible())
                return qobject_cast<QMainWindow*>(widget);
        }
        return nullptr;
    }

    /// Answers a dialog as a user does who agrees with it.
    static void answer(QWidget* dialog)
    {
        if (auto* const box = qobject_cast<QMessageBox*>(dialog)) {
            say("box", box->text());
            box->accept();
        } else if (auto* const files = qobject_cast<QFileDialog*>(dialog)) {
            say("dialog", files->windowTitle());
            auto* const name = files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            if (name == nullptr)
                give_up("the file dialog has no line for a name");
            name->setText(qEnvironmentVariable("CUEDRILL_ROBOT_COURSE"));
            QMetaObject::invokeMethod(files, "accept");
        }
    }

    static void press(QMainWindow& form, const char* name)
    {
        auto* const button = form.findChild<QAbstractButton*>(QString::fromLatin1(name));
        if (button == nullptr || !button->isEnabled() || !button->isVisible())
            give_up("a button cannot be pressed");
        button->click();
    }

    static QString text_of(const QMainWindow& form, const char* name)
    {
        const auto* const box = form.findChild<QPlainTextEdit*>(QString::fromLatin1(name));
        if (box == nullptr)
            give_up("a box of the window is missing");
        return box->toPlainText();
    }

    void step_soon()
    {
        QTimer::singleShot(std::chrono::milliseconds(50), this, [this] { step(); });
    }

    void step()
    {
        // Before anything that may open a dialog, which the next step answers.
        if (step_ < closing)
            step_soon();
        if (QWidget* const dialog = QApplication::activeModalWidget()) {
            answer(dialog);
            return;
        }
        QMainWindow* const form = window();
        if (form == nullptr)
            return;
        switch (step_++) {
        case 0:
            say("platform", QGuiApplication::platformName());
            press(*form, "bot_yes");
            say("question", text_of(*form, "Text_q"));
            break;
        case 1:
            press(*form, "bot_yes");
            say("answer", text_of(*form, "Text_a"));
            break;
        case 2:
            if (qEnvironmentVariableIsSet("CUEDRILL_ROBOT_COPIES"))
                copy(*form);
            press(*form, "bot_yes");
            say("verdict", QStringLiteral("known"));
            break;
        default:
            form->close();
        }
    }

    static void copy(QMainWindow& form)
    {
        auto* const box = form.findChild<QPlainTextEdit*>(QStringLiteral("Text_a"));
        box->selectAll();
        box->copy();
        say("clipboard", QGuiApplication::clipboard()->text());
    }

    static constexpr int closing = 3;
    int step_ = 0;
};

/// Runs in the constructor of the program's application object, before the event loop.
void begin()
{
    QTimer::singleShot(0, qApp, [] { new Robot(qApp); });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(begin)
