#include "keep/history_file.h"

#include "app/base/paths.h"
#include "common/errors.h"
#include "keep/copy_names.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <utility>

namespace cuedrill::keep {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t piece_size = 65536;

/// One for the whole folder, because `adopt_history` changes two histories.
constexpr const char* lock_name = "history.lock";

/// How long an adoption waits for an append, and the last append for an adoption.
constexpr std::chrono::milliseconds longest_wait = 1s;

std::unique_ptr<platform::FileHold> hold(platform::Files& files, const std::string& folder,
                                         std::chrono::milliseconds patience)
{
    return files.hold(app::join_path(folder, lock_name), patience);
}

[[noreturn]] void fail_as_held(const std::string& path)
{
    throw common::Error("Cannot write " + path + ": another program is writing it.");
}

/// A line with the time by which it is put in order.
struct TimedLine {
    common::DateTime time;
    std::string text;
};

std::vector<TimedLine> timed_lines(const platform::Files& files, const std::string& path)
{
    std::vector<TimedLine> lines;
    read_history(files, path, [&lines](const HistoryLine& line) {
        const common::DateTime before = lines.empty() ? common::DateTime() : lines.back().time;
        lines.push_back({line.event ? line.event->time : before, std::string(line.text)});
    });
    return lines;
}

/// Removes those of `lines` that stand in `others` already, each as often as it stands there.
void remove_known(std::vector<TimedLine>& lines, const std::vector<TimedLine>& others)
{
    std::map<std::string_view, int> known;
    for (const TimedLine& line : others)
        ++known[line.text];
    std::erase_if(lines, [&known](const TimedLine& line) {
        const auto found = known.find(line.text);
        return found != known.end() && found->second-- > 0;
    });
}

} // namespace

std::string history_path(const platform::Folders& folders, const std::string& data_folder,
                         const std::string& course_path)
{
    return app::join_path(app::join_path(data_folder, "history"), folder_name(folders.canonical(course_path)) + ".csv");
}

HistoryFile::HistoryFile(platform::Files& files, std::string path)
    : files_(files), path_(std::move(path)), folder_(app::dir_of(path_))
{
}

void HistoryFile::append(const HistoryEvent& event)
{
    append(event, 0ms, false);
}

void HistoryFile::append_last(const HistoryEvent& event)
{
    append(event, longest_wait, true);
}

void HistoryFile::append(const HistoryEvent& event, std::chrono::milliseconds patience, bool last)
{
    unwritten_.append(to_line(event)).append("\n");
    std::string lines = std::exchange(unwritten_, {});
    // It may be gone after an error, so only an append without one remembers it.
    if (!std::exchange(has_folder_, false))
        files_.create_folder(folder_);
    if (const auto held = hold(files_, folder_, patience))
        files_.append_lines(path_, history_header() + "\n", lines);
    else if (last)
        fail_as_held(path_);
    else
        unwritten_ = std::move(lines);
    has_folder_ = true;
}

void read_history(const platform::Files& files, const std::string& path,
                  const std::function<void(const HistoryLine&)>& visit)
{
    const auto reading = files.begin_reading(path, std::numeric_limits<std::uint64_t>::max());
    std::int64_t place = 0;
    const auto take = [&](std::string_view text) {
        ++place;
        // Two programs that create the file on a file system without locks may each write a header.
        if (!text.empty() && text != history_header())
            visit({.place = place, .text = text, .event = from_line(text)});
    };
    std::string rest;
    for (std::string piece = reading->read(piece_size); !piece.empty(); piece = reading->read(piece_size)) {
        rest += piece;
        std::size_t begin = 0;
        for (std::size_t end = rest.find('\n'); end != std::string::npos; end = rest.find('\n', begin)) {
            take(std::string_view(rest).substr(begin, end - begin));
            begin = end + 1;
        }
        rest.erase(0, begin);
    }
    if (!rest.empty())
        take(rest);
}

History read_history(const platform::Files& files, const std::string& path)
{
    History history;
    read_history(files, path, [&history](const HistoryLine& line) {
        if (line.event)
            history.events.push_back(*line.event);
        else
            ++history.unreadable;
    });
    return history;
}

std::int64_t adopt_history(platform::Files& files, const std::string& from, const std::string& to)
{
    const auto held = hold(files, app::dir_of(to), longest_wait);
    if (!held)
        fail_as_held(to);
    std::vector<TimedLine> lines = timed_lines(files, from);
    if (!files.exists(to)) {
        files.rename_to_free_name(from, to);
        return static_cast<std::int64_t>(lines.size());
    }
    const std::vector<TimedLine> present = timed_lines(files, to);
    remove_known(lines, present);
    const auto adopted = static_cast<std::int64_t>(lines.size());
    std::copy(present.begin(), present.end(), std::back_inserter(lines));
    std::stable_sort(lines.begin(), lines.end(),
                     [](const TimedLine& a, const TimedLine& b) { return a.time < b.time; });
    const auto replacement = files.begin_replacement(to);
    replacement->write(history_header() + "\n");
    for (const TimedLine& line : lines)
        replacement->write(line.text + "\n");
    replacement->finish();
    files.remove(from);
    return adopted;
}

} // namespace cuedrill::keep
