#pragma once

#include "platform/files.h"

#include <iosfwd>
#include <string>

namespace cuedrill::tools {

/// What would become a file is printed when it is complete.
class PrintedFile final : public platform::Replacement {
public:
    explicit PrintedFile(std::ostream& out) : out_(out) {}

    [[nodiscard]] const std::string& path() const override { return path_; }
    void write(std::string_view bytes) override { bytes_ += bytes; }
    void restart() override { bytes_.clear(); }
    void finish() override;

private:
    std::ostream& out_;
    std::string path_ = "the output";
    std::string bytes_;
};

} // namespace cuedrill::tools
