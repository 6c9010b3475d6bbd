#pragma once

#include "app/base/settings.h"
#include "app/base/trace_log.h"
#include "platform/clock.h"
#include "platform/database.h"
#include "platform/files.h"
#include "platform/text_compare.h"

#include <string>
#include <utility>

namespace cuedrill::drill {

/// The course that a new user finds in the first file dialog.
class SampleCourse {
public:
    struct Services {
        platform::Files& files;
        platform::Clock& clock;
        const platform::TextCompare& text_compare;
        app::Settings& settings;
        app::TraceLog& trace;
    };

    static constexpr const char* file_name = "Chemical elements.crs";

    /// @param database in which the course is made; no course may be open in it.
    /// @param questions full path of the question text of which the course is made; nothing is done if there is none.
    /// @param data_folder where the course is put; created if missing. "" for a user without one.
    SampleCourse(platform::Database& database, const Services& services, std::string questions, std::string data_folder)
        : database_(database), services_(services), questions_(std::move(questions)),
          data_folder_(std::move(data_folder))
    {
    }

    /// Puts the course into the data folder, unless that holds a course. This is tried once in the life of the user's
    /// settings, so that a sample that was deleted never comes back. No file is ever replaced, and a failure is only
    /// noted in the trace.
    void put_once();

    /// The data folder if it holds a course, this one or another; else "", also if the folder cannot be read.
    [[nodiscard]] std::string folder_with_course() const;

    /// Whether a file of the sample's name is in the data folder.
    [[nodiscard]] bool is_there() const;

private:
    [[nodiscard]] bool remember();
    [[nodiscard]] bool data_folder_holds_course() const;
    void make();
    void fill(const std::string& path);
    void note(const std::string& reason);

    platform::Database& database_;
    Services services_;
    std::string questions_;
    std::string data_folder_;
};

} // namespace cuedrill::drill
