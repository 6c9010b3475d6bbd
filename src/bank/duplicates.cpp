#include "bank/duplicates.h"

#include "bank/compared_text.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace cuedrill::bank {

std::vector<SameTexts> find_duplicates(platform::Database& database, const std::string& column,
                                       const platform::TextCompare& text_compare)
{
    std::map<std::string, SameTexts> by_text;
    database.query("Select * from qa order by cnt", {}, [&](const platform::Row& row) {
        store::QaRecord record = store::record_of(row);
        const std::string& text = column == "q" ? record.q : record.a;
        by_text[comparison_key(text, text_compare)].push_back(std::move(record));
        return true;
    });
    std::vector<SameTexts> found;
    for (auto& [text, records] : by_text) {
        if (records.size() > 1)
            found.push_back(std::move(records));
    }
    std::sort(found.begin(), found.end(),
              [](const SameTexts& a, const SameTexts& b) { return a.front().cnt < b.front().cnt; });
    return found;
}

} // namespace cuedrill::bank
