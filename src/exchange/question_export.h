#pragma once

#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/text_compare.h"
#include "store/course.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace cuedrill::exchange {

/// Writes the records of the open course to a question text file.
class QuestionExport {
public:
    struct Services {
        platform::Files& files;
        platform::Clock& clock;
        platform::Desktop& desktop;
        /// Shows the file in the program that the user's desktop has for it.
        std::function<void(const std::string& path)> open_document;
        const platform::TextCompare& text_compare;
    };

    /// What was written.
    struct Exported {
        std::int64_t count = 0;   ///< of the records
        std::int64_t changed = 0; ///< of those that an import of the file would not give back as they are
        std::string lines{};      ///< about these
    };

    QuestionExport(store::Course& course, Services services);

    /// The command: asks for the file and for numbers, writes the file, offers to open it, and names the records that
    /// would come back changed. Every failure to write is told in a box.
    void Export_QA();

    /// Writes the file at `path`, in place of one that is there, and shows nothing.
    /// @param numbered whether each record gets its number, counted from 1.
    /// @throws common::Error that also says where an unfinished file is kept; the file at `path` is as it was then.
    Exported export_file(const std::string& path, bool numbered);

private:
    [[nodiscard]] bool may_export(const std::string& path);
    [[nodiscard]] bool is_name_of_the_engine(const std::string& path) const;
    [[nodiscard]] std::optional<Exported> try_export(const std::string& path, bool numbered);
    [[nodiscard]] bool ask(const std::string& question);
    void tell_changed(const Exported& exported);
    void tell(const std::string& text);

    store::Course& m_course;
    Services m_services;
};

} // namespace cuedrill::exchange
