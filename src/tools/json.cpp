#include "tools/json.h"

#include "common/text.h"

namespace cuedrill::tools {

std::string json_text(std::string_view text)
{
    constexpr std::string_view hexadecimal = "0123456789abcdef";
    std::string json = "\"";
    while (!text.empty()) {
        const std::string_view character = common::first_code_points(text, 1);
        text.remove_prefix(character.size());
        const auto code = static_cast<unsigned char>(character.front());
        if (character == "\"" || character == "\\")
            json.append("\\").append(character);
        else if (code < 0x20)
            json.append("\\u00") += {hexadecimal[code / 16], hexadecimal[code % 16]};
        else
            json.append(common::is_utf8(character) ? character : "\xEF\xBF\xBD");
    }
    return json + "\"";
}

std::string json_truth(bool value)
{
    return value ? "true" : "false";
}

std::string json_list(const std::vector<std::string>& values)
{
    std::string json = "[";
    for (const std::string& value : values)
        json += (json.size() == 1 ? "" : ", ") + value;
    return json + "]";
}

std::string json_object(const std::vector<std::pair<std::string_view, std::string>>& members)
{
    std::string json;
    for (const auto& [name, value] : members)
        json += (json.empty() ? "" : ", ") + json_text(name) + ": " + value;
    return "{" + json + "}";
}

} // namespace cuedrill::tools
