#include "drill/drill_fixture.h"

#include "common/text.h"
#include "program/logic.h"

#include <algorithm>

namespace cuedrill::drill {

struct DrillFixture::Program {
    explicit Program(const program::LogicPlatform& platform) : logic(platform) {}

    program::Logic logic;
    const LogicParts parts{.course = logic.course,
                           .params = logic.params,
                           .edit_flags = logic.edit_flags,
                           .state = logic.state,
                           .status = logic.status,
                           .layout = logic.layout,
                           .display = logic.display,
                           .dead_times = logic.dead_times,
                           .end_of_program = logic.end_of_program,
                           .editor = logic.editor,
                           .last_list = logic.last_list,
                           .lists = logic.lists,
                           .dialog = logic.dialog,
                           .typed_answer = logic.typed_answer,
                           .aids = logic.aids,
                           .title = logic.title,
                           .main_window = logic.main_window,
                           .opener = logic.opener,
                           .copies = logic.copies,
                           .question_import = logic.question_import,
                           .error_report = logic.error_report,
                           .start = logic.start};
};

DrillFixture::DrillFixture() = default;

DrillFixture::~DrillFixture() = default;

void DrillFixture::describe_three_questions()
{
    builder.question("France?", "Paris").level(2).attempts(4).fails(1).tested_ago(24h);
    builder.question("Italy?", "Rome").level(0).attempts(3).fails(3).tested_ago(1h);
    builder.question("Spain?", "Madrid");
}

void DrillFixture::start()
{
    path = builder.write(folder);
    make_program();
    user([this] { started = logic->start.run(path); });
    ASSERT_TRUE(started);
}

void DrillFixture::start_with_three_questions()
{
    describe_three_questions();
    start();
}

void DrillFixture::make_program()
{
    program_ = std::make_unique<Program>(program::LogicPlatform{.form1 = form1.controls,
                                                                .f_msgbox = f_msgbox.controls,
                                                                .form2 = form2,
                                                                .desktop = desktop,
                                                                .settings = settings_store,
                                                                .shell = shell,
                                                                .clock = clock,
                                                                .files = files,
                                                                .open_courses = open_courses,
                                                                .folders = folders,
                                                                .random = random,
                                                                .text_compare = engine.text_compare,
                                                                .deck_tools = deck_adapters.tools(),
                                                                .database = database,
                                                                .sample_database = database,
                                                                .data_folder = data_folder,
                                                                .program_folder = folder.path().string(),
                                                                .sample_questions = sample_questions,
                                                                .documents_folder = documents_folder,
                                                                .web_page = web_page});
    logic = &program_->parts;
}

void DrillFixture::report(const std::exception& error)
{
    logic->error_report.report(error);
}

void DrillFixture::yes()
{
    user([this] { form1.bot_yes.click(); });
}

void DrillFixture::no()
{
    user([this] { form1.bot_no.click(); });
}

void DrillFixture::ignore()
{
    user([this] { form1.bot_other.click(); });
}

void DrillFixture::choose(std::string_view menu_entry)
{
    user([&] { entry(menu_entry).click(); });
}

bool DrillFixture::press(const platform::KeyPress& key)
{
    bool swallowed = false;
    clock.steady_seconds_more += 1;
    user([&] { swallowed = form1.window.press(key); });
    return swallowed;
}

bool DrillFixture::press(platform::Key key, bool auto_repeat)
{
    return press({.key = key, .auto_repeat = auto_repeat});
}

bool DrillFixture::press(const std::string& character, bool auto_repeat)
{
    return press({.key = platform::Key::character, .character = character, .auto_repeat = auto_repeat});
}

void DrillFixture::press_in_answer(const platform::KeyPress& key)
{
    clock.steady_seconds_more += 1;
    user([&] { form1.press_in(form1.Text_a, key); });
}

void DrillFixture::press_in_answer(const char* character)
{
    press_in_answer({.key = platform::Key::character, .character = character});
}

void DrillFixture::enter_in_answer()
{
    press_in_answer({.key = platform::Key::enter});
}

void DrillFixture::type_answer(std::string_view text)
{
    form1.Text_a.set_caret(common::code_points(form1.Text_a.text_value));
    user([&] { form1.type(form1.Text_a, text); });
}

void DrillFixture::toolbar(int number)
{
    user([&] { form1.toolbar(number).click(); });
}

void DrillFixture::write_new(std::string_view question_text, std::string_view answer_text)
{
    toolbar(9);
    form1.type(form1.Text_q, question_text);
    form1.type(form1.Text_a, answer_text);
}

void DrillFixture::change_to(std::string_view question_text, std::string_view answer_text)
{
    toolbar(8);
    form1.Text_q.text_value = question_text;
    form1.Text_a.text_value = answer_text;
}

void DrillFixture::save_with_unknown_outcome()
{
    database.fail_commit(true);
    database.fail_at(fakes::Operation::query, 3); // earlier queries look for a duplicate and for the record number
    desktop.expect_box("It is not known whether the question and its answer are saved. Save again to find out."
                       "\r\n\r\nThe course " +
                       path +
                       " could not be read or written.\r\n\r\nThe commit failed. It is not known whether the change is "
                       "stored, because the course cannot be read again.");
    toolbar(10);
}

fakes::FakeMenuEntry& DrillFixture::entry(std::string_view name) const
{
    return form1.menu_bar.entry(name);
}

std::string DrillFixture::prompt() const
{
    return form1.screen.panel_dialog.text;
}

std::string DrillFixture::question() const
{
    return form1.Text_q.text_value;
}

std::string DrillFixture::answer() const
{
    return form1.Text_a.text_value;
}

std::string DrillFixture::status() const
{
    return form1.screen.P_status.text;
}

fakes::QaRow DrillFixture::stored(std::int64_t cnt) const
{
    for (const fakes::QaRow& row : fakes::read_course(path).qa) {
        if (row.cnt == cnt)
            return row;
    }
    ADD_FAILURE() << "no record " << cnt;
    return {};
}

std::ptrdiff_t DrillFixture::place_of(const std::string& noted) const
{
    const auto found = std::find(form1.journal.begin(), form1.journal.end(), noted);
    EXPECT_NE(found, form1.journal.end()) << noted << " is not in the journal";
    return found - form1.journal.begin();
}

std::ptrdiff_t DrillFixture::times_noted(const std::string& noted) const
{
    return std::count(form1.journal.begin(), form1.journal.end(), noted);
}

} // namespace cuedrill::drill
