#include "exchange/decks/deck.h"

#include <set>
#include <utility>

namespace cuedrill::decks {

std::vector<std::string> different(std::vector<std::string> names)
{
    std::set<std::string> taken;
    for (std::string& name : names) {
        std::string free = name;
        for (int number = 2; !taken.insert(free).second; ++number)
            free = name + " (" + std::to_string(number) + ")";
        name = std::move(free);
    }
    return names;
}

} // namespace cuedrill::decks
