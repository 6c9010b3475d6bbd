// Salvage of a small course in which each page is overwritten in turn.
#include "fakes/course_builder.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "keep/salvage.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/sqlite_database.h"
#include "store/schema.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::keep {
namespace {

constexpr std::size_t page_size = 4096;

class Salvage : public testing::Test {
protected:
    void write(int records, int every = 1)
    {
        fakes::CourseBuilder builder;
        for (int i = 1; i <= records; ++i)
            builder.question("question " + std::to_string(i), "answer " + std::to_string(i))
                .number(i * every)
                .level(i % 5)
                .attempts(i % 9)
                .inverted()
                .level(i % 3);
        builder.text_param("course_title", "Capitals").number_param("time_ever", 77);
        path = builder.write(folder);
        bytes = folder.read("course.crs");
        before = fakes::read_course(path);
    }

    /// Salvages the file as it is; nothing if the engine cannot even read its tables.
    std::optional<Salvaged> run()
    {
        platform::sqlite::SqliteDatabase damaged(compare);
        try {
            damaged.open_for_reading(path, store::course_tables());
        } catch (const platform::DatabaseError&) {
            return std::nullopt;
        }
        fresh_engine = std::make_unique<fakes::RealEngine>();
        std::remove(folder.file("new.crs").c_str());
        store::create_course_db(fresh_engine->database, folder.file("new.crs"));
        const Salvaged salvaged = salvage(damaged, fresh_engine->database);
        after = fakes::contents_of(fresh_engine->database);
        return salvaged;
    }

    void overwrite(std::size_t page, std::size_t pages = 1)
    {
        std::string damaged = bytes;
        damaged.replace((page - 1) * page_size, pages * page_size, std::string(pages * page_size, '\xee'));
        folder.write("course.crs", damaged);
    }

    /// The records that the engine finds by their numbers, one at a time.
    std::int64_t reachable()
    {
        platform::sqlite::SqliteDatabase damaged(compare);
        damaged.open_for_reading(path, store::course_tables());
        std::int64_t count = 0;
        for (const fakes::QaRow& row : before.qa) {
            try {
                count += static_cast<std::int64_t>(damaged.query("Select * from qa where cnt = ?1", {row.cnt}).size());
            } catch (const platform::DatabaseError&) {
                continue;
            }
        }
        return count;
    }

    /// Every record of the new course is as it was, but for what the indexes do not know.
    void expect_true_records(const Salvaged& salvaged) const
    {
        std::int64_t whole = 0;
        for (const fakes::QaRow& row : after.qa) {
            const auto found = std::find_if(before.qa.begin(), before.qa.end(),
                                            [&](const fakes::QaRow& old) { return old.cnt == row.cnt; });
            ASSERT_NE(found, before.qa.end()) << row.cnt;
            whole += *found == row ? 1 : 0;
            fakes::QaRow poorer = *found;
            for (fakes::SideRow* side : {&poorer.q_side, &poorer.a_side}) {
                side->attempts.reset();
                side->fails.reset();
            }
            if (!(*found == row)) {
                EXPECT_EQ(poorer.q, row.q);
                EXPECT_EQ(poorer.a, row.a);
            }
        }
        EXPECT_GE(whole, salvaged.whole);
        EXPECT_EQ(static_cast<std::int64_t>(after.qa.size()), salvaged.records());
    }

    /// Whether the result lists the number as lost.
    static bool is_lost(const Salvaged& salvaged, std::int64_t number)
    {
        return std::any_of(salvaged.lost.begin(), salvaged.lost.end(), [number](const NumberRange& range) {
            return range.first <= number && number <= range.last;
        });
    }

    /// Every record is in the new course, or told as lost.
    void expect_nothing_unmentioned(const Salvaged& salvaged) const
    {
        for (const fakes::QaRow& row : before.qa) {
            const bool kept = std::any_of(after.qa.begin(), after.qa.end(),
                                          [&](const fakes::QaRow& now) { return now.cnt == row.cnt; });
            EXPECT_NE(kept, is_lost(salvaged, row.cnt)) << row.cnt;
        }
    }

    platform::icu::IcuTextCompare compare;
    fakes::TempFolder folder;
    std::unique_ptr<fakes::RealEngine> fresh_engine;
    std::string path;
    std::string bytes;
    fakes::CourseContents before;
    fakes::CourseContents after;
};

TEST_F(Salvage, of_a_sound_course_brings_all_of_it)
{
    write(300);
    const std::optional<Salvaged> salvaged = run();
    ASSERT_TRUE(salvaged);
    EXPECT_TRUE(salvaged->complete());
    EXPECT_EQ(salvaged->whole, 300);
    EXPECT_EQ(after, before);
}

TEST_F(Salvage, keeps_all_readable_records_whichever_page_is_lost)
{
    write(300, 3);
    const std::size_t pages = bytes.size() / page_size;
    ASSERT_GT(pages, 15U);
    std::size_t incomplete = 0;
    for (std::size_t page = 1; page <= pages; ++page) {
        SCOPED_TRACE("page " + std::to_string(page));
        overwrite(page);
        const std::optional<Salvaged> salvaged = run();
        ASSERT_EQ(salvaged.has_value(), page > 1) << "the first page holds the list of the tables";
        if (!salvaged)
            continue;
        EXPECT_EQ(salvaged->whole, reachable());
        EXPECT_EQ(salvaged->records(), 300) << "the indexes have what a page of the table has lost";
        expect_true_records(*salvaged);
        expect_nothing_unmentioned(*salvaged);
        incomplete += salvaged->complete() ? 0U : 1U;
    }
    EXPECT_GT(incomplete, 3U);
}

TEST_F(Salvage, tells_what_is_lost_with_two_pages)
{
    write(300, 3);
    const std::size_t pages = bytes.size() / page_size;
    std::size_t with_loss = 0;
    for (std::size_t page = 2; page + 1 <= pages; page += 2) {
        for (std::size_t second = page + 1; second <= pages; second += 6) {
            SCOPED_TRACE("pages " + std::to_string(page) + " and " + std::to_string(second));
            std::string damaged = bytes;
            for (const std::size_t one : {page, second})
                damaged.replace((one - 1) * page_size, page_size, std::string(page_size, '\xee'));
            folder.write("course.crs", damaged);
            const std::optional<Salvaged> salvaged = run();
            ASSERT_TRUE(salvaged);
            EXPECT_EQ(salvaged->whole, reachable());
            expect_true_records(*salvaged);
            expect_nothing_unmentioned(*salvaged);
            with_loss += salvaged->lost.empty() ? 0U : 1U;
        }
    }
    EXPECT_GT(with_loss, 0U);
}

TEST_F(Salvage, keeps_the_parameters)
{
    write(300);
    overwrite(bytes.size() / page_size);
    const std::optional<Salvaged> salvaged = run();
    ASSERT_TRUE(salvaged);
    EXPECT_TRUE(salvaged->all_parameters);
    EXPECT_EQ(after.params, before.params);
}

TEST_F(Salvage, leaves_out_records_that_no_course_can_hold)
{
    fakes::CourseBuilder builder;
    builder.question("France?");
    builder.question("Italy?").number(40000);
    path = builder.write(folder);
    const std::optional<Salvaged> salvaged = run();
    ASSERT_TRUE(salvaged);
    EXPECT_EQ(salvaged->whole, 1);
    EXPECT_EQ(salvaged->refused, (std::vector<NumberRange>{{40000, 40000}}));
    EXPECT_FALSE(salvaged->complete());
}

TEST_F(Salvage, ends_when_the_new_course_cannot_be_written)
{
    write(300);
    platform::sqlite::SqliteDatabase damaged(compare);
    damaged.open_for_reading(path, store::course_tables());
    fakes::RealEngine engine;
    fakes::RecordingDatabase fresh(engine.database);
    store::create_course_db(fresh, folder.file("new.crs"));
    fresh.fail_at(fakes::Operation::execute, 20);
    EXPECT_THROW(static_cast<void>(salvage(damaged, fresh)), platform::DatabaseError);
    EXPECT_TRUE(fakes::contents_of(engine.database).qa.empty());
}

} // namespace
} // namespace cuedrill::keep
