#pragma once

#include <string>
#include <sys/stat.h>

namespace cuedrill::platform::sqlite {

/// A file of a name of its own in a folder, removed with its journal when the object goes. While the object lives the
/// file is locked, which tells others of this program's that somebody holds it.
class TemporaryFile {
public:
    enum class Start {
        empty,      ///< an empty file, which is held
        only_a_name ///< the caller creates the file, and then calls `hold`
    };

    static constexpr mode_t usual_mode = 0666;   ///< less what the user's mask takes away
    static constexpr mode_t private_mode = 0600; ///< for this user only

    /// Also removes the files of this kind in the folder that nobody holds: what a program that was ended by force has
    /// left behind.
    /// @param mode the permissions of the empty file.
    /// @throws DatabaseError when it cannot be created.
    explicit TemporaryFile(const std::string& folder, Start start = Start::empty, mode_t mode = usual_mode);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    [[nodiscard]] const std::string& path() const { return path_; }

    /// Locks the file that the caller has created.
    /// @throws DatabaseError when it is gone again, or somebody else is just removing it.
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

/// The calls of the system by which a file gets its name; each returns 0, or -1 with errno.
struct NamingCalls {
    int (*link)(const char* from, const char* to);
    int (*rename_no_replace)(const char* from, const char* to);
    int (*sync_folder)(const char* folder);

    [[nodiscard]] static NamingCalls of_system();
};

/// Gives the complete file `from` the name `to` in the same folder, durably and never over something of that name.
/// `from` is gone afterwards. A folder that does not reach the disk is no failure: the file has its name then.
/// @throws DatabaseError (exists) when the name is taken, or for what the system reports; then `from` is still there.
void give_name(const std::string& from, const std::string& to, const NamingCalls& calls = NamingCalls::of_system());

/// A file that has just been given its name. It is removed when the object goes, unless it is kept, or another file has
/// the name by then, or somebody has written to it.
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
