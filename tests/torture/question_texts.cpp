#include "torture/question_texts.h"

#include "exchange/question_file.h"
#include "fakes/fake_files.h"

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

} // namespace cuedrill::torture
