#include "keep/draft_file.h"

#include "app/base/paths.h"
#include "common/errors.h"
#include "exchange/question_text.h"
#include "exchange/text_decoding.h"
#include "keep/removed_entry.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <utility>

namespace cuedrill::keep {
namespace {

constexpr std::string_view name_start = "draft-";
constexpr std::string_view name_end = ".txt";
constexpr std::string_view lock_end = ".lock";

/// More than there are programs at a time.
constexpr int most_drafts = 100;

/// In bytes. What is typed or pasted into a record is far shorter.
constexpr std::uint64_t longest_draft = 64ULL * 1024 * 1024;

constexpr std::chrono::milliseconds no_wait{0};

/// "draft-1" of "draft-1.txt"; nothing for a name that this program does not give.
std::optional<std::string> stem_of(std::string_view name)
{
    if (!name.starts_with(name_start) || !name.ends_with(name_end) ||
        name.size() <= name_start.size() + name_end.size())
        return std::nullopt;
    const std::string_view stem = name.substr(0, name.size() - name_end.size());
    if (stem.find_first_not_of("0123456789", name_start.size()) != std::string_view::npos)
        return std::nullopt;
    return std::string(stem);
}

std::string read_all(platform::Files& files, const std::string& path)
{
    constexpr std::size_t piece = 65536;
    const auto file = files.begin_reading(path, longest_draft);
    std::string all;
    for (std::string read = file->read(piece); !read.empty(); read = file->read(piece))
        all += read;
    return all;
}

/// The entry in a draft; nothing if the file is none.
std::optional<std::string> entry_in(const std::string& bytes)
{
    const std::string begin = std::string(exchange::utf8_mark).append(exchange::comment_start);
    if (!bytes.starts_with(begin) || !bytes.ends_with(entry_end))
        return std::nullopt;
    return bytes.substr(exchange::utf8_mark.size());
}

} // namespace

void DraftFile::write(std::string_view entry)
{
    if (!draft_)
        draft_ = std::make_unique<Draft>(new_draft());
    const auto replacement = files_.begin_replacement(draft_->path);
    replacement->write(exchange::utf8_mark);
    replacement->write(entry);
    replacement->finish();
}

DraftFile::Draft DraftFile::new_draft()
{
    files_.create_folder(folder_);
    for (int number = 1; number <= most_drafts; ++number) {
        const std::string stem = app::join_path(folder_, std::string(name_start) + std::to_string(number));
        Draft draft{.path = stem + std::string(name_end), .lock_path = stem + std::string(lock_end), .hold = {}};
        draft.hold = files_.hold(draft.lock_path, no_wait);
        if (draft.hold && !draft.hold->is_sure())
            throw common::Error("Cannot lock " + draft.lock_path + ": the file system has no locks.");
        if (draft.hold && !files_.exists(draft.path))
            return draft;
    }
    throw common::Error("Cannot write a draft in " + folder_ + ": there are too many of them.");
}

void DraftFile::remove()
{
    if (!draft_)
        return;
    files_.remove(draft_->path);
    files_.remove(draft_->lock_path);
    draft_.reset();
}

void DraftFile::leave()
{
    if (draft_)
        left_.push_back(std::move(draft_));
}

LeftDrafts DraftFile::move_left_drafts(RemovedFile& removed)
{
    LeftDrafts result;
    const auto note = [&result](auto action) {
        try {
            action();
        } catch (const common::Error& error) {
            result.failures.emplace_back(error.what());
        }
    };
    if (!files_.is_folder(folder_))
        return result;
    note([&] {
        for (const std::string& name : files_.names_in(folder_))
            note([&] { result.kept += move_left_draft(name, removed, result.failures) ? 1 : 0; });
    });
    return result;
}

/// @return whether the draft is in "removed.txt" now. It is not if its process still runs or nobody can tell, or if the
/// file is no draft.
/// @throws common::Error
bool DraftFile::move_left_draft(const std::string& name, RemovedFile& removed, std::vector<std::string>& failures)
{
    const std::optional<std::string> stem = stem_of(name);
    if (!stem)
        return false;
    const std::string path = app::join_path(folder_, name);
    const std::string lock_path = app::join_path(folder_, *stem + std::string(lock_end));
    const auto hold = files_.hold(lock_path, no_wait);
    // Another program that starts may have moved it before the lock was free.
    if (!hold || !hold->is_sure() || !files_.exists(path))
        return false;
    const std::optional<std::string> entry = entry_in(read_all(files_, path));
    if (!entry)
        return false;
    if (std::string unrenamed = removed.append(*entry); !unrenamed.empty())
        failures.push_back(std::move(unrenamed));
    // If the program ends here, the next start appends the draft once more.
    files_.remove(path);
    files_.remove(lock_path);
    return true;
}

} // namespace cuedrill::keep
