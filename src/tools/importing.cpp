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

/// Cuts texts that are too long for a course.
class ShortTexts final : public exchange::RecordSource {
public:
    ShortTexts(std::unique_ptr<exchange::RecordSource> source, const platform::TextCompare& text_compare)
        : source_(std::move(source)), text_compare_(text_compare)
    {
    }

    [[nodiscard]] Step step() override
    {
        const Step found = source_->step();
        if (found == Step::record) {
            record_ = source_->record();
            for (exchange::ReadText* text : {&record_.question, &record_.answer})
                cut_ += decks::cut_to_course(*text, text_compare_) ? 1 : 0;
        }
        return found;
    }
    [[nodiscard]] const exchange::ReadRecord& record() const override { return record_; }
    [[nodiscard]] bool has_question() const override { return source_->has_question(); }
    [[nodiscard]] std::optional<int> percent() const override { return source_->percent(); }
    [[nodiscard]] std::string nothing_found() const override { return source_->nothing_found(); }
    [[nodiscard]] std::string left_out() const override { return source_->left_out() + decks::cut_words(cut_); }

private:
    std::unique_ptr<exchange::RecordSource> source_;
    const platform::TextCompare& text_compare_;
    exchange::ReadRecord record_;
    std::int64_t cut_ = 0;
};

} // namespace

bool is_question_text(const SourceChoice& choice)
{
    return choice.options.format ? *choice.options.format == question_text_format : !decks::is_deck_name(choice.path);
}

std::unique_ptr<exchange::RecordSource> RecordSources::open(const SourceChoice& choice) const
{
    if (is_question_text(choice)) {
        auto text = exchange::open_question_text(files_, choice.path);
        if (!choice.records.truncate)
            return text;
        return std::make_unique<ShortTexts>(std::move(text), text_compare_);
    }
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
        return known_.insert(bank::comparison_key(question, text_compare_)).second;
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

Imported run_import(exchange::Importer& importer, Surroundings& around)
{
    exchange::Progress progress;
    bool all = true;
    ProgressLine line(around);
    try {
        while (!progress.finished) {
            progress = importer.step(exchange::Importer::usual_step);
            line.show(progress.percent);
            if (progress.empty) {
                all = false;
                around.out << exchange::empty_words(*progress.empty) << '\n';
            }
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
    return {.stored = progress.stored, .all = all && importer.report().summary().empty()};
}

} // namespace cuedrill::tools
