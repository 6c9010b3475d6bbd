#pragma once

#include "fakes/course_builder.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_dialog_host.h"
#include "fakes/fake_f_msgbox.h"
#include "fakes/fake_form1.h"
#include "fakes/fake_random.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_shell.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "platform/system/system_files.h"
#include "program/logic.h"

#include <algorithm>
#include <exception>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

namespace cuedrill::drill {

using namespace std::chrono_literals;

/// The whole logic of the program, wired as the program wires it, on a real course and a window without a toolkit.
/// Tests use the controls as the user does; what a handler throws is treated as the program's event guard does.
class DrillFixture : public testing::Test {
protected:
    /// The course has three questions, asked in this order: "France?" of level 2, tested a day ago; "Italy?" of level
    /// 0, tested an hour ago; "Spain?", never tested. Two of them count as not passed.
    void describe_three_questions()
    {
        builder.question("France?", "Paris").level(2).attempts(4).fails(1).tested_ago(24h);
        builder.question("Italy?", "Rome").level(0).attempts(3).fails(3).tested_ago(1h);
        builder.question("Spain?", "Madrid");
    }

    /// Writes the course that `builder` describes, and starts the program on it.
    void start()
    {
        path = builder.write(folder);
        make_program();
        user([this] { started = logic->start.run(path); });
        ASSERT_TRUE(started);
    }

    void start_with_three_questions()
    {
        describe_three_questions();
        start();
    }

    void make_program()
    {
        logic = std::make_unique<program::Logic>(program::LogicPlatform{.form1 = form1.controls,
                                                                        .f_msgbox = f_msgbox.controls,
                                                                        .form2 = form2,
                                                                        .desktop = desktop,
                                                                        .settings = settings_store,
                                                                        .shell = shell,
                                                                        .clock = clock,
                                                                        .files = files,
                                                                        .random = random,
                                                                        .text_compare = engine.text_compare,
                                                                        .database = database,
                                                                        .program_folder = folder.path().string(),
                                                                        .web_page = "https://example.org/cuedrill"});
    }

    /// Runs what the user does.
    template <class Action>
    void user(Action action)
    {
        try {
            action();
        } catch (const common::ProgramEnded&) {
            ended = true;
        } catch (const std::exception& error) {
            logic->error_report.report(error);
        }
    }

    void yes()
    {
        user([this] { form1.bot_yes.click(); });
    }
    void no()
    {
        user([this] { form1.bot_no.click(); });
    }
    void ignore()
    {
        user([this] { form1.bot_other.click(); });
    }
    void choose(std::string_view menu_entry)
    {
        user([&] { entry(menu_entry).click(); });
    }
    /// Returns whether the window swallowed the key.
    template <class... Press>
    bool press(const Press&... key)
    {
        bool swallowed = false;
        clock.steady_seconds_more += 1;
        user([&] { swallowed = form1.window.press(key...); });
        return swallowed;
    }
    /// Presses a key in the answer box.
    void press_in_answer(const platform::KeyPress& key)
    {
        clock.steady_seconds_more += 1;
        user([&] { form1.press_in(form1.Text_a, key); });
    }
    void press_in_answer(const char* character)
    {
        press_in_answer({.key = platform::Key::character, .character = character});
    }
    void enter_in_answer() { press_in_answer({.key = platform::Key::enter}); }
    /// Types into the answer box, behind what stands there.
    void type_answer(std::string_view text)
    {
        form1.Text_a.set_caret(common::code_points(form1.Text_a.text_value));
        user([&] { form1.type(form1.Text_a, text); });
    }
    /// Clicks the button of the toolbar with that number.
    void toolbar(int number)
    {
        user([&] { form1.toolbar(number).click(); });
    }

    [[nodiscard]] fakes::FakeMenuEntry& entry(std::string_view name) const { return form1.menu_bar.entry(name); }

    [[nodiscard]] std::string prompt() const { return form1.panel_dialog.caption_value; }
    [[nodiscard]] std::string question() const { return form1.Text_q.text_value; }
    [[nodiscard]] std::string answer() const { return form1.Text_a.text_value; }
    [[nodiscard]] std::string status() const { return form1.P_status.caption_value; }

    /// The record as another program would read it from the file now.
    [[nodiscard]] fakes::QaRow stored(std::int64_t cnt) const
    {
        for (const fakes::QaRow& row : fakes::read_course(path).qa) {
            if (row.cnt == cnt)
                return row;
        }
        ADD_FAILURE() << "no record " << cnt;
        return {};
    }

    /// The places in the journal where an entry stands.
    [[nodiscard]] std::ptrdiff_t place_of(const std::string& noted) const
    {
        const auto found = std::find(form1.journal.begin(), form1.journal.end(), noted);
        EXPECT_NE(found, form1.journal.end()) << noted << " is not in the journal";
        return found - form1.journal.begin();
    }
    [[nodiscard]] std::ptrdiff_t times_noted(const std::string& noted) const
    {
        return std::count(form1.journal.begin(), form1.journal.end(), noted);
    }

    static constexpr const char* nothing_mature = "No question is mature for being asked.";

    fakes::TempFolder folder;
    fakes::FakeClock clock;
    fakes::FakeRandom random;
    fakes::FakeDesktop desktop;
    fakes::FakeForm1 form1;
    fakes::FakeDialogHost form2;
    fakes::FakeFMsgbox f_msgbox;
    fakes::FakeShell shell;
    fakes::FakeSettings settings_store;
    platform::system::SystemFiles files;
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};
    fakes::CourseBuilder builder;

    std::string path; ///< of the course
    bool started = false;
    bool ended = false; ///< the program has ended

    std::unique_ptr<program::Logic> logic;
};

} // namespace cuedrill::drill
