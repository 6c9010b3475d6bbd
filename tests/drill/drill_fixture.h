#pragma once

#include "app/base/settings.h"
#include "app/base/trace_log.h"
#include "app/start/start.h"
#include "bank/edit_flags.h"
#include "bank/record_bank.h"
#include "bank/record_lists.h"
#include "drill/drill_commands.h"
#include "drill/drill_state.h"
#include "drill/error_report.h"
#include "drill/main_menu.h"
#include "drill/main_window.h"
#include "exchange/question_export.h"
#include "exchange/question_import.h"
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
#include "scheduler/level_commands.h"
#include "scheduler/selection.h"
#include "support/agenda.h"
#include "support/big_box.h"
#include "support/documents.h"
#include "support/help.h"

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

    void make_program() { logic = std::make_unique<Logic>(*this); }

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

    struct Logic {
        explicit Logic(DrillFixture& fixture) : f(fixture)
        {
            window_ports.connect(main_window);
            main_window.attach();
            big_box.attach();
            commands.attach(menu);
        }

        DrillFixture& f;
        platform::Form1& form1 = f.form1.controls;
        const common::DateTime start_time = f.clock.now();
        const std::string program_folder = f.folder.path().string();

        app::TraceLog trace{f.files, f.clock, f.desktop, program_folder};
        app::Settings settings{f.settings_store, trace};

        MainWindowPorts window_ports{form1.window};
        store::Course course{f.database};
        store::CourseParamsStore params{course, f.clock};
        store::CourseTitle title{course, params, window_ports, f.desktop, f.engine.text_compare};
        store::CourseOpener opener{course,         params,
                                   window_ports,   {f.files, f.clock, f.desktop, f.form2, settings, trace},
                                   program_folder, start_time};

        MainMenu menu{form1.menu_bar};
        bank::EditFlags edit_flags;
        DrillState state;
        StatusLine status{form1.P_status, f.clock};
        ListStatus list_status{status};
        WindowLayout layout{form1, menu, course, edit_flags, state, status};
        Hints hints{form1, course, state, layout, f.random, f.engine.text_compare};
        QuestionView question_view{form1, course, state, status, layout, hints, f.clock};
        StatisticsView statistics_view{form1, menu, course};

        scheduler::DeadTimes dead_times;
        scheduler::EndOfProgram end_of_program{course, params, f.clock, trace};
        scheduler::Statistics statistics{course, params, statistics_view, f.clock, f.desktop, start_time};
        scheduler::Selection selection{course,        params,          dead_times,
                                       question_view, statistics_view, {f.clock, f.random, f.desktop}};
        scheduler::Scoring scoring{
            course,  params,    dead_times,    statistics, {question_view, status, statistics_view},
            f.clock, f.desktop, end_of_program};
        scheduler::LevelCommands levels{course, params, dead_times, statistics, statistics_view, f.desktop};

        bank::RecordBank bank{course, edit_flags, f.desktop};
        bank::RecordEditor editor{course,
                                  edit_flags,
                                  bank,
                                  window_ports,
                                  {f.desktop, f.engine.text_compare, question_view, statistics, scoring, selection}};
        bank::RecordLists lists{
            course, bank, window_ports, {f.desktop, f.engine.text_compare, list_status, editor, end_of_program}};

        support::BigBox big_box{f.f_msgbox.controls};
        support::Documents documents{f.files, f.shell, f.desktop};
        support::Agenda agenda{f.files, f.shell, f.desktop, program_folder};
        support::HelpCommands help{big_box, documents, f.desktop, "https://example.org/cuedrill"};

        exchange::QuestionImport question_import{
            course, bank, edit_flags, window_ports, status, {f.files, f.clock, f.desktop, f.engine.text_compare}};
        exchange::QuestionExport question_export{
            course, {f.files, f.clock, f.desktop, [this](const std::string& path) { documents.open_document(path); }}};

        KeyEcho echo{f.clock};
        QuestionDialog dialog{form1,     state,     question_view, status, layout,
                              f.desktop, selection, scoring,       editor, end_of_program};
        TypedAnswer typed_answer{
            form1,
            state,
            edit_flags,
            {question_view, dialog, status, hints, layout, echo, f.desktop, f.engine.text_compare}};
        AnswerAids aids{
            form1,
            course,
            state,
            {params, statistics, statistics_view, question_view, status, hints, layout, f.engine.text_compare}};
        Toolbar toolbar{form1, dialog, editor, aids};
        ContextHelp context_help{form1, f.desktop};
        WindowKeys keys{
            form1,
            state,
            {dialog, toolbar, editor, status, layout, echo, f.desktop, f.engine.text_compare, end_of_program}};
        MainWindow main_window{{form1,          f.desktop,    f.clock, trace,           course,        params,
                                title,          edit_flags,   editor,  lists,           statistics,    scoring,
                                end_of_program, state,        status,  statistics_view, question_view, layout,
                                dialog,         typed_answer, toolbar, context_help,    keys}};
        DrillCommands commands{
            {course,         params,       opener, title,           selection,       scoring,  levels,
             end_of_program, editor,       lists,  question_import, question_export, dialog,   aids,
             toolbar,        context_help, help,   agenda,          statistics_view, f.desktop}};
        ErrorReport error_report{course, f.desktop, trace};
        app::StartRoutine start{course, opener, dead_times, f.form2, f.files, trace};
    };
    std::unique_ptr<Logic> logic;
};

} // namespace cuedrill::drill
