#include "support/web_page.h"

#include "support/documents.h"

#include <filesystem>

namespace cuedrill::support {

std::string default_web_page()
{
    return CUEDRILL_WEB_PAGE;
}

std::string web_page_address(const std::string& setting, const std::string& executable_folder)
{
    const std::filesystem::path page(setting);
    if (is_web_address(setting) || page.is_absolute())
        return setting;
    return (executable_folder / page).lexically_normal().string();
}

} // namespace cuedrill::support
