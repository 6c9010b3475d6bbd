#include "platform/sqlite/support.h"

#include <ctime>

namespace cuedrill::platform::sqlite::test {
namespace {

/// Needs a millisecond of processor time for each text, as if the machine were slow.
class SlowCompare final : public FoldingCompare {
public:
    [[nodiscard]] std::string fold(std::string_view text) const override
    {
        constexpr std::clock_t pause = CLOCKS_PER_SEC / 1000;
        for (const std::clock_t begun = std::clock(); std::clock() - begun < pause;) {
        }
        return FoldingCompare::fold(text);
    }
};

class Findings : public CourseTest {
protected:
    /// @param compare used for the look at the course only.
    [[nodiscard]] std::vector<std::string> findings(const TextCompare& used)
    {
        database.close();
        SqliteDatabase reading(used, std::chrono::milliseconds(0));
        reading.open_for_reading(path, tables());
        return reading.findings(tables());
    }

    void fill()
    {
        Transaction transaction(database);
        for (int i = 0; i < 120; ++i)
            add("question " + std::to_string(i));
        transaction.commit();
    }
};

/// A single statement has a second and a half in a file of which nothing is known.
TEST_F(Findings, AreNoneInASoundCourseHoweverLongTheLookTakes)
{
    fill();
    const SlowCompare slow;
    EXPECT_EQ(findings(slow), std::vector<std::string>());
    EXPECT_GT(slow.foldings, 2000U) << "less than two seconds prove nothing";
}

TEST_F(Findings, TellOfATableThatWasMadeElsewhereAndTakesTooLong)
{
    fill();
    database.close();
    RawConnection(path).run("create table other (x)");
    EXPECT_EQ(findings(SlowCompare()), std::vector<std::string>{"It would take too long to be looked through."});
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
