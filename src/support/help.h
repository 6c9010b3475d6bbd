#pragma once

#include "platform/desktop.h"
#include "support/big_box.h"
#include "support/documents.h"

#include <string>
#include <string_view>
#include <utility>

namespace cuedrill::support {

/// The commands about the program itself.
class HelpCommands {
public:
    /// @param web_page address or path of the product's web page.
    HelpCommands(BigBox& big_box, Documents& documents, platform::Desktop& desktop, std::string web_page)
        : big_box_(big_box), documents_(documents), desktop_(desktop), web_page_(std::move(web_page))
    {
    }

    /// Command: shows the version history in the message window.
    void release_notes();

    /// Command: shows version and licence.
    void show_about();

    /// Command: offers to open the web page, which has the help.
    /// @param section anchor of the section at which the page opens if it is a file, which is this program's manual.
    void show_help(std::string_view section);

    /// Command: opens the web page.
    void m_web_site();

private:
    BigBox& big_box_;
    Documents& documents_;
    platform::Desktop& desktop_;
    std::string web_page_;
};

} // namespace cuedrill::support
