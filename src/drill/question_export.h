#pragma once

#include "drill/text_folder.h"
#include "exchange/exporter.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "store/course.h"
#include "support/documents.h"

#include <optional>
#include <string>

namespace cuedrill::drill {

/// Command that writes the records of the open course to a question text file.
class QuestionExport {
public:
    QuestionExport(const store::Course& course, exchange::Exporter& exporter, support::Documents& documents,
                   const platform::Files& files, platform::Desktop& desktop, TextFolder& folder)
        : course_(course), exporter_(exporter), documents_(documents), files_(files), desktop_(desktop), folder_(folder)
    {
    }

    /// The command: asks for the file and whether to write numbers, writes the file, offers to open it, and lists the
    /// records that an import would change. Every write error is reported in a box.
    void Export_QA();

private:
    [[nodiscard]] bool may_export(const std::string& path);
    [[nodiscard]] bool is_name_of_the_engine(const std::string& path) const;
    [[nodiscard]] std::optional<exchange::Exported> try_export(const std::string& path, bool numbered);
    [[nodiscard]] bool ask(const std::string& question);
    void tell_changed(const exchange::Exported& exported);
    void tell(const std::string& text);

    const store::Course& course_;
    exchange::Exporter& exporter_;
    support::Documents& documents_;
    const platform::Files& files_;
    platform::Desktop& desktop_;
    TextFolder& folder_; ///< where the dialog for the file begins
};

} // namespace cuedrill::drill
