#include "exchange/importer_fixture.h"

#include "common/errors.h"

#include <new>

namespace cuedrill::exchange {

double SteppingClock::steady_seconds() const
{
    const double present = seconds_;
    seconds_ += step;
    return present;
}

void FillingDisk::commit()
{
    if (transaction_depth() == 1 && commits_left && (*commits_left)-- <= 0) {
        commits_left = 0;
        throw platform::DatabaseError(platform::DatabaseErrorKind::full, 13, failure_words);
    }
    RecordingDatabase::commit();
}

ImportFixture::ImportFixture() = default;

ImportFixture::~ImportFixture() = default;

void ImportFixture::SetUp()
{
    path = fakes::CourseBuilder().write(folder);
    course.db_path = path;
    course.apri_db();
    course.set_side_fields();
}

Outcome ImportFixture::import_file(const std::string& file)
{
    Importer importer = importer_of(file);
    return import_with(importer);
}

Outcome ImportFixture::import_with(Importer& importer)
{
    Outcome outcome;
    try {
        while (!importer.step(Importer::usual_step).finished) {
            const Progress& progress = importer.progress();
            expect_nothing_open();
            outcome.stored_at.push_back(stored().size());
            EXPECT_EQ(progress.stored, static_cast<std::int64_t>(outcome.stored_at.back()));
            if (progress.empty)
                outcome.empty.emplace_back(progress.empty->number, progress.empty->lacks);
            if (after_step)
                after_step();
        }
    } catch (const common::Error& error) {
        outcome.failure = error.what();
    } catch (const std::bad_alloc& error) {
        outcome.failure = common::words_of(error);
    }
    expect_nothing_open();
    outcome.progress = importer.progress();
    outcome.summary = importer.report().summary();
    outcome.lines = importer.report().lines();
    return outcome;
}

void ImportFixture::expect_nothing_open() const
{
    EXPECT_EQ(database.transaction_depth(), 0);
    EXPECT_EQ(database.open_recordsets(), 0);
}

std::string ImportFixture::records(int count)
{
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += "@Q@ q" + std::to_string(i) + " @A@ a" + std::to_string(i) + "\r\n";
    return text;
}

} // namespace cuedrill::exchange
