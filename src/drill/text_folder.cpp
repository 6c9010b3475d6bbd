#include "drill/text_folder.h"

#include "app/base/paths.h"

namespace cuedrill::drill {

std::string TextFolder::initial() const
{
    const std::string last = settings_.get_setting(key_);
    for (const std::string& folder : {last, documents_}) {
        if (!folder.empty() && files_.is_folder(folder))
            return folder;
    }
    return {};
}

void TextFolder::chosen(const std::string& path)
{
    // The folder of "/a.txt" is "".
    const std::string folder = app::dir_of(path);
    settings_.save_setting(key_, folder.empty() ? "/" : folder);
}

} // namespace cuedrill::drill
