#include "app/base/program_folder.h"
#include "common/errors.h"
#include "platform/system/standard_streams.h"
#include "platform/system/system_folders.h"
#include "program/program.h"
#include "tools/verb.h"
#include "torture/effort.h"
#include "torture/window_user.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLocale>
#include <QMainWindow>
#include <QTimer>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

// Uses the whole program, with its window and its adapters, as its words say, and tells what it shows on a file
// descriptor. Lines that begin with "# " are about the surroundings.
//
// usage: torture_user DESCRIPTOR WORD...
// The words are NAME or NAME=VALUE and are carried out in their order:
//   start[=COURSE] … end    one run of the program; the words between them are done in its window
//   path=, input=           for the next file dialog and the next input box
//   press=, choose=         a button, a menu entry
//   type=[CONTROL:]TEXT
//   quiet, tick             stops the timers that repaint the window; lets them tick once. How often they tick
//   otherwise
//                           depends on how busy the machine is, and what is told must not.
//   drill=STEPS:SECONDS     asks questions and judges every other one as known, with time that passes at each step;
//   tells
//                           the questions and the verdicts
//   copies=COUNT            waits until there are so many copies of courses, or none can be made
//   clock=SECONDS, later=SECONDS    sets the clock, as Unix time; or lets time pass
//   limit=BYTES, limit=none         the largest file that can be written, as on a full disk
//   fill=PATH               writes a file until the disk is full
//   remove=PATH, copy=FROM:TO
//   tool=WORD WORD …        runs the command-line tool
namespace {

/// What the program's own clock tells; nothing for the clock of the machine.
std::optional<std::int64_t> clock_seconds;

} // namespace

// The linker sends the calls of this program's code here, but not those of libraries. The names are its.
extern "C" int __real_clock_gettime(clockid_t clock, timespec* time);
extern "C" int __wrap_clock_gettime(clockid_t clock, timespec* time);

extern "C" int __wrap_clock_gettime(clockid_t clock, timespec* time)
{
    if (clock != CLOCK_REALTIME || !clock_seconds)
        return __real_clock_gettime(clock, time);
    *time = {.tv_sec = static_cast<time_t>(*clock_seconds), .tv_nsec = 0};
    return 0;
}

namespace {

using namespace cuedrill;

struct Word {
    std::string name;
    std::string value;
};

Word word_of(const std::string& text)
{
    const std::size_t sign = text.find('=');
    return sign == std::string::npos ? Word{text, {}} : Word{text.substr(0, sign), text.substr(sign + 1)};
}

/// The text before the first colon, and the one behind it.
std::pair<std::string, std::string> parts_of(const std::string& text)
{
    const std::size_t colon = text.find(':');
    return {text.substr(0, colon), colon == std::string::npos ? std::string() : text.substr(colon + 1)};
}

std::string data_folder()
{
    using namespace platform::system;
    return app::data_folder(executable_folder(), data_home());
}

class User {
public:
    User(const torture::Teller& teller, const std::vector<std::string>& words) : teller_(teller), user_(teller)
    {
        for (const std::string& word : words)
            words_.push_back(word_of(word));
    }

    void use_program()
    {
        while (next_ < words_.size()) {
            const Word& word = words_[next_++];
            teller_.tell("> " + word.name);
            if (word.name == "start")
                live(word.value);
            else
                act(word);
        }
    }

private:
    void live(const std::string& course)
    {
        {
            program::Program program;
            const int code = program.run(course, [&] { use_window(program); });
            teller_.tell("exit code " + std::to_string(code));
        }
        while (next_ < words_.size() && words_[next_++].name != "end") {
        }
        // Clears the toolkit's flag that makes all event loops return, for the next run.
        QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
        QCoreApplication::exec();
    }

    void use_window(program::Program& program)
    {
        program_ = &program;
        QCoreApplication::processEvents();
        user_.tell_screen();
        for (; next_ < words_.size() && words_[next_].name != "end"; ++next_) {
            teller_.tell("> " + words_[next_].name + " " + words_[next_].value);
            act(words_[next_]);
            user_.tell_screen();
        }
        if (torture::is_broken("lose_records"))
            program.course().database().execute("Delete from qa where cnt % 2 = 0");
        program.form1().widget().close();
        program_ = nullptr;
    }

    void act(const Word& word)
    {
        if (!act_on_surroundings(word) && !(program_ != nullptr && act_in_window(word)))
            throw common::Error("not understood: " + word.name);
    }

    bool act_on_surroundings(const Word& word)
    {
        const auto [first, second] = parts_of(word.value);
        if (word.name == "clock")
            clock_seconds = std::stoll(word.value);
        else if (word.name == "later")
            clock_seconds = clock_seconds.value_or(0) + std::stoll(word.value);
        else if (word.name == "limit")
            limit(word.value);
        else if (word.name == "remove")
            std::filesystem::remove_all(word.value);
        else if (word.name == "fill")
            fill(word.value);
        else if (word.name == "copy")
            std::filesystem::copy_file(first, second);
        else if (word.name == "path")
            user_.prepare_path(word.value);
        else if (word.name == "input")
            user_.prepare_input(word.value);
        else if (word.name == "tool")
            run_tool(word.value);
        else
            return false;
        return true;
    }

    bool act_in_window(const Word& word)
    {
        QMainWindow& window = program_->form1().widget();
        const auto [first, second] = parts_of(word.value);
        if (word.name == "press")
            user_.press(window, word.value);
        else if (word.name == "choose")
            user_.choose(window, word.value);
        else if (word.name == "type")
            user_.type(window, first, localized(second));
        else if (word.name == "quiet" || word.name == "tick")
            use_timers(word.name == "tick");
        else if (word.name == "drill")
            drill(std::stoi(first), std::stoll(second));
        else if (word.name == "copies")
            wait_for_copies(std::stoul(word.value));
        else
            return false;
        return true;
    }

    void use_timers(bool tick)
    {
        platform::Form1& form1 = program_->form1().controls();
        for (platform::Timer* const timer : {&form1.timer_250_ms, &form1.timer_1_sec, &form1.timer_1_min}) {
            timer->stop();
            if (tick)
                timer->on_tick();
        }
    }

    void drill(int steps, std::int64_t seconds)
    {
        QMainWindow& window = program_->form1().widget();
        const auto* const prompt = window.findChild<QLabel*>(QStringLiteral("panel_dialog"));
        const auto* const yes = window.findChild<QAbstractButton*>(QStringLiteral("bot_yes"));
        for (; steps > 0; --steps) {
            clock_seconds = clock_seconds.value_or(0) + seconds;
            if (!yes->isVisible() || !yes->isEnabled()) {
                user_.press(window, "pb_1"); // the command that asks a question
                continue;
            }
            const bool judges = prompt->text() == QLatin1String("Did you know the answer?");
            if (prompt->text() == QLatin1String("Do you want to see the answer?"))
                teller_.tell("question: " + program_->form1().controls().Text_q.text());
            user_.forget_box();
            user_.press(window, judges && ++judged_ % 2 == 0 ? "bot_no" : "bot_yes");
            const bool complains = user_.last_box().starts_with("The course");
            if (judges)
                teller_.tell(complains ? "verdict refused: " + user_.last_box() : "verdict: stored");
        }
    }

    /// Broken: writes numbers as the locale does.
    static std::string localized(const std::string& text)
    {
        return torture::is_broken("follow_locale") ? text + QLocale().toString(0.5).toStdString() : text;
    }

    static void limit(const std::string& bytes)
    {
        rlimit limit{};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = bytes == "none" ? limit.rlim_max : std::stoul(bytes);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

    static void fill(const std::string& path)
    {
        for (const std::size_t size : {std::size_t{4096}, std::size_t{1}}) {
            std::ofstream out(path, std::ios::binary | std::ios::app);
            while (out << std::string(size, 'x') << std::flush) {
            }
        }
    }

    void wait_for_copies(std::size_t count) const
    {
        const auto* const status = program_->form1().widget().findChild<QLabel*>(QStringLiteral("P_status"));
        // A look each millisecond at least; a copy takes some hundredths of a second.
        for (int looks = 30'000; number_of_copies() < count; --looks) {
            if (looks == 0 || status->text().startsWith(QLatin1String("No copy of the course")))
                return teller_.tell("no copy: " + status->text().toStdString());
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    static std::size_t number_of_copies()
    {
        std::size_t count = 0;
        std::error_code error;
        for (std::filesystem::recursive_directory_iterator entry(data_folder() + "/copies", error);
             !error && entry != std::filesystem::recursive_directory_iterator(); entry.increment(error)) {
            const std::string name = entry->path().filename().string();
            if (name.ends_with(".crs") && !name.starts_with("."))
                ++count;
        }
        return count;
    }

    void run_tool(const std::string& words) const
    {
        std::istringstream in(words);
        const std::vector<std::string> line{std::istream_iterator<std::string>(in), {}};
        std::ostringstream out;
        std::ostringstream err;
        tools::Surroundings around{out, err, data_folder(), {}, false};
        const int code = tools::run_tool(line, around);
        teller_.tell("tool: " + std::to_string(code) + " | " + out.str() + " | " + err.str());
    }

    const torture::Teller& teller_;
    torture::WindowUser user_;
    std::vector<Word> words_;
    std::size_t next_ = 0;
    int judged_ = 0;
    program::Program* program_ = nullptr;
};

/// What is in force, so that a test can see whether its surroundings are.
void tell_surroundings(const torture::Teller& teller)
{
    teller.tell(std::string("# locale ") + std::setlocale(LC_ALL, nullptr));
    teller.tell(std::string("# decimal point ") + std::localeconv()->decimal_point);
    teller.tell("# language " + QLocale().name().toStdString());
    const std::time_t summer = 1'782'907'200; // 2026-07-01 12:00 UTC
    std::tm local{};
    if (::localtime_r(&summer, &local) != nullptr)
        teller.tell("# offset in summer " + std::to_string(local.tm_gmtoff));
    teller.tell("# user " + std::to_string(::geteuid()));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return EXIT_FAILURE;
    const torture::Teller teller(std::atoi(argv[1]));
    // As the program's own main function begins.
    std::signal(SIGXFSZ, SIG_IGN);
    platform::system::occupy_standard_streams();
    try {
        int no_options = 1;
        const QApplication application(no_options, argv);
        tell_surroundings(teller);
        User(teller, {argv + 2, argv + argc}).use_program();
        teller.tell("done");
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        teller.tell(std::string("stopped: ") + common::words_of(error));
        return EXIT_FAILURE;
    }
}
