#include "platform/archive/zip_source.h"

#include <cstring>
#include <string>

namespace cuedrill::platform::archive {

zip_source_t* ZipSource::make(zip_error_t& error)
{
    return zip_source_function_create(&ZipSource::call, this, &error);
}

void ZipSource::rethrow() const
{
    if (failure_ != nullptr)
        std::rethrow_exception(failure_);
}

zip_int64_t ZipSource::call(void* self, void* data, zip_uint64_t size, zip_source_cmd_t command) noexcept
{
    auto& source = *static_cast<ZipSource*>(self);
    try {
        return source.answer(data, size, command);
    } catch (...) {
        source.failure_ = std::current_exception();
        zip_error_set(&source.error_, ZIP_ER_READ, 0);
        return -1;
    }
}

zip_int64_t ZipSource::answer(void* data, zip_uint64_t size, zip_source_cmd_t command)
{
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                              ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL,
                                              ZIP_SOURCE_SUPPORTS, -1);
    case ZIP_SOURCE_OPEN:
        file_->rewind();
        place_ = 0;
        return 0;
    case ZIP_SOURCE_READ:
        return read(static_cast<char*>(data), static_cast<std::size_t>(size));
    case ZIP_SOURCE_STAT: {
        auto* const stat = static_cast<zip_stat_t*>(data);
        zip_stat_init(stat);
        stat->valid = ZIP_STAT_SIZE;
        stat->size = file_->size();
        return static_cast<zip_int64_t>(sizeof(zip_stat_t));
    }
    case ZIP_SOURCE_SEEK: {
        const zip_int64_t place = zip_source_seek_compute_offset(place_, file_->size(), data, size, &error_);
        if (place < 0)
            return -1;
        place_ = static_cast<std::uint64_t>(place);
        file_->go_to(place_);
        return 0;
    }
    case ZIP_SOURCE_TELL:
        return static_cast<zip_int64_t>(place_);
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&error_, data, size);
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE:
        return 0;
    default:
        zip_error_set(&error_, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

zip_int64_t ZipSource::read(char* to, std::size_t size)
{
    if (size > left_) {
        limit_reached_ = true;
        zip_error_set(&error_, ZIP_ER_READ, 0);
        return -1;
    }
    std::size_t done = 0;
    while (done < size) {
        const std::string bytes = file_->read(size - done);
        if (bytes.empty())
            break;
        std::memcpy(to + done, bytes.data(), bytes.size());
        done += bytes.size();
    }
    place_ += done;
    left_ -= done;
    return static_cast<zip_int64_t>(done);
}

} // namespace cuedrill::platform::archive
