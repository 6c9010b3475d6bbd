#include "torture/replay.h"

#include "torture/script.h"
#include "torture/session.h"

#include <functional>
#include <sstream>

namespace cuedrill::torture {

std::uint64_t hash_of_dump(const std::string& dump)
{
    return std::hash<std::string>()(dump);
}

std::string line_of(const Acknowledgement& acknowledgement)
{
    return "ack " + std::to_string(acknowledgement.steps) + " " + std::to_string(acknowledgement.hash) + "\n";
}

std::optional<Acknowledgement> last_acknowledgement(const std::string& output)
{
    const std::size_t end = output.rfind('\n');
    if (end == std::string::npos)
        return std::nullopt;
    const std::size_t before = output.rfind('\n', end - 1);
    std::istringstream line(output.substr(before == std::string::npos ? 0 : before + 1));
    std::string word;
    Acknowledgement found;
    line >> word >> found.steps >> found.hash;
    return found;
}

std::uint64_t replay(const std::string& path, std::uint64_t script_seed, std::int64_t steps)
{
    Session session(path);
    session.open();
    Script script(script_seed);
    for (std::int64_t i = 0; i < steps; ++i)
        session.perform(script.next());
    return hash_of_dump(session.dump());
}

} // namespace cuedrill::torture
