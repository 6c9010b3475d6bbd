#pragma once

#include "platform/files.h"

namespace cuedrill::platform::system {

/// The files of the machine. Reading, appending and replacing reject everything but regular files, so that a pipe or
/// device never blocks the program.
class SystemFiles : public Files {
public:
    [[nodiscard]] bool exists(const std::string& path) const override;
    [[nodiscard]] bool is_regular_file(const std::string& path) const override;
    [[nodiscard]] bool is_folder(const std::string& path) const override;
    [[nodiscard]] bool is_same_file(const std::string& a, const std::string& b) const override;
    [[nodiscard]] std::string absolute(const std::string& path) const override;
    [[nodiscard]] std::unique_ptr<FileReading> begin_reading(const std::string& path,
                                                             std::uint64_t longest) const override;
    bool append_below(const std::string& path, std::uint64_t limit, std::string_view bytes) override;
    [[nodiscard]] std::unique_ptr<Replacement> begin_replacement(const std::string& path) override;
    void change_folder(const std::string& path) override;
    [[nodiscard]] bool is_writable_folder(const std::string& path) const override;
    void create_folder(const std::string& path) override;
    void append_durably(const std::string& path, std::string_view bytes) override;
    void append_lines(const std::string& path, std::string_view first_line, std::string_view lines) override;
    void rename_to_free_name(const std::string& from, const std::string& to) override;
    void remove(const std::string& path) override;
    [[nodiscard]] std::vector<std::string> names_in(const std::string& folder) const override;
    [[nodiscard]] std::unique_ptr<FileHold> hold(const std::string& path, std::chrono::milliseconds patience) override;
};

} // namespace cuedrill::platform::system
