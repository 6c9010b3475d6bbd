#pragma once

#include "platform/desktop.h"
#include "platform/form1.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace cuedrill::drill {

/// What the buttons and indicators of the main window tell about themselves on Shift and a click.
class ContextHelp {
public:
    ContextHelp(platform::Form1& form1, platform::Desktop& desktop) : form1_(form1), desktop_(desktop) {}

    /// Gives every button and indicator its help.
    void attach();

    /// Command: tells how to get it.
    void ShowContextHelpHint();

    /// Tells all of it at once, for those who work without a mouse.
    void show_all();

private:
    struct Figure {
        const char* name;
        platform::ScreenLine caption;
        platform::ScreenLine value;
        const char* text;
    };

    void attach_toolbar();
    void attach_dialog();
    void attach_question_figures();
    void attach_statistics();
    std::function<void()> note(std::string_view name, const char* text);
    void offer(std::string_view name, platform::Button& button, const char* text);
    void offer(std::string_view name, std::initializer_list<platform::ScreenLine> lines, const char* text);
    void offer_figures(std::initializer_list<Figure> figures);

    platform::Form1& form1_;
    platform::Desktop& desktop_;
    std::string all_; ///< each name with its help
};

} // namespace cuedrill::drill
