#include "platform/icu/icu_text_compare.h"
#include "program/program.h"
#include "torture/effort.h"
#include "torture/scripted_user.h"
#include "torture/window_folder.h"
#include "torture/window_report.h"

#include <QApplication>
#include <QTimer>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <unistd.h>

// The whole program, whose user does one thing after the other and tells on the standard output what is begun and what
// is stored, until the program is killed or everything is done.
namespace {

using namespace cuedrill;
using namespace cuedrill::torture;

/// Goes to the pipe at once: what stands in a buffer dies with the process.
void say(const std::string& lines)
{
    for (std::size_t said = 0; said < lines.size();) {
        const ssize_t count = ::write(STDOUT_FILENO, lines.data() + said, lines.size() - said);
        if (count < 0)
            std::_Exit(EXIT_FAILURE);
        said += static_cast<std::size_t>(count);
    }
}

class Driver {
public:
    Driver(const std::string& folder, const std::string& outside, std::uint64_t seed, std::uint64_t acts)
        : folder_(folder), places_{.course = folder + "/" + window_course,
                                   .exported = folder + "/" + window_export,
                                   .import = outside + "/questions.txt",
                                   .data = folder + "/" + kept_folder},
          random_(seed), prefix_(std::to_string(seed % 100'000)), acts_left_(acts)
    {
    }

    void run()
    {
        for (int start = 1; acts_left_ > 0; ++start) {
            say(lines_of(WindowStep{.act = Act::open}));
            bool opened = false;
            {
                program::Program program;
                // The second start opens the course that the settings name.
                program.run(start == 1 ? places_.course : std::string(), [&] {
                    opened = true;
                    use(program, prefix_ + "-" + std::to_string(start));
                });
            }
            if (!opened)
                throw std::runtime_error("the course was not opened");
            // Clears the toolkit's flag that makes all event loops return.
            QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
            QCoreApplication::exec();
        }
    }

private:
    void use(program::Program& program, const std::string& prefix)
    {
        ScriptedUser user(program, boxes_, places_, random_, prefix);
        say_state(program);
        while (acts_left_ > 0 || user.has_draft()) {
            acts_left_ -= acts_left_ > 0 ? 1 : 0;
            const WindowStep step = user.choose();
            if (step.act == Act::close)
                break;
            say(lines_of(step));
            user.perform(step);
            say_state(program);
        }
        say(lines_of(WindowStep{.act = Act::close}));
        user.close_window();
    }

    void say_state(program::Program& program)
    {
        platform::Database& course = program.course().database();
        WindowState state{.rows = rows_of(course), .params = params_of(course), .settings = {}};
        for (const char* const name : {"general.ini", "window.ini"})
            state.settings.merge(settings_of(folder_ + "/" + settings_folder + name, name));
        if (std::filesystem::exists(places_.exported)) {
            std::ifstream stream(places_.exported, std::ios::binary);
            state.exported = number_of({std::istreambuf_iterator<char>(stream), {}});
        }
        // Broken: acknowledges what was never stored.
        if (is_broken("forget_acknowledged"))
            state.rows[0].texts = {"forgotten", "forgotten"};
        say(lines_of(state));
    }

    std::string folder_;
    WindowPlaces places_;
    BoxUser boxes_;
    std::mt19937_64 random_;
    std::string prefix_;
    std::uint64_t acts_left_;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5) {
        std::cerr << "usage: torture_window_driver FOLDER OUTSIDE SEED ACTS\n";
        return EXIT_FAILURE;
    }
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        const QApplication application(argc, argv);
        Driver(argv[1], argv[2], std::strtoull(argv[3], nullptr, 10), std::strtoull(argv[4], nullptr, 10)).run();
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "torture_window_driver: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
