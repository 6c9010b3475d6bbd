#include "common/errors.h"
#include "platform/archive/packing.h"
#include "platform/archive/unpacked_bytes.h"
#include "platform/archive/zip_archives.h"
#include "platform/archive/zstandard.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace cuedrill::platform::archive {
namespace {

constexpr std::size_t any = 1U << 30U;
constexpr const char* damaged = "The collection in the package is damaged: it cannot be unpacked.";

/// The text of the error with which the bytes are refused; "" if they are not.
std::string refusal(std::string_view frames, std::size_t longest = any)
{
    try {
        static_cast<void>(ZipArchives().unpack_zstandard(frames, longest));
        return "";
    } catch (const common::Error& error) {
        return error.what();
    }
}

/// Bytes that can hardly be packed.
std::string noise(std::size_t size)
{
    std::string bytes;
    unsigned state = 1;
    while (bytes.size() < size) {
        state = state * 1664525U + 1013904223U;
        bytes += static_cast<char>(state >> 24U);
    }
    return bytes;
}

TEST(Zstandard, gives_back_what_was_packed)
{
    const std::string bytes = noise(1'000'000);
    EXPECT_TRUE(unpack_zstandard(packing::zstandard_of(bytes), any) == bytes);
    EXPECT_TRUE(unpack_zstandard(packing::zstandard_of(bytes, false), any) == bytes) << "the frame states no size";
    EXPECT_EQ(unpack_zstandard(packing::zstandard_of(""), any), "");
}

TEST(Zstandard, gives_all_frames_one_after_the_other)
{
    EXPECT_EQ(unpack_zstandard(packing::zstandard_of("one ") + packing::zstandard_of("two"), any), "one two");
}

TEST(Zstandard, refuses_bytes_of_another_format)
{
    EXPECT_EQ(refusal(""), damaged);
    EXPECT_EQ(refusal("SQLite format 3"), damaged);
    EXPECT_EQ(refusal(packing::zstandard_of("one") + "more"), damaged);
}

TEST(Zstandard, refuses_a_frame_that_ends_early)
{
    const std::string frame = packing::zstandard_of(noise(300));
    for (std::size_t length = 0; length < frame.size(); ++length)
        EXPECT_EQ(refusal(frame.substr(0, length)), damaged) << length;
    EXPECT_EQ(refusal(frame), "");
}

TEST(Zstandard, refuses_more_bytes_than_are_allowed)
{
    const std::string words = "The file \"collection\" in the package has more than 999 bytes.";
    EXPECT_EQ(refusal(packing::zstandard_of(noise(1000)), 999), words);
    EXPECT_EQ(refusal(packing::zstandard_of(noise(1000), false), 999), words) << "the frame states no size";
    EXPECT_EQ(refusal(packing::zstandard_of(noise(600)) + packing::zstandard_of(noise(600)), 999), words);
    EXPECT_EQ(refusal(packing::zstandard_of(noise(999)), 999), "");
}

TEST(Zstandard, refuses_a_frame_that_unpacks_to_far_more_than_it_has)
{
    const std::string words =
        "The file \"collection\" in the package is packed so tightly that it is not an honest file.";
    const std::string harmless(UnpackedBytes::always_allowed, 'x');
    EXPECT_EQ(refusal(packing::zstandard_of(harmless, false)), "");
    EXPECT_EQ(refusal(packing::zstandard_of(harmless + "x", false)), words);
    EXPECT_EQ(refusal(packing::zstandard_of(harmless + "x")), words) << "the frame states its size";
}

TEST(Zstandard, refuses_a_frame_that_states_a_wrong_size)
{
    // A frame of one segment: after the magic number and a byte that says so, the size in one byte.
    std::string frame = packing::zstandard_of("twelve bytes");
    ASSERT_EQ(frame[5], 12);
    frame[5] = 11;
    EXPECT_EQ(refusal(frame), damaged);
    frame[5] = 13;
    EXPECT_EQ(refusal(frame), damaged);
}

TEST(Zstandard, refuses_a_frame_that_needs_much_memory)
{
    EXPECT_EQ(refusal(packing::zstandard_of("short", false, most_window_log)), "");
    EXPECT_EQ(refusal(packing::zstandard_of("short", false, most_window_log + 1)), damaged);
}

} // namespace
} // namespace cuedrill::platform::archive
