#include "support/help.h"

#include "support/program_name.h"
#include "support/version_history.h"

namespace cuedrill::support {

void HelpCommands::release_notes()
{
    big_box_.big_box(release_notes_text(), std::string(program_name) + " - Version history");
}

void HelpCommands::show_about()
{
    const std::string name(program_name);
    desktop_.message_box({.text = name + " version " + program_version() +
                                  "\r\n\r\nCopyright (c) 2026 Cuedrill developers\r\n" + name +
                                  " is free software under the MIT License; it comes without any warranty.\r\n\r\n"
                                  "It is built with Qt (GNU Lesser General Public License), SQLite (public domain) "
                                  "and ICU (Unicode License).",
                          .icon = platform::BoxIcon::program});
}

void HelpCommands::show_help(std::string_view section)
{
    const auto answer =
        desktop_.message_box({.text = "The help file is still under construction.\r\n\r\nInformation about the "
                                      "program is available on the product's web page. OK opens that page now.",
                              .buttons = platform::BoxButtons::ok_cancel,
                              .icon = platform::BoxIcon::question});
    if (answer == platform::BoxAnswer::ok)
        documents_.open_document(web_page_, section);
}

void HelpCommands::m_web_site()
{
    documents_.open_document(web_page_);
}

} // namespace cuedrill::support
