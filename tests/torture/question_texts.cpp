#include "torture/question_texts.h"

#include "common/errors.h"
#include "exchange/question_file.h"
#include "exchange/question_text.h"
#include "exchange/text_decoding.h"
#include "fakes/fake_files.h"
#include "keep/removed_entry.h"

#include <cstddef>
#include <cstdint>
#include <limits>

namespace cuedrill::torture {

using exchange::QuestionFile;

std::vector<store::QaTexts> records_in(const std::string& question_text)
{
    fakes::FakeFiles files;
    files.files["text"] = question_text;
    QuestionFile file(files.begin_reading("text", std::numeric_limits<std::uint64_t>::max()));
    std::vector<store::QaTexts> records;
    for (QuestionFile::Step step = file.step(); step != QuestionFile::Step::end; step = file.step()) {
        if (step == QuestionFile::Step::record)
            records.push_back({file.record().question.text, file.record().answer.text});
    }
    return records;
}

std::vector<store::QaTexts> kept_in(const std::string& entries)
{
    const std::size_t end = entries.rfind(keep::entry_end);
    if (end == std::string::npos)
        return {};
    if (!entries.starts_with(exchange::utf8_mark))
        throw common::Error("the kept texts do not begin with the mark");
    const std::string whole = entries.substr(exchange::utf8_mark.size(), end + keep::entry_end.size());
    std::vector<store::QaTexts> by_entries;
    bool torn = false;
    for (std::size_t begin = 0; begin < end;) {
        const std::size_t next = whole.find(keep::entry_end, begin);
        if (next == std::string::npos)
            break;
        const std::string entry = whole.substr(begin, next - begin);
        begin = next + keep::entry_end.size();
        if (!entry.starts_with(exchange::comment_start)) {
            torn = true;
            continue;
        }
        for (const store::QaTexts& texts : records_in(entry))
            by_entries.push_back(texts);
    }
    return torn ? by_entries : records_in(entries.substr(0, end + keep::entry_end.size()));
}

} // namespace cuedrill::torture
