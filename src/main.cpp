#include "common/errors.h"
#include "platform/system/standard_streams.h"
#include "program/program.h"
#include "support/command_line.h"

#include <QApplication>
#include <QtGlobal>
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

/// Everything after the program's name, as typed: an unquoted path with blanks arrives in several arguments.
std::string command_line(int argc, char** argv)
{
    std::string text;
    for (int i = 1; i < argc; ++i)
        text.append(i > 1 ? " " : "").append(argv[i]);
    return text;
}

void print(const std::string& text)
{
    if (!(std::cout << text << std::flush))
        throw cuedrill::common::Error("The text could not be printed.");
}

/// The toolkit aborts if it finds no display. Exits instead, so that it does not count as a crash.
void end_on_fatal_error(QtMsgType kind, const QMessageLogContext& /*where*/, const QString& text)
{
    std::cerr << "cuedrill: " << text.toStdString() << std::endl;
    if (kind == QtFatalMsg)
        std::_Exit(EXIT_FAILURE);
}

} // namespace

int main(int argc, char** argv)
{
    // Ignored, so that a write beyond the file size limit fails and a box reports it; by default the signal ends the
    // program.
    std::signal(SIGXFSZ, SIG_IGN);
    cuedrill::platform::system::occupy_standard_streams();
    try {
        const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
        if (const auto answer = cuedrill::support::command_line_answer(arguments)) {
            print(*answer);
            return EXIT_SUCCESS;
        }
        // The toolkit removes its own options from the arguments.
        qInstallMessageHandler(end_on_fatal_error);
        const QApplication application(argc, argv);
        qInstallMessageHandler(nullptr);
        cuedrill::program::Program program(cuedrill::support::sets_style(arguments));
        return program.run(command_line(argc, argv));
    } catch (const std::exception& error) {
        std::cerr << "cuedrill: " << cuedrill::common::words_of(error) << '\n';
        return EXIT_FAILURE;
    }
}
