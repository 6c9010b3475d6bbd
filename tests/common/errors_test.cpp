#include "common/errors.h"

#include <exception>
#include <gtest/gtest.h>
#include <new>
#include <type_traits>

namespace cuedrill::common {
namespace {

static_assert(!std::is_base_of_v<std::exception, ProgramEnded>);
static_assert(std::is_base_of_v<Error, OverflowError> && std::is_base_of_v<Error, OutOfRangeError>);

TEST(ProgramEnd, PassesThroughEveryHandlerOfErrors)
{
    const auto run_guarded = [] {
        try {
            throw ProgramEnded{};
        } catch (const std::exception&) {
            ADD_FAILURE() << "a handler of errors swallowed the end of the program";
        }
    };
    EXPECT_THROW(run_guarded(), ProgramEnded);
}

TEST(WordsOfAnError, AreASentenceAlsoForALackOfMemory)
{
    EXPECT_EQ(words_of(std::bad_alloc()), "There is not enough memory.");
    EXPECT_EQ(words_of(std::bad_array_new_length()), "There is not enough memory.");
    EXPECT_EQ(words_of(Error("A reason.")), "A reason.");
}

TEST(Error, KeepsItsWords)
{
    EXPECT_STREQ(OutOfRangeError("Subscript out of range").what(), "Subscript out of range");
}

} // namespace
} // namespace cuedrill::common
