#include "common/errors.h"
#include "store/course_transaction.h"
#include "torture/course_check.h"
#include "torture/effort.h"
#include "torture/failing_disk.h"
#include "torture/script.h"
#include "torture/watched_disk.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

// Lets each call of the engine fail in turn, once and from then on, in each operation. The program must never tell a
// falsehood: what it calls stored is stored, what it calls not stored is not. When the disk works again, so does the
// operation, on the same open course.
namespace cuedrill::torture {
namespace {

enum class Told { stored, not_stored, unknown };

constexpr const char* broken_word = "the program has told a falsehood";

class Faults : public testing::TestWithParam<Operation> {
protected:
    /// Makes a course, and the operation that is tested on it, of this number.
    void begin_round(std::uint64_t number)
    {
        write_image({}, folder.path().string());
        step = {GetParam(), 1 + number * 7919};
        Session session(path);
        session.create();
        session.open();
        Script script(number);
        for (int i = 0; i < 40; ++i)
            session.perform(script.next());
        session.perform({Operation::insert, 1});
        session.close();
        Session(path).open(); // in the usual order of texts, so that only the operation under test rebuilds indexes
        base = read_image(folder.path().string());
    }

    void TearDown() override { report("faults", {{"faults", faults}, {"failures", failures}}); }

    /// The program just before the operation.
    [[nodiscard]] std::unique_ptr<Session> begin()
    {
        write_image(base, folder.path().string());
        auto session = std::make_unique<Session>(path);
        session->open();
        if (step.operation == Operation::undo)
            session->perform({Operation::know, step.number});
        session->let_time_pass(step);
        return session;
    }

    /// The state in which the course would be found if the program were killed now.
    [[nodiscard]] std::string state() { return check.dump(read_image(folder.path().string())); }

    void find_out_states()
    {
        const bool changes_rows = step.operation < Operation::reopen;
        // Now and then an operation changes nothing: a verdict that came too early leaves nothing to undo.
        for (int attempts = 0; attempts < 20; ++attempts, ++step.number) {
            const auto session = begin();
            before = state();
            session->carry_out(step);
            after = state();
            if ((before != after) == changes_rows)
                return;
        }
        FAIL() << "the operation does nothing, so its failures show nothing";
    }

    [[nodiscard]] Told try_step(Session& session)
    {
        try {
            session.carry_out(step);
            return Told::stored;
        } catch (const store::OutcomeUnknown&) {
            return Told::unknown;
        } catch (const common::Error&) {
            return Told::not_stored;
        }
    }

    /// The state with the records that the import calls stored: those of the operation come last.
    [[nodiscard]] std::string with_imported(std::int64_t stored) const
    {
        std::size_t end = after.find("\n\n") + 1;
        const std::size_t params = end;
        const std::string records = after.substr(0, end);
        for (auto left = std::count(records.begin(), records.end(), '\n') - rows_before() - stored; left > 0; --left)
            end = after.rfind('\n', end - 2) + 1;
        return after.substr(0, end) + after.substr(params);
    }

    [[nodiscard]] std::int64_t rows_before() const
    {
        const std::string records = before.substr(0, before.find("\n\n") + 1);
        return std::count(records.begin(), records.end(), '\n');
    }

    [[nodiscard]] bool may_be(const std::string& found, Told told, const exchange::Progress& progress) const
    {
        if (step.operation == Operation::import_group)
            return found == with_imported(progress.stored) ||
                   (told == Told::unknown && found == with_imported(progress.stored + progress.unknown));
        return (told != Told::not_stored && found == after) || (told != Told::stored && found == before);
    }

    /// The same once more, on the same course, with a disk that works.
    void try_again(Session& session, const std::string& found, const std::string& where)
    {
        const bool stands = found != before || before == after;
        try {
            session.carry_out(step);
            if (!stands && state() != after)
                fail(where + ": the repetition does not store the operation");
        } catch (const store::RecordGone&) {
            if (!stands)
                fail(where + ": the record is gone");
        } catch (const common::Error& error) {
            fail(where + ": the repetition fails: " + error.what());
        }
    }

    void fail(const std::string& complaint)
    {
        ++failures;
        ADD_FAILURE() << name_of(step.operation) << ", seed " << seed() << ", " << complaint;
    }

    /// @return false when the operation has no such call any more.
    bool fail_at(const Fault& fault, int point, bool from_then_on)
    {
        const std::string where =
            std::string(fault.name) + (from_then_on ? " from call " : " at call ") + std::to_string(point);
        const auto session = begin();
        disk.arm(fault, point, from_then_on);
        const Told told = try_step(*session);
        disk.disarm();
        if (!disk.has_failed())
            return false;
        ++faults;
        try {
            const std::string found = state();
            if (!may_be(found, told, session->import_progress()))
                fail(where + ": " + broken_word + " (" + std::to_string(static_cast<int>(told)) + ")");
            else if (told != Told::stored)
                try_again(*session, found, where);
        } catch (const common::Error& error) {
            fail(where + ": the course cannot be used: " + error.what());
        }
        return failures < 5;
    }

    fakes::TempFolder folder;
    std::string path = folder.file(course_name);
    DiskImage base;
    CourseCheck check;
    FailingDisk disk;
    WatchedDisk watched{disk};
    Step step;
    std::string before;
    std::string after;
    std::int64_t faults = 0;
    std::int64_t failures = 0;
};

TEST_P(Faults, NeverMakeTheProgramTellAFalsehood)
{
    constexpr std::uint64_t between_rounds = 1'000'003;
    const int rounds = effort(1);
    for (int round = 0; round < rounds && failures < 5; ++round) {
        begin_round(seed() + static_cast<std::uint64_t>(round) * between_rounds);
        find_out_states();
        if (HasFatalFailure())
            return;
        for (const Fault& fault : all_faults()) {
            for (const bool from_then_on : {false, true}) {
                for (int point = 0; fail_at(fault, point, from_then_on); ++point)
                    ASSERT_LT(point, 1000);
            }
        }
    }
    EXPECT_GT(faults, 10 * rounds);
}

INSTANTIATE_TEST_SUITE_P(OfEach, Faults,
                         testing::Values(Operation::know, Operation::know_not, Operation::undo, Operation::show,
                                         Operation::insert, Operation::change, Operation::remove, Operation::reset_all,
                                         Operation::import_group, Operation::invert, Operation::settings,
                                         Operation::work_time, Operation::reopen, Operation::reorder,
                                         Operation::make_aids),
                         [](const auto& one) { return std::string(name_of(one.param)); });

class CreationFaults : public testing::Test {
protected:
    void TearDown() override { report("faults", {{"faults", faults}, {"failures", failures}}); }

    bool fail_at(const Fault& fault, int point, bool from_then_on)
    {
        const fakes::TempFolder folder;
        Session session(folder.file(course_name));
        disk.arm(fault, point, from_then_on);
        bool is_stored = true;
        try {
            session.create();
        } catch (const common::Error&) {
            is_stored = false;
        }
        disk.disarm();
        if (!disk.has_failed())
            return false;
        ++faults;
        const DiskImage image = read_image(folder.path().string());
        std::string complaint;
        if (image.size() != (is_stored ? 1U : 0U))
            complaint = broken_word;
        if (!is_stored && complaint.empty())
            session.create();
        if (complaint.empty())
            complaint = check.complaint(read_image(folder.path().string()), {"\n\n"}, false);
        if (!complaint.empty()) {
            ++failures;
            ADD_FAILURE() << fault.name << " at call " << point << ": " << complaint;
        }
        return true;
    }

    CourseCheck check;
    FailingDisk disk;
    WatchedDisk watched{disk};
    std::int64_t faults = 0;
    std::int64_t failures = 0;
};

TEST_F(CreationFaults, LeaveNoCourseOrAWholeOne)
{
    for (const Fault& fault : all_faults()) {
        for (const bool from_then_on : {false, true}) {
            for (int point = 0; fail_at(fault, point, from_then_on); ++point)
                ASSERT_LT(point, 1000);
        }
    }
    EXPECT_GT(faults, 10);
}

} // namespace
} // namespace cuedrill::torture
