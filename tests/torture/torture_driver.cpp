#include "torture/effort.h"
#include "torture/replay.h"
#include "torture/script.h"
#include "torture/session.h"
#include "torture/watched_disk.h"

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>

// Uses a course without end and acknowledges each step that is stored on its standard output, until it is killed.
namespace {

using namespace cuedrill::torture;

/// Kills this process at a call of the engine that changes a file or its locks.
class KillingDisk final : public DiskWatcher {
public:
    /// @param calls_left 0 for never.
    explicit KillingDisk(std::uint64_t calls_left)
        : calls_left_(calls_left), swallows_writes_(is_broken("swallow_writes"))
    {
    }

    std::optional<int> before(const FileCall& call) override
    {
        if (call.kind == CallKind::read)
            return std::nullopt;
        if (calls_left_ != 0 && --calls_left_ == 0)
            std::raise(SIGKILL);
        const bool is_journal = std::string_view(call.path).ends_with("-journal");
        if (swallows_writes_ && call.kind == CallKind::write && is_journal)
            return 0;
        return std::nullopt;
    }

private:
    std::uint64_t calls_left_;
    bool swallows_writes_;
};

/// Goes to the pipe at once: what stands in a buffer dies with the process.
void acknowledge(const Acknowledgement& acknowledgement)
{
    const std::string line = line_of(acknowledgement);
    if (::write(STDOUT_FILENO, line.data(), line.size()) < 0)
        std::exit(EXIT_FAILURE);
}

void run(const std::string& course, std::uint64_t script_seed, std::uint64_t calls)
{
    KillingDisk disk(calls);
    const WatchedDisk watched(disk);
    const bool forgets = is_broken("forget_acknowledged");
    Session session(course);
    session.open();
    Script script(script_seed);
    acknowledge({0, hash_of_dump(session.dump())});
    for (std::int64_t done = 1;; ++done) {
        const Step step = script.next();
        session.perform(step);
        // Broken: acknowledges what was never stored.
        acknowledge({done, hash_of_dump(session.dump() + (forgets ? "forgotten" : ""))});
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: torture_driver COURSE SEED CALLS\nCALLS: calls of the engine until SIGKILL; 0 for none\n";
        return EXIT_FAILURE;
    }
    try {
        run(argv[1], std::strtoull(argv[2], nullptr, 10), std::strtoull(argv[3], nullptr, 10));
    } catch (const std::exception& error) {
        std::cerr << "torture_driver: " << error.what() << '\n';
    }
    return EXIT_FAILURE;
}
