#include "fakes/fake_files.h"

#include "common/errors.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace cuedrill::fakes {

namespace {

class FakeReading : public platform::FileReading {
public:
    explicit FakeReading(std::string bytes) : bytes_(std::move(bytes)) {}

    [[nodiscard]] std::uint64_t size() const override { return bytes_.size(); }
    [[nodiscard]] std::string read(std::size_t most) override
    {
        std::string piece = bytes_.substr(at_, most);
        at_ += piece.size();
        return piece;
    }
    void rewind() override { at_ = 0; }
    void go_to(std::uint64_t place) override
    {
        at_ = std::min<std::size_t>(static_cast<std::size_t>(place), bytes_.size());
    }

private:
    std::string bytes_;
    std::size_t at_ = 0;
};

/// Writes to the file with ".cuedrill-part" appended to its name.
class FakeReplacement : public platform::Replacement {
public:
    FakeReplacement(FakeFiles& files, std::string target)
        : files_(files), target_(std::move(target)), path_(target_ + ".cuedrill-part")
    {
        files_.files[path_].clear();
    }

    [[nodiscard]] const std::string& path() const override { return path_; }
    void write(std::string_view bytes) override
    {
        if (!files_.write_failure.empty())
            throw common::Error(files_.write_failure);
        files_.files[path_].append(bytes);
    }
    void restart() override { files_.files[path_].clear(); }
    void finish() override
    {
        if (!files_.finish_failure.empty())
            throw common::Error(files_.finish_failure);
        files_.files[target_] = files_.files[path_];
        files_.files.erase(path_);
    }

private:
    FakeFiles& files_;
    std::string target_;
    std::string path_;
};

class FakeHold : public platform::FileHold {
public:
    FakeHold(FakeFiles& files, std::string path) : files_(files), path_(std::move(path)) { files_.held.insert(path_); }
    ~FakeHold() override { files_.held.erase(path_); }

    [[nodiscard]] bool is_sure() const override { return files_.has_locks; }

private:
    FakeFiles& files_;
    std::string path_;
};

void fail_with(const std::string& failure)
{
    if (!failure.empty())
        throw common::Error(failure);
}

} // namespace

bool FakeFiles::exists(const std::string& path) const
{
    const std::string target = resolve(path);
    return files.contains(target) || folders.contains(target);
}

bool FakeFiles::is_regular_file(const std::string& path) const
{
    return files.contains(resolve(path));
}

bool FakeFiles::is_folder(const std::string& path) const
{
    return folders.contains(resolve(path));
}

bool FakeFiles::is_same_file(const std::string& a, const std::string& b) const
{
    return exists(a) && resolve(a) == resolve(b);
}

std::string FakeFiles::absolute(const std::string& path) const
{
    return path.empty() || path.starts_with('/') ? path : working_folder + "/" + path;
}

std::unique_ptr<platform::FileReading> FakeFiles::begin_reading(const std::string& path, std::uint64_t longest) const
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

bool FakeFiles::append_below(const std::string& path, std::uint64_t limit, std::string_view bytes)
{
    if (!append_failure.empty())
        throw common::Error(append_failure);
    std::string& contents = files[resolve(path)];
    if (contents.size() >= limit)
        return false;
    contents.append(bytes);
    return true;
}

std::unique_ptr<platform::Replacement> FakeFiles::begin_replacement(const std::string& path)
{
    if (!replacement_failure.empty())
        throw common::Error(replacement_failure);
    return std::make_unique<FakeReplacement>(*this, resolve(path));
}

void FakeFiles::change_folder(const std::string& path)
{
    if (!change_folder_failure.empty())
        throw common::Error(change_folder_failure);
    changed_to = path;
}

bool FakeFiles::is_writable_folder(const std::string& path) const
{
    const std::string target = resolve(path);
    return folders.contains(target) && !read_only_folders.contains(target);
}

void FakeFiles::create_folder(const std::string& path)
{
    if (!create_folder_failure.empty())
        throw common::Error(create_folder_failure);
    folders.insert(path);
}

void FakeFiles::append_durably(const std::string& path, std::string_view bytes)
{
    fail_with(durable_append_failure);
    files[resolve(path)].append(bytes);
    journal.push_back("append " + path);
}

void FakeFiles::append_lines(const std::string& path, std::string_view first_line, std::string_view lines)
{
    fail_with(line_append_failure);
    std::string& contents = files[resolve(path)];
    if (contents.empty())
        contents = first_line;
    else if (!contents.ends_with('\n'))
        contents += '\n';
    contents.append(lines);
}

void FakeFiles::rename_to_free_name(const std::string& from, const std::string& to)
{
    fail_with(rename_failure);
    const auto file = files.find(from);
    if (file == files.end() || exists(to))
        throw common::Error("Cannot rename " + from + ".");
    files[to] = file->second;
    files.erase(from);
    journal.push_back("rename " + from + " " + to);
}

void FakeFiles::remove(const std::string& path)
{
    fail_with(remove_failure);
    if (files.erase(path) != 0)
        journal.push_back("remove " + path);
}

std::vector<std::string> FakeFiles::names_in(const std::string& folder) const
{
    fail_with(names_failure);
    std::vector<std::string> names;
    for (const auto& file : files) {
        const std::size_t end = file.first.rfind('/');
        if (end != std::string::npos && file.first.substr(0, end) == folder)
            names.push_back(file.first.substr(end + 1));
    }
    return names;
}

std::unique_ptr<platform::FileHold> FakeFiles::hold(const std::string& path, std::chrono::milliseconds /*patience*/)
{
    fail_with(hold_failure);
    files.try_emplace(path);
    if (has_locks && (held.contains(path) || held_elsewhere.contains(path)))
        return nullptr;
    return std::make_unique<FakeHold>(*this, path);
}

std::string FakeFiles::resolve(const std::string& path) const
{
    const auto link = links.find(path);
    return link == links.end() ? path : link->second;
}

} // namespace cuedrill::fakes
