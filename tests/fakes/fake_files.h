#pragma once

#include "common/errors.h"
#include "platform/files.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace cuedrill::fakes {

/// A file system in memory: files with their bytes, folders, and names that lead to other names. A file needs no
/// folder.
class FakeFiles : public platform::Files {
public:
    std::map<std::string, std::string> files;
    std::set<std::string> folders;
    std::set<std::string> read_only_folders; ///< those of `folders` in which nothing may be created
    std::map<std::string, std::string> links;
    std::string working_folder = "/home/anna";
    /// Words of the error that the function throws; empty for success.
    std::string read_failure;
    std::string append_failure;
    std::string create_folder_failure;
    std::string replacement_failure; ///< of the beginning
    std::string write_failure;       ///< of what is written to a replacement
    std::string finish_failure;
    std::string change_folder_failure;
    std::string changed_to; ///< the folder that was made the working folder last

    [[nodiscard]] bool exists(const std::string& path) const override
    {
        const std::string target = resolve(path);
        return files.contains(target) || folders.contains(target);
    }

    [[nodiscard]] bool is_regular_file(const std::string& path) const override { return files.contains(resolve(path)); }

    [[nodiscard]] bool is_folder(const std::string& path) const override { return folders.contains(resolve(path)); }

    [[nodiscard]] bool is_same_file(const std::string& a, const std::string& b) const override
    {
        return exists(a) && resolve(a) == resolve(b);
    }

    [[nodiscard]] std::string absolute(const std::string& path) const override
    {
        return path.empty() || path.starts_with('/') ? path : working_folder + "/" + path;
    }

    [[nodiscard]] std::unique_ptr<platform::FileReading> begin_reading(const std::string& path,
                                                                       std::uint64_t longest) const override
    {
        const auto file = files.find(resolve(path));
        if (!read_failure.empty())
            throw common::Error(read_failure);
        if (file == files.end())
            throw common::Error(path + ": No such file or directory");
        if (file->second.size() > longest)
            throw common::Error(path + ": the file is too large");
        return std::make_unique<FakeReading>(file->second);
    }

    bool append_below(const std::string& path, std::uint64_t limit, std::string_view bytes) override
    {
        if (!append_failure.empty())
            throw common::Error(append_failure);
        std::string& contents = files[resolve(path)];
        if (contents.size() >= limit)
            return false;
        contents.append(bytes);
        return true;
    }

    [[nodiscard]] std::unique_ptr<platform::Replacement> begin_replacement(const std::string& path) override
    {
        if (!replacement_failure.empty())
            throw common::Error(replacement_failure);
        return std::make_unique<FakeReplacement>(*this, resolve(path));
    }

    void change_folder(const std::string& path) override
    {
        if (!change_folder_failure.empty())
            throw common::Error(change_folder_failure);
        changed_to = path;
    }

    [[nodiscard]] bool is_writable_folder(const std::string& path) const override
    {
        const std::string target = resolve(path);
        return folders.contains(target) && !read_only_folders.contains(target);
    }

    void create_folder(const std::string& path) override
    {
        if (!create_folder_failure.empty())
            throw common::Error(create_folder_failure);
        folders.insert(path);
    }

private:
    class FakeReading : public platform::FileReading {
    public:
        explicit FakeReading(std::string bytes) : m_bytes(std::move(bytes)) {}

        [[nodiscard]] std::uint64_t size() const override { return m_bytes.size(); }
        [[nodiscard]] std::string read(std::size_t most) override
        {
            std::string piece = m_bytes.substr(m_at, most);
            m_at += piece.size();
            return piece;
        }
        void rewind() override { m_at = 0; }

    private:
        std::string m_bytes;
        std::size_t m_at = 0;
    };

    /// Written to the file of that name with ".cuedrill-part" behind it.
    class FakeReplacement : public platform::Replacement {
    public:
        FakeReplacement(FakeFiles& files, std::string target)
            : m_files(files), m_target(std::move(target)), m_path(m_target + ".cuedrill-part")
        {
            m_files.files[m_path].clear();
        }

        [[nodiscard]] const std::string& path() const override { return m_path; }
        void write(std::string_view bytes) override
        {
            if (!m_files.write_failure.empty())
                throw common::Error(m_files.write_failure);
            m_files.files[m_path].append(bytes);
        }
        void restart() override { m_files.files[m_path].clear(); }
        void finish() override
        {
            if (!m_files.finish_failure.empty())
                throw common::Error(m_files.finish_failure);
            m_files.files[m_target] = m_files.files[m_path];
            m_files.files.erase(m_path);
        }

    private:
        FakeFiles& m_files;
        std::string m_target;
        std::string m_path;
    };

    [[nodiscard]] std::string resolve(const std::string& path) const
    {
        const auto link = links.find(path);
        return link == links.end() ? path : link->second;
    }
};

} // namespace cuedrill::fakes
