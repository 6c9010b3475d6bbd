#include "exchange/import_words.h"

namespace cuedrill::exchange {

std::string empty_words(const EmptyRecord& record)
{
    const std::string number = std::to_string(record.number);
    return (record.place.empty() ? "" : record.place + ": ") +
           (record.lacks == EmptyRecord::Lacks::question ? "Question " + number : "Answer to question " + number) +
           "  is empty. Record not inserted.";
}

std::string end_words(const Progress& progress)
{
    return std::to_string(progress.handed_over) + " questions and answers insterted.";
}

std::string end_details(const Importer& importer)
{
    const RecordSource* const source = importer.source();
    if (source == nullptr)
        return {};
    return (source->has_question() ? "" : source->nothing_found()) + source->left_out();
}

std::string stop_words(const std::string& reason, const Progress& progress)
{
    std::string words = "The import has stopped.\r\n\r\n" + reason + "\r\n\r\n" + std::to_string(progress.stored) +
                        " questions and answers are stored.";
    if (progress.unknown != 0)
        words += " Of " + std::to_string(progress.unknown) + " more it is not known whether they are stored.";
    return words;
}

} // namespace cuedrill::exchange
