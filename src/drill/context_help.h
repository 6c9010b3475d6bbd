#pragma once

#include "platform/desktop.h"
#include "platform/form1.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace cuedrill::drill {

/// Help for the buttons and indicators of the main window, shown on Shift+click.
class ContextHelp {
public:
    ContextHelp(platform::Form1& form1, platform::Desktop& desktop) : form1_(form1), desktop_(desktop) {}

    /// Sets the help of every button and indicator.
    void attach();

    /// Command: explains how to get the context help.
    void ShowContextHelpHint();

    /// Shows all the help in one box, for those who work without a mouse.
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
    std::string all_; ///< all the help: each name with its text
};

} // namespace cuedrill::drill
