#pragma once

#include "platform/files.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <utility>
#include <zip.h>

namespace cuedrill::platform::archive {

/// Lets libzip read a `FileReading`. libzip is written in C, so an exception of the file is kept for the caller.
class ZipSource {
public:
    explicit ZipSource(std::unique_ptr<FileReading> file) : file_(std::move(file)) {}
    ZipSource(const ZipSource&) = delete;
    ZipSource& operator=(const ZipSource&) = delete;

    [[nodiscard]] std::uint64_t size() const { return file_->size(); }

    /// libzip's view of the file. `*this` must outlive it.
    [[nodiscard]] zip_source_t* make(zip_error_t& error);

    /// From now on, reading more than `most` bytes fails.
    void limit_reading(std::uint64_t most) { left_ = most; }
    /// Whether reading has failed for that reason.
    [[nodiscard]] bool limit_reached() const { return limit_reached_; }

    /// Throws the exception of the file, if there was one.
    void rethrow() const;

private:
    static zip_int64_t call(void* self, void* data, zip_uint64_t size, zip_source_cmd_t command) noexcept;
    [[nodiscard]] zip_int64_t answer(void* data, zip_uint64_t size, zip_source_cmd_t command);
    [[nodiscard]] zip_int64_t read(char* to, std::size_t size);

    std::unique_ptr<FileReading> file_;
    std::exception_ptr failure_;
    zip_error_t error_{};
    std::uint64_t place_ = 0;
    std::uint64_t left_ = UINT64_MAX;
    bool limit_reached_ = false;
};

} // namespace cuedrill::platform::archive
