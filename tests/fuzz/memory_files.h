#pragma once

#include "platform/database.h"
#include "platform/files.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::fuzz {

/// A file in memory, read in pieces of at most `piece` bytes; of very different ones if that is 0.
class MemoryFile : public platform::FileReading {
public:
    MemoryFile(std::string_view bytes, std::size_t piece) : bytes_(bytes), piece_(piece) {}

    [[nodiscard]] std::uint64_t size() const override { return bytes_.size(); }
    [[nodiscard]] std::string read(std::size_t most) override
    {
        const std::size_t length = std::min(piece_ == 0 ? 1 + place_ * 7919 % 61 : piece_, most);
        const std::string_view part = bytes_.substr(place_, length);
        place_ += part.size();
        return std::string(part);
    }
    void rewind() override { place_ = 0; }
    void go_to(std::uint64_t place) override
    {
        place_ = static_cast<std::size_t>(std::min<std::uint64_t>(place, size()));
    }

private:
    std::string_view bytes_;
    std::size_t piece_;
    std::size_t place_ = 0;
};

/// An exported file in memory.
class MemoryReplacement : public platform::Replacement {
public:
    [[nodiscard]] const std::string& path() const override { return path_; }
    void write(std::string_view bytes) override { bytes_.append(bytes); }
    void restart() override { bytes_.clear(); }
    void finish() override {}
    [[nodiscard]] const std::string& bytes() const { return bytes_; }

private:
    std::string path_;
    std::string bytes_;
};

using Texts = std::vector<std::pair<std::string, std::string>>; ///< question and answer of each record

/// Rows with the columns "q" and "a".
class MemoryRows : public platform::Recordset {
public:
    explicit MemoryRows(const Texts& texts) : texts_(texts) {}

    [[nodiscard]] bool bof() const override { return texts_.empty(); }
    [[nodiscard]] bool eof() const override { return place_ == texts_.size(); }
    void move_first() override { place_ = 0; }
    void move_next() override { ++place_; }
    [[nodiscard]] platform::Value field(std::string_view column) const override { return field(column == "a" ? 1 : 0); }
    [[nodiscard]] platform::Value field(int column) const override
    {
        return column == 0 ? texts_.at(place_).first : texts_.at(place_).second;
    }

private:
    const Texts& texts_;
    std::size_t place_ = 0;
};

} // namespace cuedrill::fuzz
