#include "common/date_time.h"
#include "common/errors.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/qt/qt_look.h"
#include "platform/sqlite/sqlite_database.h"
#include "platform/system/system_clock.h"
#include "program/program.h"
#include "store/schema.h"
#include "support/command_line.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QPalette>
#include <QPlainTextEdit>
#include <QStyle>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <initializer_list>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Takes pictures of the real main window in every mode, for visual checks of themes, sizes and texts of all kinds.
namespace {

using namespace cuedrill;

constexpr QSize usual_size(1000, 720);

/// Sizes of screens in their own pixels; at a scale, a window that fills the screen is smaller by as much.
constexpr QSize screens[] = {{1024, 600}, {1280, 900}, {1920, 1080}};
/// Dots per inch of the screen where QT_FONT_DPI sets no others.
constexpr int usual_dpi = 96;

/// The first question and its answer.
struct Texts {
    std::string name; ///< part of the picture's name; "" for the usual texts
    std::string question;
    std::string answer;
};

enum class Contents { usual, none, inverted };

/// The user's actions that bring the window into a mode, in the order of the members.
struct Mode {
    const char* name;
    std::vector<const char*> buttons{};
    const char* focus = ""; ///< control that gets the focus
    const char* typed = ""; ///< may end with Enter
    const char* last_button = "";
    const char* entry = "";        ///< menu entry to choose
    const char* entered_text = ""; ///< typed into the input box that it opens
    Contents contents = Contents::usual;
    const char* box = "";    ///< title of the box to be pictured
    const char* window = ""; ///< name of the other window to be pictured
};

const Mode modes[] = {
    {.name = "start"},
    {.name = "question", .buttons = {"bot_yes"}},
    {.name = "answer", .buttons = {"bot_yes", "bot_yes"}},
    {.name = "answer-asked", .buttons = {"bot_yes", "pb_2"}},
    {.name = "answer-minus", .buttons = {"bot_yes"}, .focus = "Text_a", .typed = "-"},
    {.name = "word-hint", .buttons = {"bot_yes", "pb_4"}},
    {.name = "typing", .buttons = {"bot_yes", "pb_5"}, .typed = "Oslo on"},
    {.name = "masked-hint", .buttons = {"bot_yes", "pb_5"}, .typed = "Oslo on", .last_button = "pb_4"},
    {.name = "right", .buttons = {"bot_yes", "pb_5"}, .typed = "Oslo on the fjord of that name\r"},
    {.name = "new", .buttons = {"pb_9"}, .typed = "What is the capital of Sweden?"},
    {.name = "edit", .buttons = {"bot_yes", "pb_8"}},
    {.name = "empty", .contents = Contents::none},
    {.name = "inverted", .buttons = {"bot_yes", "bot_yes"}, .contents = Contents::inverted},
    {.name = "wrong-box",
     .buttons = {"bot_yes", "pb_5"},
     .typed = "Olso on the fiord of this name\r",
     .box = "Wrong answer"},
    {.name = "list", .buttons = {"bot_yes"}, .entry = "m_show_sort_by_score"},
    {.name = "list-with-answers", .buttons = {"bot_yes"}, .entry = "m_all_q_and_a"},
    {.name = "list-while-editing", .buttons = {"bot_yes", "pb_8"}, .entry = "m_show_all"},
    {.name = "search", .buttons = {"bot_yes"}, .entry = "m_find_a", .entered_text = "on"},
    {.name = "similar", .buttons = {"bot_yes"}, .entry = "m_list_similar"},
    {.name = "about", .entry = "m_about", .box = "CUEDRILL"},
    {.name = "file-dialog", .entry = "m_open", .box = "Specify name of Cuedrill file to open or create"},
    {.name = "history", .entry = "m_version_history", .window = "f_msgbox"},
};

/// One picture: a mode with its settings.
struct Wish {
    const Mode* mode;
    Texts texts;
    QSize size = usual_size;
    bool dark = false;
    const char* font = ""; ///< font set in the course; "" for the standard one
};

const Texts short_texts{"", "What is the capital of Norway?", "Oslo on the fjord of that name"};

/// The longest text that a course can hold, several lines, and a word that does not fit on a line.
const Texts long_texts[] = {
    {"long",
     "Which of the treaties that ended the wars of the seventeenth century gave the cities of the north their freedom "
     "of trade, which rivers did it open to their ships, and for how many decades was that so?",
     "The last one; it opened the two great rivers, and all that flow into them, to the ships of each city that had "
     "signed it, for as long as the tolls were paid in silver, which was for all of sixty years."},
    {"lines", "Name the three\r\nprimary colours\r\nof light.", "red\r\ngreen\r\nblue"},
    {"word", std::string(60, 'W'), "Llanfair" + std::string(44, 'o') + "gogogoch"}};

/// Operates the window as a user does.
class User {
public:
    explicit User(QMainWindow& window) : window_(window) {}

    void bring_to(const Mode& mode)
    {
        for (const char* button : mode.buttons)
            press(button);
        if (*mode.focus != 0)
            find<QWidget>(mode.focus).setFocus();
        for (const QChar character : QString::fromLatin1(mode.typed))
            type(character);
        if (*mode.last_button != 0)
            press(mode.last_button);
        if (*mode.entry != 0)
            choose(mode.entry);
    }

private:
    template <class Widget>
    Widget& find(const char* name)
    {
        auto* const widget = window_.findChild<Widget*>(QString::fromLatin1(name));
        if (widget == nullptr || !widget->isEnabled())
            throw common::Error(std::string(name) + " cannot be used.");
        return *widget;
    }

    void press(const char* name) { find<QAbstractButton>(name).click(); }

    void choose(const char* name)
    {
        auto* const entry = window_.findChild<QAction*>(QString::fromLatin1(name));
        if (entry == nullptr || !entry->isEnabled())
            throw common::Error(std::string(name) + " cannot be chosen.");
        entry->trigger();
    }

    void type(QChar character)
    {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QWidget* const focus = window_.focusWidget();
            QKeyEvent event(type, character == QLatin1Char('\r') ? Qt::Key_Return : 0, Qt::NoModifier, character);
            QCoreApplication::sendEvent(focus != nullptr ? focus : &window_, &event);
        }
    }

    QMainWindow& window_;
};

QPalette dark_theme()
{
    QPalette palette(QColor(53, 53, 53), QColor(42, 42, 42));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::AlternateBase, QColor(53, 53, 53));
    palette.setColor(QPalette::ToolTipBase, QColor(35, 35, 35));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText, QPalette::ToolTipText}) {
        palette.setColor(role, QColor(238, 238, 238));
        palette.setColor(QPalette::Disabled, role, QColor(128, 128, 128));
    }
    return palette;
}

bool is_one_of(const Mode& mode, std::initializer_list<std::string_view> names)
{
    return std::find(names.begin(), names.end(), mode.name) != names.end();
}

class CourseMaker {
public:
    /// Makes a new course file whose first mature question is that of `texts`.
    void make(const std::string& path, const Wish& wish)
    {
        store::create_course_db(database_, path);
        if (wish.mode->contents != Contents::none)
            write_records(wish.texts);
        write_params(wish);
        database_.close();
    }

private:
    void write_records(const Texts& texts)
    {
        const common::DateTime now = platform::system::SystemClock().now();
        const double long_ago = now.plus_days(-3.5).day_number();
        // Due tomorrow, whatever the time of day.
        const double yesterday_noon = now.date_only().plus_days(-0.5).day_number();
        struct Record {
            std::string question;
            std::string answer;
            std::int64_t level;
            std::optional<double> tested;
        };
        const Record records[] = {
            {texts.question, texts.answer, 4, long_ago},
            {"What is the capital of Italy?", "Rome", 4, yesterday_noon},
            {"What is the capital of France?", "Paris on the Seine", 5, long_ago},
            {"What is the capital of Spain?", "Madrid", 5, long_ago},
            {"What is the capital of Portugal?", "Lisbon at the mouth of the Tagus", 5, long_ago},
            {"What is the capital of Austria?", "Vienna on the Danube", 3, long_ago},
            {"What is the capital of Hungary?", "Budapest on the Danube too", 3, long_ago},
            {"What is the capital of Poland?", "Warsaw", 2, long_ago},
            {"What is the capital of Ireland?", "Dublin", 2, long_ago},
            {"What is the capital of Wales?", "Cardiff", 2, long_ago},
            {"What is the capital of Denmark?", "Copenhagen on two islands", 1, long_ago},
            {"What is the capital of Finland?", "Helsinki", 0, long_ago},
            {"What is the capital of Iceland?", "Reykjavik", 0, std::nullopt},
        };
        std::int64_t attempts = 7;
        for (const Record& record : records) {
            database_.execute("Insert into qa (q, a, q_successes, a_successes, q_attempts, a_attempts, q_fails, "
                              "a_fails, q_date_last_test, a_date_last_test) "
                              "values (?1, ?2, ?3, ?3, ?4, ?4, ?5, ?5, ?6, ?6)",
                              {record.question, record.answer, record.level, record.tested ? attempts : 0,
                               record.tested ? attempts - record.level : 0,
                               record.tested ? platform::Value(*record.tested) : platform::Value()});
            ++attempts;
        }
    }

    void write_params(const Wish& wish)
    {
        const auto add = [&](const std::string& name, const std::string& column, const platform::Value& value) {
            database_.execute("Insert into params (param, " + column + ") values (?1, ?2)", {name, value});
        };
        add("course_title", "string_value", "Capitals of Europe");
        add("time_ever", "number_value", 45296.0);
        if (*wish.font != 0)
            add("font", "string_value", wish.font);
        if (wish.mode->contents == Contents::inverted)
            add("invert", "number_value", 1.0);
    }

    platform::icu::IcuTextCompare text_compare_;
    platform::sqlite::SqliteDatabase database_{text_compare_};
};

/// Shown in place of the words of a hint.
const QString hint_words =
    QStringLiteral(" [Budapest]   [Cardiff]   [Copenhagen]   [Danube]   [Dublin]   [fjord]   [Helsinki]   [islands]   "
                   "[Lisbon]   [Madrid]   [mouth]   [name]   [of]   [on]   [Oslo]   [Paris]   [Reykjavik]   [Rome]   "
                   "[Seine]   [Tagus]   [that]   [the]   [too]   [two]");

/// What QT_FONT_DPI sets: the toolkit takes it for a scale, as it does what a desktop tells.
int chosen_dpi()
{
    const int chosen = qEnvironmentVariableIntValue("QT_FONT_DPI");
    return chosen > 0 ? chosen : usual_dpi;
}

class Camera {
public:
    /// @param keeps_style keeps the widget style that the command line has set.
    Camera(QString folder, bool keeps_style) : folder_(std::move(folder)), keeps_style_(keeps_style)
    {
        if (!scratch_.isValid() || !QDir().mkpath(folder_))
            throw common::Error(folder_.toStdString() + ": the folder cannot be made");
        qputenv("XDG_CONFIG_HOME", scratch_.filePath("config").toLocal8Bit());
        qputenv("XDG_DATA_HOME", scratch_.filePath("data").toLocal8Bit());
        make_shown_folder();
        box_watch_.callOnTimeout([this] { look_at_box(); });
        box_watch_.start(0);
    }
    Camera(const Camera&) = delete;
    Camera& operator=(const Camera&) = delete;
    ~Camera() { QDir(shown_folder_).removeRecursively(); }

    void take(const Wish& wish)
    {
        wish_ = &wish;
        failure_.clear();
        taken_ = at_work_ = false;
        const QString course = scratch_.filePath("course.crs");
        CourseMaker().make(course.toStdString(), wish);
        QPalette theme = wish.dark ? dark_theme() : light_theme_;
        QApplication::style()->polish(theme);
        QApplication::setPalette(theme);
        run(course.toStdString());
        QFile::remove(course);
        if (failure_.empty() && !taken_)
            failure_ = "there is no picture";
        if (!failure_.empty())
            throw common::Error(name().toStdString() + ": " + failure_);
    }

private:
    void run(const std::string& course)
    {
        {
            program::Program program(keeps_style_);
            program.run(course, [&] {
                QMainWindow& window = program.form1().widget();
                window.resize(wish_->size);
                QCoreApplication::processEvents();
                at_work_ = true;
                User(window).bring_to(*wish_->mode);
                wait_for_due_picture(window);
                // Until all layouts have passed their requests on.
                for (int turn = 0; turn < 3; ++turn)
                    QCoreApplication::processEvents();
                if (*wish_->mode->window != 0)
                    save(further_window(wish_->mode->window));
                else if (*wish_->mode->box == 0)
                    save(window);
                at_work_ = false;
                window.close();
            });
        }
        // Ending the program leaves the toolkit in the state "event loops shall return". This short loop resets it for
        // the next program in this process.
        QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
        QCoreApplication::exec();
    }

    /// The picture of what is due is drawn a moment after everything else.
    static void wait_for_due_picture(QMainWindow& window)
    {
        const auto* const picture = window.findChild<QLabel*>(QStringLiteral("due_picture"));
        const QDeadlineTimer deadline(std::chrono::seconds(10));
        do
            QCoreApplication::processEvents();
        while (picture != nullptr && picture->text().isEmpty() && !deadline.hasExpired());
    }

    static QWidget& further_window(const char* name)
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == QLatin1String(name) && widget->isVisible())
                return *widget;
        }
        throw common::Error(std::string(name) + " is not shown.");
    }

    void look_at_box()
    {
        if (auto* const question = qobject_cast<QInputDialog*>(QApplication::activeModalWidget())) {
            question->setTextValue(QString::fromLatin1(wish_->mode->entered_text));
            question->accept();
            // Activates the window, as happens on a screen after a box has closed.
            if (QWidget* const window = question->parentWidget())
                window->activateWindow();
            return;
        }
        if (auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            look_at_file_dialog(*dialog);
            return;
        }
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr)
            return;
        // A course may show boxes of its own at its beginning and end.
        if (at_work_ && box->windowTitle() == QLatin1String(wish_->mode->box))
            save(*box);
        else if (at_work_)
            failure_ = "a box says: " + box->text().toStdString();
        box->reject();
    }

    /// In a folder that is the same for all pictures. The toolkit reads it in another thread.
    void look_at_file_dialog(QFileDialog& dialog)
    {
        box_watch_.stop();
        dialog.setDirectory(shown_folder_);
        const auto* const files = dialog.findChild<QAbstractItemView*>(QStringLiteral("treeView"));
        const QDeadlineTimer deadline(std::chrono::seconds(10));
        do
            QCoreApplication::processEvents();
        while (files != nullptr && files->model()->rowCount(files->rootIndex()) == 0 && !deadline.hasExpired());
        if (at_work_ && dialog.windowTitle() == QLatin1String(wish_->mode->box))
            save(dialog);
        dialog.reject();
        box_watch_.start(0);
    }

    void make_shown_folder() const
    {
        const QDir folder(shown_folder_);
        folder.mkpath(QStringLiteral("."));
        QFile file(folder.filePath(QStringLiteral("Chemical elements.crs")));
        if (!file.open(QIODevice::WriteOnly) ||
            !file.setFileTime(QDateTime(QDate(2024, 1, 6), QTime(12, 0)), QFileDevice::FileModificationTime))
            throw common::Error(file.fileName().toStdString() + ": the file cannot be written");
    }

    void save(QWidget& widget)
    {
        // The clock would be another one in each picture.
        if (auto* const clock = widget.findChild<QLabel*>(QStringLiteral("Panel_time_now")))
            clock->setText(QStringLiteral("12:34.56"));
        // The words are drawn at random.
        if (is_one_of(*wish_->mode, {"word-hint"})) {
            if (auto* const words = widget.findChild<QPlainTextEdit*>(QStringLiteral("t_hint")))
                words->setPlainText(hint_words);
        }
        taken_ = widget.grab().save(folder_ + "/" + name());
    }

    [[nodiscard]] QString name() const
    {
        QStringList parts{QString::fromLatin1(wish_->mode->name)};
        if (!wish_->texts.name.empty())
            parts << QString::fromStdString(wish_->texts.name);
        if (*wish_->font != 0)
            parts << QStringLiteral("font");
        parts << (wish_->dark ? QStringLiteral("dark") : QStringLiteral("light"));
        if (const int dpi = chosen_dpi(); dpi != usual_dpi)
            parts << QString::number(dpi) + "dpi";
        parts << QString::number(qApp->devicePixelRatio() * usual_dpi / chosen_dpi()) + "x";
        parts << QString::number(wish_->size.width()) + "x" + QString::number(wish_->size.height());
        return parts.join(QLatin1Char('-')) + ".png";
    }

    QString folder_;
    bool keeps_style_;
    QTemporaryDir scratch_;
    QString shown_folder_ = QDir::temp().filePath("cuedrill-pictures"); ///< in the file dialog
    QPalette light_theme_ = QApplication::palette();
    QTimer box_watch_;
    const Wish* wish_ = nullptr;
    bool taken_ = false;
    bool at_work_ = false; ///< the user's actions of the mode are running
    std::string failure_;
};

/// A few modes at the size of each screen that is not too small for the window at this scale.
std::vector<Wish> wishes_for_screens(double scale)
{
    constexpr QSize smallest(341, 200);
    std::vector<Wish> list;
    for (const Mode& mode : modes) {
        // Only the screen itself bounds them.
        if (is_one_of(mode, {"wrong-box", "about", "file-dialog"}))
            list.push_back({.mode = &mode, .texts = long_texts[0], .size = QSizeF(screens[0] / scale).toSize()});
    }
    for (const QSize screen : screens) {
        const QSize size = QSizeF(screen / scale).toSize();
        if (size != size.expandedTo(smallest))
            continue;
        for (const Mode& mode : modes) {
            if (is_one_of(mode, {"question", "answer-asked", "typing", "word-hint", "list"}))
                list.push_back({.mode = &mode, .texts = short_texts, .size = size});
        }
        list.push_back({.mode = std::find_if(std::begin(modes), std::end(modes),
                                             [](const Mode& mode) { return is_one_of(mode, {"answer"}); }),
                        .texts = long_texts[0],
                        .size = size});
    }
    return list;
}

/// Each mode in light and dark; sizes, texts and the course's own font where they matter. At scales other than 1, only
/// a few.
/// @param scale pixels of the screen for one of the toolkit
/// @param all_modes otherwise only the sizes of screens
std::vector<Wish> wishes(double scale, bool all_modes)
{
    std::vector<Wish> list = wishes_for_screens(scale);
    if (!all_modes)
        return list;
    for (const Mode& mode : modes) {
        for (const bool dark : {false, true})
            list.push_back({.mode = &mode, .texts = short_texts, .dark = dark});
        if (scale != 1)
            continue;
        if (is_one_of(mode, {"question", "answer", "word-hint", "masked-hint", "list"})) {
            for (const bool dark : {false, true})
                list.push_back({.mode = &mode, .texts = short_texts, .size = QSize(800, 600), .dark = dark});
        }
        if (is_one_of(mode, {"answer", "word-hint", "wrong-box", "list-with-answers"})) {
            for (const Texts& texts : long_texts)
                list.push_back({.mode = &mode, .texts = texts});
        }
        if (is_one_of(mode, {"answer"})) {
            list.push_back({.mode = &mode, .texts = long_texts[0], .size = QSize(800, 600), .font = "DejaVu Serif"});
            for (const bool dark : {false, true})
                list.push_back({.mode = &mode, .texts = short_texts, .dark = dark, .font = "DejaVu Serif"});
        }
    }
    return list;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const bool sets_style = support::sets_style({argv + std::min(argc, 1), argv + argc});
        // The toolkit removes its own options from the arguments.
        const QApplication application(argc, argv);
        const bool only_screens = argc == 3 && std::string_view(argv[1]) == "--screens";
        if (argc != 2 && !only_screens) {
            std::cerr << "usage: cuedrill-pictures [-style STYLE] [--screens] FOLDER\n"
                         "--screens: only a few modes, at the sizes of several screens\n";
            return EXIT_FAILURE;
        }
        platform::qt::set_up_application(sets_style);
        // A blinking cursor would be in one picture and not in the next.
        QApplication::setCursorFlashTime(0);
        Camera camera(QString::fromLocal8Bit(argv[argc - 1]), sets_style);
        const std::vector<Wish> list = wishes(application.devicePixelRatio(), !only_screens);
        for (const Wish& wish : list)
            camera.take(wish);
        std::cout << list.size() << " pictures in " << argv[argc - 1] << '\n';
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "cuedrill-pictures: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
