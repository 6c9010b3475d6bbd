#pragma once

#include "drill/displays.h"
#include "store/course.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::fakes {

/// A question display that only remembers what was asked of it.
class FakeQuestionDisplay : public drill::QuestionDisplay {
public:
    int shows = 0;
    int answer_state_clears = 0;
    int question_clears = 0;
    store::Course* course = nullptr; ///< whose current record goes with the question
    int figure_refreshes = 0;
    bool question_on_display = false;
    /// Run by a show, after it was counted; may throw.
    std::function<void()> on_show;

    void show_question() override
    {
        ++shows;
        question_on_display = true;
        if (on_show)
            on_show();
    }
    void refresh_figures() override { ++figure_refreshes; }
    void clear_answer_state() override { ++answer_state_clears; }
    void withdraw_question() override
    {
        ++question_clears;
        if (course != nullptr)
            course->current_cnt = 0;
        question_on_display = false;
    }
};

/// A status line that keeps every text it was given.
class FakeStatusLine : public drill::StatusDisplay {
public:
    struct Text {
        std::string text;
        int seconds = 0;

        friend bool operator==(const Text&, const Text&) = default;
    };
    std::vector<Text> texts;

    void ShowStatus(std::string_view text, int seconds) override { texts.push_back({std::string(text), seconds}); }
};

/// Panels that hold what they were last given.
class FakeStatisticsPanels : public drill::StatisticsPanels {
public:
    struct Level {
        std::int64_t records = -1;
        std::int64_t share_of = -1;
        bool is_target = false;

        friend bool operator==(const Level&, const Level&) = default;
    };
    std::int64_t total = -1;
    std::array<Level, 6> levels{};
    std::int64_t unpassed = -1;
    std::optional<int> marked;
    std::optional<int> score;
    std::string open_time;
    std::string today;
    std::string ever;
    int option_repaints = 0;
    int target_repaints = 0;

    void show_total(std::int64_t records) override { total = records; }
    void show_level(int level, std::int64_t records, std::int64_t share_of, bool is_target) override
    {
        levels.at(static_cast<std::size_t>(level)) = {records, share_of, is_target};
    }
    void show_unpassed(std::int64_t records) override { unpassed = records; }
    void mark_level(int level) override { marked = level; }
    void show_score(common::Int16 new_score) override { score = new_score; }
    void show_work_time(std::string_view open, std::string_view of_today, std::string_view of_ever) override
    {
        open_time = open;
        today = of_today;
        ever = of_ever;
    }
    void show_options() override { ++option_repaints; }
    void show_target_level() override { ++target_repaints; }

    /// The numbers in the six level panels.
    [[nodiscard]] std::vector<std::int64_t> counts() const
    {
        std::vector<std::int64_t> numbers;
        for (const Level& level : levels)
            numbers.push_back(level.records);
        return numbers;
    }
};

} // namespace cuedrill::fakes
