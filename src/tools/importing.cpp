#include "tools/importing.h"

#include "bank/compared_text.h"
#include "common/errors.h"
#include "exchange/import_words.h"
#include "store/records.h"
#include "tools/progress_line.h"

#include <new>
#include <ostream>
#include <set>
#include <utility>

namespace cuedrill::tools {
namespace {

void print_report(std::ostream& out, const exchange::ImportReport& report)
{
    const std::string summary = report.summary();
    if (!summary.empty())
        out << summary << '\n' << report.lines();
}

/// @param reason the text of the error that stopped the import.
[[noreturn]] void give_up(const exchange::Importer& importer, const std::string& reason, Surroundings& around)
{
    print_report(around.err, importer.report());
    throw common::Error(exchange::stop_words(reason, importer.progress()));
}

bool is_question_text(const SourceChoice& choice)
{
    return choice.options.format ? *choice.options.format == question_text_format : !decks::is_deck_name(choice.path);
}

} // namespace

std::unique_ptr<exchange::RecordSource> RecordSources::open(const SourceChoice& choice) const
{
    if (is_question_text(choice))
        return exchange::open_question_text(files_, choice.path);
    decks::OpenedDeck opened = decks::open_deck(choice.path, choice.options, files_, adapters_.tools());
    return std::make_unique<decks::DeckRecords>(std::move(opened.deck), std::move(opened.looked_for), text_compare_,
                                                choice.records);
}

/// Questions, in a form in which those that differ in case only are the same.
class NewQuestions::Known {
public:
    explicit Known(const platform::TextCompare& text_compare) : text_compare_(text_compare) {}

    /// @return false if it was known already.
    bool add(const std::string& question)
    {
        return known_.insert(text_compare_.fold(bank::comparable_text(question, text_compare_))).second;
    }

private:
    const platform::TextCompare& text_compare_;
    std::set<std::string> known_;
};

NewQuestions::NewQuestions(std::unique_ptr<exchange::RecordSource> source, store::Course& course,
                           const platform::TextCompare& text_compare)
    : source_(std::move(source)), known_(std::make_unique<Known>(text_compare))
{
    course.database().query("Select " + course.Q_FIELD.text + " from qa", {}, [&](const platform::Row& row) {
        known_->add(store::stored_text(row.field(0)));
        return true;
    });
}

NewQuestions::~NewQuestions() = default;

exchange::RecordSource::Step NewQuestions::step()
{
    const Step found = source_->step();
    if (found != Step::record || record().question.text.empty() || known_->add(record().question.text))
        return found;
    ++left_out_;
    lines_.add(exchange::record_name(record().number, record().place), exchange::quoted_line(record().question.text));
    return Step::reading;
}

std::string NewQuestions::left_out() const
{
    const std::string of_source = source_->left_out();
    if (left_out_ == 0)
        return of_source;
    return of_source + std::to_string(left_out_) + " left out, because the course has the question already:\r\n" +
           lines_.text();
}

exchange::Progress run_import(exchange::Importer& importer, Surroundings& around)
{
    exchange::Progress progress;
    ProgressLine line(around);
    try {
        while (!progress.finished) {
            progress = importer.step(exchange::Importer::usual_step);
            line.show(progress.percent);
            if (progress.empty)
                around.out << exchange::empty_words(*progress.empty) << '\n';
        }
    } catch (const common::Error& error) {
        line.clear();
        give_up(importer, error.what(), around);
    } catch (const std::bad_alloc& error) {
        line.clear();
        give_up(importer, common::words_of(error), around);
    }
    line.clear();
    around.out << exchange::end_words(progress) << '\n' << exchange::end_details(importer);
    print_report(around.out, importer.report());
    return progress;
}

} // namespace cuedrill::tools
