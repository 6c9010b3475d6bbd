#include "exchange/decks/left_out_words.h"

namespace cuedrill::decks {

std::string count_line(std::int64_t count, std::string_view one, std::string_view more)
{
    if (count == 0)
        return "";
    return std::to_string(count) + " " + std::string(count == 1 ? one : more) + "\n";
}

} // namespace cuedrill::decks
