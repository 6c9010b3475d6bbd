#include "fakes/fake_shell.h"

namespace cuedrill::fakes {

bool FakeShell::open(const std::string& target, const std::string& working_folder)
{
    calls.push_back("open " + target + " in " + working_folder);
    return has_programs;
}

bool FakeShell::open_folder(const std::string& path)
{
    calls.push_back("folder " + path);
    return has_programs;
}

std::optional<std::int64_t> FakeShell::edit_text(const std::string& path)
{
    calls.push_back("edit " + path);
    return has_programs ? std::optional<std::int64_t>(4711) : std::nullopt;
}

} // namespace cuedrill::fakes
