#include "common/errors.h"
#include "platform/archive/packing.h"
#include "platform/archive/unpacked_bytes.h"
#include "platform/archive/zip_archives.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cuedrill::platform::archive {
namespace {

constexpr std::size_t any = 1U << 30U;
constexpr const char* not_a_package = "The file is not a package, or its end is missing.";
constexpr const char* damaged_directory = "The package is damaged: its directory cannot be read.";

std::unique_ptr<Archive> opened(std::string bytes)
{
    return ZipArchives().open(packing::file_of(std::move(bytes)));
}

/// The text of the error that `action` throws; "" if it throws none.
std::string error_of(const std::function<void()>& action)
{
    try {
        action();
        return "";
    } catch (const common::Error& error) {
        return error.what();
    }
}

std::string opening_error(std::string bytes)
{
    return error_of([&] { static_cast<void>(opened(std::move(bytes))); });
}

std::string reading_error(Archive& archive, std::string_view name, std::size_t longest = any)
{
    return error_of([&] { static_cast<void>(archive.read(name, longest)); });
}

std::string about(std::string_view what)
{
    return "The file \"collection\" in the package " + std::string(what) + ".";
}

void put(std::string& bytes, std::size_t place, std::size_t length, std::uint64_t number)
{
    for (std::size_t i = 0; i < length; ++i)
        bytes[place + i] = static_cast<char>(number >> 8U * i & 0xFFU);
}

// Signatures and places of the zip format.
constexpr std::string_view entry_signature = "PK\1\2";
constexpr std::string_view end_signature = "PK\5\6";
constexpr std::size_t local_size = 22;
constexpr std::size_t entry_packed_size = 20;
constexpr std::size_t entry_size = 24;
constexpr std::size_t entry_length = 46;
constexpr std::size_t end_length = 22;

/// An archive with one file, whose size is stated wrongly in both places.
std::string with_size(std::string zip, std::uint32_t size)
{
    put(zip, local_size, 4, size);
    put(zip, zip.find(entry_signature) + entry_size, 4, size);
    return zip;
}

TEST(ZipArchives, list_their_entries_and_read_them)
{
    const auto archive = opened(packing::zip_of({{.name = "collection", .bytes = std::string(100'000, 'x') + "end"},
                                                 {.name = "stored", .bytes = "as it is", .method = 0},
                                                 {.name = "B\xC3\xBC"
                                                          "cher",
                                                  .bytes = ""}}));
    ASSERT_EQ(archive->entries().size(), 3U);
    EXPECT_EQ(archive->entries()[0].name, "collection");
    EXPECT_EQ(archive->entries()[0].size, 100'003U);
    EXPECT_EQ(archive->entries()[2].name, "B\xC3\xBC"
                                          "cher");
    EXPECT_EQ(archive->read("stored", any), "as it is");
    EXPECT_EQ(archive->read("collection", any), std::string(100'000, 'x') + "end");
    EXPECT_EQ(archive->read("collection", any).size(), 100'003U) << "a second time";
    EXPECT_EQ(archive->read("B\xC3\xBC"
                            "cher",
                            0),
              "");
}

TEST(ZipArchives, never_take_a_name_for_a_path)
{
    const auto archive = opened(packing::zip_of({{.name = "../../collection", .bytes = "text"}}));
    EXPECT_EQ(archive->read("../../collection", any), "text");
    EXPECT_EQ(reading_error(*archive, "collection"), about("is missing"));
}

TEST(ZipArchives, refuse_other_files)
{
    EXPECT_EQ(opening_error(""), not_a_package);
    EXPECT_EQ(opening_error("Norway;Oslo\n"), not_a_package);
    EXPECT_EQ(opening_error(std::string(200'000, 'x')), not_a_package);
}

TEST(ZipArchives, refuse_a_file_whose_end_is_missing)
{
    const std::string zip = packing::zip_of({{.name = "collection", .bytes = "text"}});
    for (std::size_t length = 0; length < zip.size(); ++length)
        EXPECT_EQ(opening_error(zip.substr(0, length)), not_a_package) << length;
}

TEST(ZipArchives, refuse_an_entry_that_is_too_long)
{
    const auto archive = opened(packing::zip_of({{.name = "collection", .bytes = std::string(1001, 'x')}}));
    EXPECT_EQ(reading_error(*archive, "collection", 1000), about("has more than 1000 bytes"));
    EXPECT_EQ(reading_error(*archive, "collection", 1001), "");
}

TEST(ZipArchives, refuse_an_entry_that_unpacks_to_far_more_than_it_has)
{
    const std::string harmless(UnpackedBytes::always_allowed, 'x');
    EXPECT_EQ(reading_error(*opened(packing::zip_of({{.name = "collection", .bytes = harmless}})), "collection"), "");
    EXPECT_EQ(reading_error(*opened(packing::zip_of({{.name = "collection", .bytes = harmless + "x"}})), "collection"),
              about("is packed so tightly that it is not an honest file"));
}

TEST(ZipArchives, refuse_an_entry_of_another_size_than_they_state)
{
    for (const std::int32_t method : {0, 8}) {
        const std::string zip =
            packing::zip_of({{.name = "collection", .bytes = std::string(5000, 'x'), .method = method}});
        EXPECT_NE(reading_error(*opened(with_size(zip, 4999)), "collection"), "");
        EXPECT_NE(reading_error(*opened(with_size(zip, 5001)), "collection"), "");
        EXPECT_NE(reading_error(*opened(with_size(zip, 0)), "collection"), "");
        EXPECT_EQ(reading_error(*opened(with_size(zip, 5000)), "collection"), "");
    }
    const std::string deflated = packing::zip_of({{.name = "collection", .bytes = std::string(5000, 'x')}});
    EXPECT_EQ(reading_error(*opened(with_size(deflated, 1)), "collection"), about("is longer than the package says"));
}

TEST(ZipArchives, that_state_a_small_size_do_not_fill_the_memory)
{
    // 40 MiB behind a stated size of 10 bytes: the first piece is one too much.
    const std::string zip = packing::zip_of({{.name = "collection", .bytes = std::string(40U << 20U, 'x')}});
    EXPECT_EQ(reading_error(*opened(with_size(zip, 10)), "collection"), about("is longer than the package says"));
}

TEST(ZipArchives, refuse_a_damaged_entry)
{
    std::string zip = packing::zip_of({{.name = "collection", .bytes = "Norway? Oslo", .method = 0}});
    zip[zip.find("Oslo")] = 'A';
    EXPECT_EQ(reading_error(*opened(zip), "collection"), about("is damaged"));
}

TEST(ZipArchives, refuse_an_entry_that_lies_outside_of_the_file)
{
    std::string zip = packing::zip_of({{.name = "collection", .bytes = "text", .method = 0}});
    const std::size_t entry = zip.find(entry_signature);
    put(zip, entry + entry_packed_size, 4, 0x7FFFFFFF);
    put(zip, entry + entry_size, 4, 0x7FFFFFFF);
    const std::string error =
        error_of([&] { static_cast<void>(opened(zip)->read("collection", std::size_t{1} << 31U)); });
    EXPECT_TRUE(error == about("is damaged") || error == damaged_directory) << error;
}

TEST(ZipArchives, refuse_an_encrypted_entry)
{
    const auto archive =
        opened(packing::zip_of({{.name = "collection", .bytes = "text", .password = "secret"}, {.name = "plain"}}));
    EXPECT_EQ(reading_error(*archive, "collection"), about("is encrypted"));
    EXPECT_EQ(reading_error(*archive, "plain"), "");
}

TEST(ZipArchives, refuse_another_method_of_compression)
{
    const auto archive = opened(
        packing::zip_of({{.name = "collection", .bytes = std::string(1000, 'x'), .method = 12}, {.name = "plain"}}));
    EXPECT_EQ(reading_error(*archive, "collection"), about("is packed by a method that is not known here"));
    EXPECT_EQ(reading_error(*archive, "plain"), "");
}

TEST(ZipArchives, refuse_two_entries_of_one_name)
{
    std::string zip = packing::zip_of({{.name = "collection", .bytes = "a"}, {.name = "kollection", .bytes = "b"}});
    std::replace(zip.begin(), zip.end(), 'k', 'c');
    EXPECT_EQ(opening_error(zip), "The package is damaged: it has two files with the name \"collection\".");
}

/// An archive with `count` entries whose names are `name_length` bytes long. All have the same contents: none.
std::string zip_of_many(std::size_t count, std::size_t name_length)
{
    const std::string one = packing::zip_of({{.name = std::string(name_length, '0')}});
    const std::size_t start = one.find(entry_signature);
    const std::string entry = one.substr(start, entry_length + name_length);
    std::string zip = one.substr(0, start);
    for (std::size_t i = 0; i < count; ++i) {
        zip += entry;
        const std::string number = std::to_string(i);
        zip.replace(zip.size() - number.size(), number.size(), number);
    }
    const std::uint64_t length = zip.size() - start;
    // The end in its long form, the place of that, and the short form, which refers to it.
    std::string end = std::string("PK\6\6") + std::string(52, '\0');
    put(end, 4, 8, 44);
    put(end, 24, 8, count);
    put(end, 32, 8, count);
    put(end, 40, 8, length);
    put(end, 48, 8, start);
    std::string locator = std::string("PK\6\7") + std::string(16, '\0');
    put(locator, 8, 8, zip.size());
    put(locator, 16, 4, 1);
    std::string last = std::string(end_signature) + std::string(end_length - end_signature.size(), '\0');
    put(last, 8, 2, 0xFFFF);
    put(last, 10, 2, 0xFFFF);
    put(last, 12, 4, 0xFFFFFFFF);
    put(last, 16, 4, 0xFFFFFFFF);
    return zip + end + locator + last;
}

TEST(ZipArchives, have_at_most_a_hundred_thousand_entries)
{
    EXPECT_EQ(opened(zip_of_many(most_entries, 6))->entries().size(), most_entries);
    EXPECT_EQ(opening_error(zip_of_many(most_entries + 1, 6)), "The package has too many files.");
}

TEST(ZipArchives, with_a_huge_directory_are_refused_before_it_is_read)
{
    EXPECT_EQ(opening_error(zip_of_many(70'000, 1000)), "The package has too many files.");
}

TEST(ZipArchives, that_state_more_entries_than_they_have_do_not_fill_the_memory)
{
    std::string zip = zip_of_many(3, 6);
    const std::size_t end = zip.find("PK\6\6");
    put(zip, end + 24, 8, 3'000'000'000);
    put(zip, end + 32, 8, 3'000'000'000);
    EXPECT_NE(opening_error(zip), "");
}

/// A file that fails from some call on.
class FailingFile : public FileReading {
public:
    FailingFile(std::unique_ptr<FileReading> file, int calls) : file_(std::move(file)), calls_(calls) {}

    [[nodiscard]] std::uint64_t size() const override { return file_->size(); }
    [[nodiscard]] std::string read(std::size_t most) override
    {
        count();
        return file_->read(most);
    }
    void rewind() override
    {
        count();
        file_->rewind();
    }
    void go_to(std::uint64_t place) override
    {
        count();
        file_->go_to(place);
    }

private:
    void count()
    {
        if (calls_-- == 0)
            throw common::Error("The disk has failed.");
    }

    std::unique_ptr<FileReading> file_;
    int calls_;
};

TEST(ZipArchives, pass_on_why_the_file_cannot_be_read)
{
    const std::string zip = packing::zip_of({{.name = "collection", .bytes = std::string(3000, 'x'), .method = 0}});
    int calls = 0;
    for (;; ++calls) {
        const std::string error = error_of([&] {
            const auto archive = ZipArchives().open(std::make_unique<FailingFile>(packing::file_of(zip), calls));
            EXPECT_EQ(archive->read("collection", any).size(), 3000U);
        });
        if (error.empty())
            break;
        EXPECT_EQ(error, "The disk has failed.") << calls;
    }
    EXPECT_GT(calls, 4);
}

TEST(ZipArchives, survive_any_changed_byte)
{
    const std::string zip =
        packing::zip_of({{.name = "collection", .bytes = "Norway? Oslo. Peru? Lima. Norway? Oslo. Peru? Lima."}});
    std::size_t opened_all_the_same = 0;
    for (std::size_t place = 0; place < zip.size(); ++place) {
        for (const unsigned change : {0x01U, 0x80U, 0xFFU}) {
            std::string changed = zip;
            changed[place] = static_cast<char>(static_cast<unsigned char>(changed[place]) ^ change);
            try {
                const auto archive = opened(changed);
                ++opened_all_the_same;
                for (const ArchiveEntry& entry : archive->entries())
                    EXPECT_EQ(archive->read(entry.name, any).size(), entry.size) << place;
            } catch (const common::Error& error) {
                EXPECT_NE(std::string_view(error.what()), "") << place;
            }
        }
    }
    EXPECT_GT(opened_all_the_same, 0U);
}

} // namespace
} // namespace cuedrill::platform::archive
