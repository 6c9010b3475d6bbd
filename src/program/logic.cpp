#include "program/logic.h"

namespace cuedrill::program {

Logic::Logic(const LogicPlatform& platform) : p(platform)
{
    bank.before_loss = [this](bank::Loss loss, const store::QaTexts& texts) { kept.keep_lost(loss, texts); };
    end_of_program.before_end = [this] {
        editor.forget();
        return kept.take_failures();
    };
    main_window.attach();
    display.name_boxes();
    dialog.attach();
    typed_answer.attach();
    lists.attach();
    timers.attach();
    opener.attach();
    course_copies.attach();
    big_box.attach();
    context_help.attach();
    commands.attach();
    keys.attach();
}

Logic::~Logic() = default;

} // namespace cuedrill::program
