#pragma once

#include "platform/files.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::fakes {

/// A file system in memory: files with their bytes, folders, and links. A file does not need a folder.
class FakeFiles : public platform::Files {
public:
    std::map<std::string, std::string> files;
    std::set<std::string> folders;
    std::set<std::string> read_only_folders; ///< members of `folders` in which no file can be created
    std::map<std::string, std::string> links;
    std::string working_folder = "/home/anna";
    /// Text of the error that the function throws; empty for success.
    std::string read_failure;
    std::string append_failure;
    std::string create_folder_failure;
    std::string replacement_failure; ///< thrown when a replacement begins
    std::string write_failure;       ///< thrown when a replacement is written to
    std::string finish_failure;
    std::string change_folder_failure;
    std::string durable_append_failure;
    std::string line_append_failure;
    std::string rename_failure;
    std::string remove_failure;
    std::string names_failure;
    std::string hold_failure;
    std::string changed_to; ///< the working folder set last

    std::set<std::string> held;           ///< by this program
    std::set<std::string> held_elsewhere; ///< by another program
    bool has_locks = true;                ///< of the file system

    std::vector<std::string> journal; ///< of durable appends, renamings and removals, in their order

    [[nodiscard]] bool exists(const std::string& path) const override;
    [[nodiscard]] bool is_regular_file(const std::string& path) const override;
    [[nodiscard]] bool is_folder(const std::string& path) const override;
    [[nodiscard]] bool is_same_file(const std::string& a, const std::string& b) const override;
    [[nodiscard]] std::string absolute(const std::string& path) const override;
    [[nodiscard]] std::unique_ptr<platform::FileReading> begin_reading(const std::string& path,
                                                                       std::uint64_t longest) const override;
    bool append_below(const std::string& path, std::uint64_t limit, std::string_view bytes) override;
    [[nodiscard]] std::unique_ptr<platform::Replacement> begin_replacement(const std::string& path) override;
    void change_folder(const std::string& path) override;
    [[nodiscard]] bool is_writable_folder(const std::string& path) const override;
    void create_folder(const std::string& path) override;
    void append_durably(const std::string& path, std::string_view bytes) override;
    void append_lines(const std::string& path, std::string_view first_line, std::string_view lines) override;
    void rename_to_free_name(const std::string& from, const std::string& to) override;
    void remove(const std::string& path) override;
    [[nodiscard]] std::vector<std::string> names_in(const std::string& folder) const override;
    [[nodiscard]] std::unique_ptr<platform::FileHold> hold(const std::string& path,
                                                           std::chrono::milliseconds patience) override;

private:
    [[nodiscard]] std::string resolve(const std::string& path) const;
};

} // namespace cuedrill::fakes
