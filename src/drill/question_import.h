#pragma once

#include "drill/course_copies.h"
#include "drill/display.h"
#include "drill/edit_flags.h"
#include "drill/last_list.h"
#include "drill/statistics.h"
#include "drill/status_line.h"
#include "drill/text_folder.h"
#include "exchange/decks/deck_opening.h"
#include "exchange/decks/deck_records.h"
#include "exchange/importer.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/text_compare.h"
#include "store/course.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace cuedrill::drill {

/// Command that adds the records of a question text file, or of a deck of another program, to the open course.
class QuestionImport {
public:
    struct Services {
        platform::Files& files;
        platform::Clock& clock;
        platform::Desktop& desktop;
        const platform::TextCompare& text_compare;
        const decks::DeckTools& deck_tools;
        CourseCopies& copies;
        TextFolder& folder; ///< where the dialog for the file begins
    };

    QuestionImport(store::Course& course, EditFlags& flags, Display& display, Statistics& statistics,
                   LastList& last_list, StatusLine& status, const Services& services)
        : course_(course), flags_(flags), display_(display), statistics_(statistics), last_list_(last_list),
          status_(status), services_(services)
    {
    }

    /// The command: explains the import, asks for the file, asks for confirmation, and imports it. Every error is
    /// reported in a box; records stored before it stay.
    void Import_questions_and_answers();

    /// Imports the file at `path` after a copy of the course was made, showing the progress of each step and the
    /// result. For a deck with more than two fields the user chooses the two that make a record; nothing is done after
    /// a cancel.
    void import_file(const std::string& path);

private:
    [[nodiscard]] bool may_import(const std::string& path);
    [[nodiscard]] std::optional<exchange::Importer::Open> opening_of(const std::string& path);
    [[nodiscard]] std::optional<decks::RecordChoice> choice_of(const std::string& path);
    [[nodiscard]] std::unique_ptr<exchange::RecordSource> open_deck(const std::string& path,
                                                                    const decks::RecordChoice& choice) const;
    void run(exchange::Importer& importer);
    void show(const exchange::Progress& progress);
    void stop(const exchange::Importer& importer, const std::string& reason);
    void show_all();
    void tell_report(const exchange::ImportReport& report);
    void tell(const std::string& text);

    store::Course& course_;
    EditFlags& flags_;
    Display& display_;
    Statistics& statistics_;
    LastList& last_list_;
    StatusLine& status_;
    Services services_;

    std::int64_t shown_ = 0; ///< number of stored records of this import that the window has shown
};

} // namespace cuedrill::drill
