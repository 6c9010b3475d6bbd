#pragma once

#include <string>
#include <sys/stat.h>

namespace cuedrill::platform::sqlite {

/// A temporary file with a unique name in a folder. The destructor removes it and its journal. It is locked until then,
/// which tells other instances of this program that it is in use.
class TemporaryFile {
public:
    enum class Start {
        empty,      ///< create an empty file and lock it
        only_a_name ///< choose a free name; the caller creates the file and then calls `hold`
    };

    static constexpr mode_t usual_mode = 0666;   ///< restricted by the umask
    static constexpr mode_t private_mode = 0600; ///< for this user only

    /// Also removes files of this kind in the folder that are not locked: a killed program has left them behind.
    /// @param mode permissions of the empty file.
    /// @throws DatabaseError if the file cannot be created.
    explicit TemporaryFile(const std::string& folder, Start start = Start::empty, mode_t mode = usual_mode);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    [[nodiscard]] const std::string& path() const { return path_; }

    /// Locks the file that the caller has created.
    /// @throws DatabaseError if it does not exist or another program is removing it.
    void hold();

    /// Waits until the contents are on the disk. Requires that the file is held.
    /// @throws DatabaseError
    void sync() const;

private:
    bool create(const std::string& path, mode_t mode);
    bool hold_opened();

    std::string path_;
    int descriptor_ = -1;
};

/// The system calls that give a file its name; tests replace them. Each returns 0, or -1 and sets errno.
struct NamingCalls {
    int (*link)(const char* from, const char* to);
    int (*rename_no_replace)(const char* from, const char* to);
    int (*sync_folder)(const char* folder);

    [[nodiscard]] static NamingCalls of_system();
};

/// Renames the complete file `from` to `to` in the same folder, durably, and never replaces anything. A failing sync of
/// the folder is ignored, because the file has its name by then.
/// @throws DatabaseError (exists) if the name is taken; otherwise for the error of the system. `from` still exists
/// then.
void give_name(const std::string& from, const std::string& to, const NamingCalls& calls = NamingCalls::of_system());

/// A file that has just been given its name. The destructor removes it unless `keep` was called, another file has the
/// name by then, or the file has been written to.
class GivenName {
public:
    explicit GivenName(std::string path);
    GivenName(const GivenName&) = delete;
    GivenName& operator=(const GivenName&) = delete;
    ~GivenName();

    void keep() noexcept { removes_ = false; }

private:
    std::string path_;
    struct stat given_ {};
    bool removes_;
};

} // namespace cuedrill::platform::sqlite
