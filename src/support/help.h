#pragma once

#include "platform/desktop.h"
#include "support/big_box.h"
#include "support/documents.h"

#include <string>
#include <utility>

namespace cuedrill::support {

/// The commands that tell about the program itself.
class HelpCommands {
public:
    /// @param web_page address or path of the product's web page.
    HelpCommands(BigBox& big_box, Documents& documents, platform::Desktop& desktop, std::string web_page)
        : m_big_box(big_box), m_documents(documents), m_desktop(desktop), m_web_page(std::move(web_page))
    {
    }

    /// Command: shows the version history in the message window.
    void release_notes();

    /// Command: tells version and licence.
    void show_about();

    /// Command: offers to open the web page, where the help is.
    void show_help();

    /// Command: opens the web page.
    void m_web_site();

private:
    BigBox& m_big_box;
    Documents& m_documents;
    platform::Desktop& m_desktop;
    std::string m_web_page;
};

} // namespace cuedrill::support
