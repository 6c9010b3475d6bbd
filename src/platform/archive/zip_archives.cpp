#include "platform/archive/zip_archives.h"

#include "common/errors.h"
#include "platform/archive/unpacked_bytes.h"
#include "platform/archive/zip_source.h"
#include "platform/archive/zstandard.h"

#include <algorithm>
#include <new>
#include <set>
#include <utility>
#include <vector>
#include <zip.h>

namespace cuedrill::platform::archive {
namespace {

/// Bytes that are unpacked at once.
constexpr std::size_t piece_size = 65536;

constexpr const char* too_many = "The package has too many files.";
constexpr const char* not_a_package = "The file is not a package, or its end is missing.";
constexpr const char* damaged_directory = "The package is damaged: its directory cannot be read.";

struct Closed {
    void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
    void operator()(zip_file_t* entry) const noexcept { zip_fclose(entry); }
};

struct LibraryError : zip_error_t {
    LibraryError() : zip_error_t() { zip_error_init(this); }
    LibraryError(const LibraryError&) = delete;
    LibraryError& operator=(const LibraryError&) = delete;
    ~LibraryError() { zip_error_fini(this); }
};

/// What a zip archive says of an entry.
struct Stated {
    std::uint64_t packed = 0;
    bool usual_method = false;
    bool encrypted = false;
};

class ZipArchive : public Archive {
public:
    explicit ZipArchive(std::unique_ptr<FileReading> file) : source_(std::move(file))
    {
        // libzip takes an empty file for an archive without entries.
        if (source_.size() == 0)
            throw common::Error(not_a_package);
        open();
        list_entries();
    }

    [[nodiscard]] const std::vector<ArchiveEntry>& entries() const override { return entries_; }
    [[nodiscard]] std::string read(std::string_view name, std::size_t longest) override;

private:
    void open();
    void list_entries();

    ZipSource source_; ///< must outlive the archive
    std::unique_ptr<zip_t, Closed> archive_;
    std::vector<ArchiveEntry> entries_;
    std::vector<Stated> stated_; ///< of the entries in the same order
};

void ZipArchive::open()
{
    LibraryError error;
    zip_source_t* const source = source_.make(error);
    if (source == nullptr)
        throw std::bad_alloc();
    source_.limit_reading(longest_directory);
    archive_.reset(zip_open_from_source(source, ZIP_RDONLY, &error));
    if (archive_ == nullptr) {
        zip_source_free(source);
        source_.rethrow();
        if (source_.limit_reached())
            throw common::Error(too_many);
        const int code = zip_error_code_zip(&error);
        if (code == ZIP_ER_MEMORY)
            throw std::bad_alloc();
        throw common::Error(code == ZIP_ER_NOZIP ? not_a_package : damaged_directory);
    }
    source_.limit_reading(UINT64_MAX);
}

void ZipArchive::list_entries()
{
    const zip_int64_t count = zip_get_num_entries(archive_.get(), 0);
    if (count < 0 || static_cast<std::uint64_t>(count) > most_entries)
        throw common::Error(too_many);
    std::set<std::string> names;
    for (zip_int64_t place = 0; place < count; ++place) {
        zip_stat_t stat;
        constexpr zip_uint64_t needed =
            ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;
        if (zip_stat_index(archive_.get(), static_cast<zip_uint64_t>(place), 0, &stat) != 0 ||
            (stat.valid & needed) != needed)
            throw common::Error(damaged_directory);
        if (!names.insert(stat.name).second)
            throw common::Error("The package is damaged: it has two files with the name \"" + std::string(stat.name) +
                                "\".");
        entries_.push_back({.name = stat.name, .size = stat.size});
        stated_.push_back({.packed = stat.comp_size,
                           .usual_method = stat.comp_method == ZIP_CM_STORE || stat.comp_method == ZIP_CM_DEFLATE,
                           .encrypted = stat.encryption_method != ZIP_EM_NONE});
    }
}

std::string ZipArchive::read(std::string_view name, std::size_t longest)
{
    const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                    [name](const ArchiveEntry& candidate) { return candidate.name == name; });
    if (entry == entries_.end())
        throw common::Error(about_entry(name, "is missing"));
    const auto place = static_cast<std::size_t>(entry - entries_.begin());
    const Stated& stated = stated_[place];
    if (stated.encrypted)
        throw common::Error(about_entry(name, "is encrypted"));
    if (!stated.usual_method)
        throw common::Error(about_entry(name, "is packed by a method that is not known here"));
    UnpackedBytes result(name, stated.packed, longest);
    result.expect(entry->size);

    const auto fail = [&] {
        source_.rethrow();
        throw common::Error(about_entry(name, "is damaged"));
    };
    const std::unique_ptr<zip_file_t, Closed> file(
        zip_fopen_index(archive_.get(), static_cast<zip_uint64_t>(place), 0));
    if (file == nullptr)
        fail();
    std::string piece(piece_size, '\0');
    for (;;) {
        const zip_int64_t read = zip_fread(file.get(), piece.data(), piece.size());
        if (read < 0)
            fail();
        if (read == 0)
            break;
        if (result.size() + static_cast<std::size_t>(read) > entry->size)
            throw common::Error(about_entry(name, "is longer than the package says"));
        result.add(std::string_view(piece).substr(0, static_cast<std::size_t>(read)));
    }
    if (result.size() != entry->size)
        throw common::Error(about_entry(name, "is shorter than the package says"));
    return result.take();
}

} // namespace

std::unique_ptr<Archive> ZipArchives::open(std::unique_ptr<FileReading> file) const
{
    return std::make_unique<ZipArchive>(std::move(file));
}

std::string ZipArchives::unpack_zstandard(std::string_view frames, std::size_t longest) const
{
    return archive::unpack_zstandard(frames, longest);
}

} // namespace cuedrill::platform::archive
