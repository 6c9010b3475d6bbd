#include "program/program.h"

#include <QApplication>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

namespace {

/// Everything behind the program's name, as it was typed: a path with blanks arrives in several pieces.
std::string command_line(int argc, char** argv)
{
    std::string text;
    for (int i = 1; i < argc; ++i)
        text.append(i > 1 ? " " : "").append(argv[i]);
    return text;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        // The toolkit takes its own options out of the arguments.
        const QApplication application(argc, argv);
        cuedrill::program::Program program;
        return program.run(command_line(argc, argv));
    } catch (const std::exception& error) {
        std::cerr << "cuedrill: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
