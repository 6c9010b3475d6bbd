#include "app/base/program_folder.h"
#include "platform/system/standard_streams.h"
#include "platform/system/system_folders.h"
#include "tools/verb.h"

#include <csignal>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

// Works on courses without a window.
int main(int argc, char** argv)
{
    // Ignored, so that a write beyond the file size limit fails and is reported; by default the signal ends the
    // program.
    std::signal(SIGXFSZ, SIG_IGN);
    cuedrill::platform::system::occupy_standard_streams();
    const std::string data_home = cuedrill::platform::system::data_home();
    cuedrill::tools::Surroundings around{
        std::cout, std::cerr, cuedrill::app::data_folder(cuedrill::platform::system::executable_folder(), data_home),
        cuedrill::platform::system::runtime_folder(), isatty(STDERR_FILENO) != 0};
    const std::vector<std::string> line(argv + (argc > 0 ? 1 : 0), argv + argc);
    return cuedrill::tools::run_tool(line, around);
}
