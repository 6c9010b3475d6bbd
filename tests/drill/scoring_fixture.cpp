#include "drill/scoring_fixture.h"

#include "fakes/fake_dialog_host.h"
#include "fakes/fake_f_msgbox.h"
#include "fakes/fake_open_courses.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_shell.h"
#include "program/logic.h"

namespace cuedrill::drill {

ShownStatistics statistics_of(const platform::Screen& screen)
{
    const auto number = [](const std::string& text) { return text.empty() ? 0 : std::stoll(text); };
    ShownStatistics shown;
    shown.total = number(screen.panel_total.text);
    shown.unpassed = number(screen.panel_nr_unpassed.text);
    shown.open_time = screen.panel_open_time.text;
    shown.today = screen.panel_time_today.text;
    shown.ever = screen.panel_time_ever.text;
    if (!screen.Panel_score.text.empty())
        shown.score = std::stoi(screen.Panel_score.text);
    for (std::size_t level = 0; level < screen.panel_level.size(); ++level) {
        shown.counts.push_back(screen.panel_level[level].count);
        if (screen.panel_level[level].marked) {
            EXPECT_EQ(shown.marked, std::nullopt) << "only one is marked";
            shown.marked = static_cast<int>(level);
        }
    }
    return shown;
}

struct ScoringFixture::Program {
    explicit Program(ScoringFixture& fixture)
        : logic({.form1 = fixture.form1.controls,
                 .f_msgbox = f_msgbox.controls,
                 .form2 = form2,
                 .desktop = fixture.desktop,
                 .settings = settings,
                 .shell = shell,
                 .clock = fixture.clock,
                 .files = fixture.files,
                 .open_courses = open_courses,
                 .folders = fixture.folders,
                 .random = fixture.random,
                 .text_compare = fixture.engine.text_compare,
                 .deck_tools = fixture.deck_adapters.tools(),
                 .database = fixture.database,
                 .sample_database = fixture.database,
                 .data_folder = "",
                 .program_folder = "/program",
                 .web_page = "https://example.org/cuedrill"})
    {
    }

    fakes::FakeDialogHost form2;
    fakes::FakeFMsgbox f_msgbox;
    fakes::FakeSettings settings;
    fakes::FakeShell shell;
    fakes::FakeOpenCourses open_courses;
    program::Logic logic;
};

ScoringFixture::ScoringFixture()
    : program_(std::make_unique<Program>(*this)), logic(program_->logic), course(logic.course), params(logic.params),
      command_controls(logic.command_controls), options(logic.options), flags(logic.edit_flags), state(logic.state),
      status(logic.status), display(logic.display), dead_times(logic.dead_times), statistics(logic.statistics),
      end_of_program(logic.end_of_program), scoring(logic.scoring), selection(logic.selection),
      level_commands(logic.levels)
{
    dead_times.init_dead_time_array();
    // A box may stay open for hours: no transaction and no statement may be open meanwhile, nor the pointer be busy.
    desktop.on_box = [this] {
        EXPECT_EQ(database.transaction_depth(), 0);
        EXPECT_EQ(database.open_recordsets(), 0);
        EXPECT_EQ(desktop.pointer_depth, 0);
    };
}

ScoringFixture::~ScoringFixture() = default;

fakes::FakeFiles ScoringFixture::make_files()
{
    fakes::FakeFiles with_switch;
    with_switch.files["/program/trace.flg"] = "";
    return with_switch;
}

void ScoringFixture::open(const fakes::CourseBuilder& builder)
{
    course.db_path = builder.write(folder);
    course.course_name = "course";
    course.apri_db();
    params.read_params();
    course.set_side_fields();
    course.record_count = course.count_records();
    course.start_counting(clock.time);
    database.forget();
    form1.journal.clear();
}

void ScoringFixture::open_with_current(const fakes::CourseBuilder& builder)
{
    open(builder);
    display.show_record(1);
    database.forget();
    form1.journal.clear();
}

fakes::CourseContents ScoringFixture::file() const
{
    return fakes::read_course(course.db_path);
}

fakes::SideRow ScoringFixture::stored() const
{
    return file().qa.at(0).q_side;
}

bool ScoringFixture::is_target(int level) const
{
    const platform::LevelLine& line = form1.screen.panel_level.at(static_cast<std::size_t>(level));
    const bool has_colour = line.background == common::light_cyan;
    EXPECT_EQ(line.caption.ends_with("\u25CE"), has_colour);
    return has_colour;
}

std::vector<std::string> ScoringFixture::status_texts() const
{
    const std::string beginning = "P_status.caption=";
    std::vector<std::string> texts;
    for (const std::string& entry : form1.journal) {
        if (entry.starts_with(beginning))
            texts.push_back(entry.substr(beginning.size()));
    }
    return texts;
}

void ScoringFixture::expect_status(const std::string& text, int seconds)
{
    EXPECT_EQ(form1.screen.P_status.text, text);
    clock.steady_seconds_more += seconds == 0 ? 3600 : seconds - 0.1;
    status.expire();
    EXPECT_EQ(form1.screen.P_status.text, text);
    if (seconds == 0)
        return;
    clock.steady_seconds_more += 0.2;
    status.expire();
    EXPECT_EQ(form1.screen.P_status.text, "");
}

} // namespace cuedrill::drill
