#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace cuedrill::torture {

enum class CallKind { read, write, truncate, sync, open, remove, lock, unlock };

/// A call of the database engine to its file system.
struct FileCall {
    CallKind kind = CallKind::read;
    const char* path = "";       ///< full path; empty for a file without a name
    std::int64_t place = 0;      ///< of a read or write, bytes; the new size of a truncate
    const char* bytes = nullptr; ///< what a write writes
    int count = 0;               ///< number of bytes read or written
};

/// Sees everything that the engine and the program do to the files of a course, and may let calls fail.
class DiskWatcher {
public:
    DiskWatcher() = default;
    DiskWatcher(const DiskWatcher&) = delete;
    DiskWatcher& operator=(const DiskWatcher&) = delete;
    virtual ~DiskWatcher() = default;

    /// Called before each call of the engine.
    /// @return the result that the engine gets without the call being made; std::nullopt to make the call.
    virtual std::optional<int> before(const FileCall& call)
    {
        static_cast<void>(call);
        return std::nullopt;
    }

    /// Called after each call of the engine that was made and has succeeded.
    /// @return the result that the engine gets; 0 is success.
    virtual int after(const FileCall& call)
    {
        static_cast<void>(call);
        return 0;
    }

    /// The folder of the file at `path` was synced, by the engine or by the program.
    virtual void folder_synced(const std::string& path) { static_cast<void>(path); }

    /// The program has given a file a second name.
    virtual void linked(const std::string& from, const std::string& to)
    {
        static_cast<void>(from);
        static_cast<void>(to);
    }

    /// The program has removed a name.
    virtual void unlinked(const std::string& path) { static_cast<void>(path); }
};

} // namespace cuedrill::torture
