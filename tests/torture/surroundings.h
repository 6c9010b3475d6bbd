#pragma once

#include "fakes/course_builder.h"
#include "fakes/temp_folder.h"
#include "torture/bounded_child.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::torture {

/// 15 November 2026, 12:00 UTC, as Unix time.
inline constexpr std::int64_t usual_clock = 1'794'744'000;

/// An ordinary user, for whom permissions count.
inline constexpr unsigned ordinary_user = 65534;

/// A folder with all that the program of one user has: "home", "config", "data", "run" and "courses".
class Household {
public:
    Household();

    [[nodiscard]] std::string file(const std::string& name) const { return folder_.file(name); }
    [[nodiscard]] std::string course() const { return file("courses/course.crs"); }

    /// Gives everything in it to the ordinary user, if this process is root's.
    void give_away() const;

    /// The text without what differs between two households.
    [[nodiscard]] std::string neutral(std::string text) const;

private:
    fakes::TempFolder folder_;
};

/// What surrounds the program.
struct Surroundings {
    std::map<std::string, std::optional<std::string>> variables{}; ///< of the environment; nothing for not set
    bool ordinary_user = false;                                    ///< not as root, even if this process is
    std::function<void()> prepare{};                               ///< in the child, before the program starts
};

/// What has come of a use of the program.
struct Use {
    std::string words;        ///< what the program has shown; neutral, without the lines about the surroundings
    std::string surroundings; ///< those lines
    std::string complaint;    ///< a crash, an endless loop, too much memory; empty for none
    std::optional<fakes::CourseContents> course; ///< nothing if there is none that can be read
    std::string exported;

    /// The lines that begin so.
    [[nodiscard]] std::vector<std::string> lines(std::string_view begin) const;
};

/// Has the program used in the household.
/// @param words of torture_user; "~" in them stands for the folder of the household.
[[nodiscard]] Use use(const Household& household, const std::vector<std::string>& words, const Surroundings& around);

/// The first line in which two texts differ, as words for a complaint; empty if they are the same.
[[nodiscard]] std::string difference(const std::string& expected, const std::string& found);

} // namespace cuedrill::torture
