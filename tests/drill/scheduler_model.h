#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::drill {

/// A second implementation of the drill's rules for comparison, as simple as possible and without a database: it works
/// on lists in memory and whole seconds. It shares no code with the program.
class SchedulerModel {
public:
    using Seconds = std::int64_t;

    struct Side {
        std::optional<int> attempts{};
        std::optional<int> fails{};
        std::optional<int> level{};
        std::optional<Seconds> tested{};
        std::optional<Seconds> shown{};
    };
    struct Record {
        int cnt = 0;
        std::array<Side, 2> sides{}; ///< straight, then inverted
    };
    struct Verdict {
        int cnt = 0;
        int old_level = 0;
    };
    struct Due {
        Seconds at = 0;
        std::int64_t by_end_of_day = 0;
    };

    static constexpr Seconds hour = 3600;
    static constexpr Seconds day = 24 * hour;
    static constexpr Seconds unanswered = 8;
    static constexpr std::array<Seconds, 10> dead_times{8,       5 * 60,   hour,     12 * hour, 2 * day,
                                                        7 * day, 20 * day, 60 * day, 120 * day, 365 * day};

    std::vector<Record> records; ///< ordered by record number
    int target = 5;
    bool inverted = false;
    bool random_mode = false;
    int current = 0;
    int previous = 0;
    int score_today = 0;
    bool all_passed_announced = false;
    std::optional<Verdict> last_verdict;
    std::optional<int> marked; ///< level panel
    std::string status;        ///< text of the last verdict in the status line
    std::vector<std::string> boxes;

    [[nodiscard]] Side& asked(Record& record) const { return record.sides.at(inverted ? 1 : 0); }
    [[nodiscard]] const Side& asked(const Record& record) const { return record.sides.at(inverted ? 1 : 0); }

    [[nodiscard]] Record& record(int cnt)
    {
        return *std::find_if(records.begin(), records.end(), [cnt](const Record& one) { return one.cnt == cnt; });
    }

    /// Numbers of the mature questions of a level, in the order in which they are asked.
    [[nodiscard]] std::vector<int> mature(int level, bool tested_only, Seconds now) const
    {
        std::vector<const Record*> found;
        for (const Record& record : records) {
            const Side& side = asked(record);
            const bool of_level = side.level == level || (!side.level && level == 0 && !tested_only);
            const bool rested =
                side.tested ? *side.tested + dead_times.at(static_cast<std::size_t>(level)) < now : !tested_only;
            if (of_level && rested && not_just_shown(side, now))
                found.push_back(&record);
        }
        std::stable_sort(found.begin(), found.end(), [this](const Record* one, const Record* other) {
            const Side& a = asked(*one);
            const Side& b = asked(*other);
            if (a.level != b.level)
                return a.level > b.level; // a missing level sorts below every level
            return a.tested < b.tested;   // a missing date sorts before every date
        });
        std::vector<int> numbers;
        for (const Record* record : found)
            numbers.push_back(record->cnt);
        return numbers;
    }

    /// @param chance random number from 0 to below 1.
    void next_question(Seconds now, double chance)
    {
        if (records.empty()) {
            boxes.emplace_back("There are no questions in the database.");
            return;
        }
        previous = current;
        for (int level = target - 1; level >= 0; --level) {
            for (const bool tested_only : {true, false}) {
                if (tested_only && level > 0)
                    continue;
                const std::vector<int> found = mature(level, tested_only, now);
                if (found.empty())
                    continue;
                const auto place =
                    random_mode ? static_cast<std::size_t>(chance * static_cast<double>(found.size())) : 0;
                if (found.at(place) == previous)
                    continue;
                current = found.at(place);
                return;
            }
        }
        current = 0;
        boxes.emplace_back("No question is mature for being asked.");
    }

    void succeed(Seconds now)
    {
        Side& side = asked(record(current));
        const bool was_tested = side.tested.has_value();
        const Seconds elapsed = was_tested ? now - *side.tested : 2 * day / 5;
        int proven = 0;
        for (std::size_t level = 0; level < dead_times.size(); ++level) {
            if (elapsed >= dead_times.at(level))
                proven = static_cast<int>(level) + 1;
        }
        const int old_level = side.level.value_or(0);
        side.level = std::max(old_level, proven);
        status = "score of previous question not increased due to precocity of question";
        if (*side.level > old_level)
            status = "score of previous question increased from " + std::to_string(old_level) + " to " +
                     std::to_string(*side.level) + " (elapsed " + hundredths_of_days(elapsed) + " days)";
        side.attempts = side.attempts.value_or(0) + 1;
        side.tested = side.shown = now;
        if (*side.level > 1)
            ++score_today;
        marked = std::min(*side.level, 5);
        last_verdict = {current, old_level};
        if (unpassed() == 0 && !all_passed_announced) {
            boxes.push_back("Congratulations! You have passed level " + std::to_string(target) + " for all questions.");
            all_passed_announced = true;
        }
    }

    void fail(Seconds now)
    {
        Side& side = asked(record(current));
        const int old_level = side.level.value_or(0);
        status.clear();
        side.level = 0;
        side.fails = side.fails.value_or(0) + 1;
        side.attempts = side.attempts.value_or(0) + 1;
        side.tested = side.shown = now;
        if (old_level > 0)
            --score_today;
        marked = 0;
        last_verdict = {current, old_level};
    }

    void stamp(Seconds now)
    {
        if (current != 0)
            asked(record(current)).shown = now;
    }

    void undo()
    {
        if (!last_verdict)
            return;
        current = last_verdict->cnt;
        asked(record(current)).level = last_verdict->old_level;
    }

    void reset_all()
    {
        for (Record& record : records)
            record.sides.fill({.attempts = 0, .fails = 0, .level = 0, .tested = {}, .shown = {}});
        score_today = 0;
        last_verdict.reset();
    }

    void change_target(int level)
    {
        if (level > target)
            all_passed_announced = false;
        target = level;
    }

    void invert()
    {
        inverted = !inverted;
        last_verdict.reset();
    }

    /// Removes a deleted record.
    void remove(int cnt)
    {
        std::erase_if(records, [cnt](const Record& one) { return one.cnt == cnt; });
        if (last_verdict && last_verdict->cnt == cnt)
            last_verdict.reset();
        if (current == cnt)
            current = 0;
    }

    /// The counts of the six panels; the last one counts its level and all above.
    [[nodiscard]] std::vector<std::int64_t> counts() const
    {
        std::vector<std::int64_t> panels(6);
        for (const Record& record : records) {
            if (const auto level = asked(record).level)
                ++panels.at(static_cast<std::size_t>(std::min(*level, 5)));
        }
        return panels;
    }

    [[nodiscard]] std::int64_t unpassed() const
    {
        const std::vector<std::int64_t> panels = counts();
        std::int64_t sum = 0;
        for (std::size_t level = 0; level < panels.size(); ++level)
            sum += static_cast<int>(level) < target ? panels[level] : 0;
        return sum;
    }

    /// Questions never tested are not counted.
    [[nodiscard]] std::int64_t mature_count(Seconds now) const
    {
        return std::count_if(records.begin(), records.end(), [&](const Record& record) {
            const Side& side = asked(record);
            return side.level && side.tested && can_be_asked(record, now);
        });
    }

    /// The earliest time, from `now` on, at which a question can be asked; std::nullopt if there is none.
    [[nodiscard]] std::optional<Due> next_due(Seconds now) const
    {
        std::optional<Seconds> first;
        for (const Record& record : records) {
            const auto at = first_second(record, now);
            if (at && (!first || *at < *first))
                first = at;
        }
        if (!first)
            return std::nullopt;
        const Seconds end = *first - *first % day + day - 1;
        return Due{*first, std::count_if(records.begin(), records.end(),
                                         [&](const Record& record) { return can_be_asked(record, end); })};
    }

private:
    static bool not_just_shown(const Side& side, Seconds now) { return !side.shown || *side.shown + unanswered < now; }

    [[nodiscard]] bool can_be_asked(const Record& record, Seconds now) const
    {
        const Side& side = asked(record);
        const int level = side.level.value_or(0);
        return level < target && not_just_shown(side, now) &&
               (!side.tested || *side.tested + dead_times.at(static_cast<std::size_t>(level)) < now);
    }

    [[nodiscard]] std::optional<Seconds> first_second(const Record& record, Seconds now) const
    {
        const Side& side = asked(record);
        std::vector<Seconds> moments{now};
        if (side.shown)
            moments.push_back(*side.shown + unanswered + 1);
        if (side.tested && side.level.value_or(0) < target)
            moments.push_back(*side.tested + dead_times.at(static_cast<std::size_t>(side.level.value_or(0))) + 1);
        std::sort(moments.begin(), moments.end());
        for (const Seconds moment : moments) {
            if (moment >= now && can_be_asked(record, moment))
                return moment;
        }
        return std::nullopt;
    }

    /// Days with two decimals, halves rounded up.
    static std::string hundredths_of_days(Seconds elapsed)
    {
        const Seconds hundredths = (elapsed * 200 + day) / (2 * day);
        const std::string decimals = std::to_string(hundredths % 100);
        return std::to_string(hundredths / 100) + (decimals.size() == 1 ? ".0" : ".") + decimals;
    }
};

} // namespace cuedrill::drill
