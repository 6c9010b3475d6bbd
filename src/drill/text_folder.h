#pragma once

#include "app/base/settings.h"
#include "platform/files.h"

#include <string>
#include <utility>

namespace cuedrill::drill {

/// The folder in which a file dialog for texts begins: the one of the last choice, or else the user's documents.
class TextFolder {
public:
    /// @param key of the setting that keeps the folder.
    /// @param documents the user's documents folder; "" for none.
    TextFolder(app::Settings& settings, const platform::Files& files, std::string key, std::string documents)
        : settings_(settings), files_(files), key_(std::move(key)), documents_(std::move(documents))
    {
    }

    /// Full path; "", the platform's choice, if neither folder is there.
    [[nodiscard]] std::string initial() const;

    /// Keeps the folder of a file that the user has chosen, for this run and the next ones.
    void chosen(const std::string& path);

private:
    app::Settings& settings_;
    const platform::Files& files_;
    std::string key_;
    std::string documents_;
};

} // namespace cuedrill::drill
