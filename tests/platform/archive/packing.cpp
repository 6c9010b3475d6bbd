#include "platform/archive/packing.h"

#include <algorithm>
#include <sqlite3.h>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <zip.h>
#include <zstd.h>

namespace cuedrill::packing {
namespace {

void require(bool condition, const char* words)
{
    if (!condition)
        throw std::runtime_error(words);
}

int compare_folded(void* /*context*/, int length_a, const void* a, int length_b, const void* b)
{
    const int result =
        sqlite3_strnicmp(static_cast<const char*>(a), static_cast<const char*>(b), std::min(length_a, length_b));
    return result != 0 ? result : length_a - length_b;
}

class MemoryFile : public platform::FileReading {
public:
    MemoryFile(std::string bytes, std::size_t longest_piece) : bytes_(std::move(bytes)), longest_piece_(longest_piece)
    {
    }

    [[nodiscard]] std::uint64_t size() const override { return bytes_.size(); }
    [[nodiscard]] std::string read(std::size_t most) override
    {
        std::string part = bytes_.substr(place_, std::min(most, longest_piece_));
        place_ += part.size();
        return part;
    }
    void rewind() override { place_ = 0; }
    void go_to(std::uint64_t place) override
    {
        place_ = static_cast<std::size_t>(std::min<std::uint64_t>(place, bytes_.size()));
    }

private:
    std::string bytes_;
    std::size_t longest_piece_;
    std::size_t place_ = 0;
};

} // namespace

std::string zip_of(const std::vector<PackedFile>& files)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const target = zip_source_buffer_create(nullptr, 0, 0, &error);
    require(target != nullptr, "no buffer");
    zip_t* const archive = zip_open_from_source(target, ZIP_TRUNCATE, &error);
    require(archive != nullptr, "no archive");
    zip_source_keep(target);
    for (const PackedFile& file : files) {
        zip_source_t* const source = zip_source_buffer(archive, file.bytes.data(), file.bytes.size(), 0);
        const zip_int64_t place = zip_file_add(archive, file.name.c_str(), source, ZIP_FL_ENC_UTF_8);
        require(place >= 0, "a file is not added");
        require(zip_set_file_compression(archive, static_cast<zip_uint64_t>(place), file.method, 0) == 0,
                "a method is not known");
        if (!file.password.empty())
            require(zip_file_set_encryption(archive, static_cast<zip_uint64_t>(place), ZIP_EM_AES_256,
                                            file.password.c_str()) == 0,
                    "a file is not encrypted");
    }
    require(zip_close(archive) == 0, "an archive is not written");
    std::string bytes;
    zip_stat_t stat;
    require(zip_source_stat(target, &stat) == 0 && zip_source_open(target) == 0, "an archive is not read");
    bytes.resize(stat.size);
    require(zip_source_read(target, bytes.data(), bytes.size()) == static_cast<zip_int64_t>(bytes.size()),
            "an archive is not complete");
    zip_source_close(target);
    zip_source_free(target);
    return bytes;
}

std::string zstandard_of(std::string_view bytes, bool states_size, int window_log)
{
    ZSTD_CCtx* const context = ZSTD_createCCtx();
    require(context != nullptr, "no context");
    ZSTD_CCtx_setParameter(context, ZSTD_c_contentSizeFlag, states_size ? 1 : 0);
    if (window_log != 0)
        ZSTD_CCtx_setParameter(context, ZSTD_c_windowLog, window_log);
    std::string packed(ZSTD_compressBound(bytes.size()), '\0');
    ZSTD_inBuffer in{.src = bytes.data(), .size = bytes.size(), .pos = 0};
    ZSTD_outBuffer out{.dst = packed.data(), .size = packed.size(), .pos = 0};
    // With the end announced at once, the frame has no window larger than its contents.
    if (window_log != 0) {
        require(ZSTD_isError(ZSTD_compressStream2(context, &out, &in, ZSTD_e_continue)) == 0, "no frame");
    }
    require(ZSTD_compressStream2(context, &out, &in, ZSTD_e_end) == 0, "a frame is not complete");
    ZSTD_freeCCtx(context);
    packed.resize(out.pos);
    return packed;
}

std::string database_of(const std::string& sql)
{
    sqlite3* db = nullptr;
    require(sqlite3_open(":memory:", &db) == SQLITE_OK, "no database");
    sqlite3_create_collation(db, "unicase", SQLITE_UTF8, nullptr, compare_folded);
    char* words = nullptr;
    if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &words) != SQLITE_OK)
        throw std::runtime_error(words);
    sqlite3_int64 size = 0;
    unsigned char* const bytes = sqlite3_serialize(db, "main", &size, 0);
    require(bytes != nullptr, "a database is not written");
    std::string result(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
    sqlite3_free(bytes);
    sqlite3_close(db);
    return result;
}

std::unique_ptr<platform::FileReading> file_of(std::string bytes, std::size_t longest_piece)
{
    return std::make_unique<MemoryFile>(std::move(bytes), longest_piece);
}

} // namespace cuedrill::packing
