#include "common/errors.h"
#include "exchange/question_file.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::exchange {
namespace {

/// A file in memory that changes after it has been read once, or fails after some reads.
class UnsteadyFile : public platform::FileReading {
public:
    UnsteadyFile(std::string bytes, std::string later) : bytes_(std::move(bytes)), later_(std::move(later)) {}

    std::uint64_t reads_left = 1'000'000;
    std::size_t longest_piece = 0;

    [[nodiscard]] std::uint64_t size() const override { return bytes_.size(); }
    [[nodiscard]] std::string read(std::size_t most) override
    {
        if (reads_left-- == 0)
            throw common::Error("The disk cannot be read.");
        std::string piece = bytes_.substr(at_, most);
        at_ += piece.size();
        longest_piece = std::max(longest_piece, piece.size());
        return piece;
    }
    void rewind() override
    {
        bytes_ = later_;
        at_ = 0;
    }
    void go_to(std::uint64_t place) override { at_ = static_cast<std::size_t>(place); }

private:
    std::string bytes_;
    std::string later_;
    std::size_t at_ = 0;
};

class QuestionFileTest : public testing::Test {
protected:
    /// Reads the file to its end.
    void read_all(const std::string& bytes, const std::string& later)
    {
        QuestionFile file(begin(bytes, later));
        for (auto step = file.step(); step != QuestionFile::Step::end; step = file.step()) {
            if (step == QuestionFile::Step::record)
                records.push_back(file.record());
        }
        EXPECT_EQ(file.step(), QuestionFile::Step::end) << "it stays at its end";
        has_question = file.has_question();
    }

    std::unique_ptr<UnsteadyFile> begin(const std::string& bytes, const std::string& later)
    {
        auto reading = std::make_unique<UnsteadyFile>(bytes, later);
        unsteady = reading.get();
        return reading;
    }

    UnsteadyFile* unsteady = nullptr; ///< valid while the file is being read
    std::vector<ReadRecord> records;
    bool has_question = false;
};

TEST_F(QuestionFileTest, counts_bytes_as_unreadable_that_have_come_since_it_was_surveyed)
{
    read_all("@Q@ a @A@ b", "@Q@ caf\xE9 @A@ b");
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].question.text, "caf\uFFFD");
    EXPECT_EQ(records[0].question.unreadable, 1U);
}

TEST_F(QuestionFileTest, that_shrinks_meanwhile_ends_where_it_ends)
{
    read_all("@Q@ a @A@ b @Q@ c @A@ d", "@Q@ a @A@");
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].answer.text, "");
    EXPECT_TRUE(has_question);
}

TEST_F(QuestionFileTest, gives_the_records_before_a_failure)
{
    std::string text;
    while (text.size() < 100'000)
        text += "@Q@ a @A@ b\r\n";
    QuestionFile file(begin(text, text));
    unsteady->reads_left = 4; // the survey takes two
    std::size_t found = 0;
    const auto read_on = [&] {
        for (auto step = file.step(); step != QuestionFile::Step::end; step = file.step())
            found += step == QuestionFile::Step::record ? 1U : 0U;
    };
    EXPECT_THROW(read_on(), common::Error);
    EXPECT_GT(found, 1000U);
    EXPECT_LT(found, text.size() / 13);
}

TEST_F(QuestionFileTest, is_read_in_small_pieces_and_says_how_far_it_is)
{
    const std::string text(4'000'000, 'x');
    QuestionFile file(begin(text, text));
    std::vector<int> percents;
    for (auto step = file.step(); step != QuestionFile::Step::end; step = file.step())
        percents.push_back(file.percent().value_or(-1));
    EXPECT_LE(unsteady->longest_piece, 262144U);
    EXPECT_EQ(percents.front(), 0);
    EXPECT_EQ(percents.back(), 100);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_FALSE(file.has_question());
}

TEST_F(QuestionFileTest, that_is_short_does_not_say_how_far_it_is)
{
    EXPECT_EQ(QuestionFile(begin("@Q@ a @A@ b", "")).percent(), std::nullopt);
}

} // namespace
} // namespace cuedrill::exchange
