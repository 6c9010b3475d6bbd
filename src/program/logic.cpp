#include "program/logic.h"

#include <string>

namespace cuedrill::program {

Logic::Logic(const LogicPlatform& platform) : p(platform)
{
    bank.before_loss = [this](bank::Loss loss, const store::QaTexts& texts) { kept.keep_lost(loss, texts); };
    course.when_stored = [this](const store::StoredChange& change) { history.note(change); };
    statistics.when_counted = [this] { due_picture.ask(); };
    course.when_stored_after_all = [this] {
        title.set_window_title();
        options.show_course();
        layout.RelayoutWindow();
        statistics.refresh_counts();
        display.refresh_figures();
    };
    end_of_program.before_end = [this] {
        editor.forget();
        history.course_closing();
        const std::string unkept = kept.take_failures();
        const std::string unwritten = history.take_failures();
        return unkept + (unkept.empty() || unwritten.empty() ? "" : " - ") + unwritten;
    };
    main_window.attach();
    display.name_boxes();
    dialog.attach();
    typed_answer.attach();
    lists.attach();
    timers.attach();
    opener.attach();
    course_copies.attach();
    due_picture.attach();
    big_box.attach();
    context_help.attach();
    commands.attach();
    keys.attach();
}

Logic::~Logic() = default;

} // namespace cuedrill::program
