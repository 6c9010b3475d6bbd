#pragma once

#include "adapters/deck_adapters.h"
#include "exchange/decks/deck_opening.h"
#include "exchange/decks/deck_records.h"
#include "exchange/importer.h"
#include "platform/files.h"
#include "platform/text_compare.h"
#include "tools/verb.h"

#include <memory>
#include <string>

namespace cuedrill::tools {

/// The name of the program's own format, beside those of `decks::deck_formats`.
inline constexpr std::string_view question_text_format = "text";

/// What the user says about a file with records.
struct SourceChoice {
    std::string path;
    decks::DeckOptions options{}; ///< the format may also be `question_text_format`
    decks::RecordChoice records{};
};

/// Whether the file is a question text, by its name or by the format that is given.
[[nodiscard]] bool is_question_text(const SourceChoice& choice);

/// Opens files with records, of the program's own format and of other programs.
class RecordSources {
public:
    /// @param text_compare is used as long as the sources.
    RecordSources(const platform::Files& files, const platform::TextCompare& text_compare)
        : files_(files), text_compare_(text_compare)
    {
    }

    /// A file that is no deck, by its name or by the format that is given, is a question text.
    /// @throws common::Error
    [[nodiscard]] std::unique_ptr<exchange::RecordSource> open(const SourceChoice& choice) const;

private:
    const platform::Files& files_;
    const platform::TextCompare& text_compare_;
    adapters::DeckAdapters adapters_;
};

/// Leaves out the records whose question is known: those of a course, and those that came before.
class NewQuestions final : public exchange::RecordSource {
public:
    /// @throws platform::DatabaseError
    NewQuestions(std::unique_ptr<exchange::RecordSource> source, store::Course& course,
                 const platform::TextCompare& text_compare);
    ~NewQuestions() override;

    [[nodiscard]] Step step() override;
    [[nodiscard]] const exchange::ReadRecord& record() const override { return source_->record(); }
    [[nodiscard]] bool has_question() const override { return source_->has_question(); }
    [[nodiscard]] std::optional<int> percent() const override { return source_->percent(); }
    [[nodiscard]] std::string nothing_found() const override { return source_->nothing_found(); }
    [[nodiscard]] std::string left_out() const override;

private:
    class Known;

    std::unique_ptr<exchange::RecordSource> source_;
    std::unique_ptr<Known> known_;
    exchange::RecordLines lines_;
    std::int64_t left_out_ = 0;
};

/// What an import has done.
struct Imported {
    std::int64_t stored = 0;
    bool all = true; ///< no record was refused or had an empty text, and all characters could be read
};

/// Takes all steps of the import and prints what the window shows in boxes.
/// @throws common::Error that tells how far it came when the import has stopped.
Imported run_import(exchange::Importer& importer, Surroundings& around);

} // namespace cuedrill::tools
