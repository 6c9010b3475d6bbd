#include "fakes/fake_files.h"

#include "common/errors.h"

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

std::string FakeFiles::resolve(const std::string& path) const
{
    const auto link = links.find(path);
    return link == links.end() ? path : link->second;
}

} // namespace cuedrill::fakes
