// Proves that no exception of the logic reaches the toolkit, and that an error or the end of the program has the effect
// that the user should see.

#include "common/errors.h"
#include "platform/qt/qt_guard.h"
#include "platform/qt/qt_test_tools.h"

#include <QDialog>

namespace cuedrill::platform::qt {

namespace {

class QtGuardTest : public QtTest {
protected:
    QtGuardTest()
    {
        guard.on_error = [this](const std::exception& error) { reported.emplace_back(error.what()); };
    }

    QtGuard guard;
    std::vector<std::string> reported;
};

TEST_F(QtGuardTest, RunsTheHandler)
{
    int runs = 0;
    guard.run([&] { ++runs; });
    EXPECT_EQ(runs, 1);
    EXPECT_FALSE(guard.ending());
    EXPECT_TRUE(reported.empty());
}

TEST_F(QtGuardTest, AHandlerThatIsNotSetDoesNothing)
{
    guard.run({});
    EXPECT_TRUE(reported.empty());
}

TEST_F(QtGuardTest, ReportsAnExceptionAndGoesOn)
{
    guard.run([] { throw std::runtime_error("disk full"); });
    EXPECT_EQ(reported, std::vector<std::string>{"disk full"});
    EXPECT_FALSE(guard.ending());
}

TEST_F(QtGuardTest, ReportsWhatIsNoExceptionAsUnknown)
{
    guard.run([] { throw 7; });
    EXPECT_EQ(reported, std::vector<std::string>{"Unknown error"});
}

TEST_F(QtGuardTest, ProgramEndedIsNoErrorAndStopsAllFurtherHandlers)
{
    int runs = 0;
    guard.run([] { throw common::ProgramEnded{}; });
    guard.run([&] { ++runs; });
    EXPECT_TRUE(guard.ending());
    EXPECT_EQ(runs, 0);
    EXPECT_TRUE(reported.empty());
}

TEST_F(QtGuardTest, ProgramEndedInsideAModalLoopReturnsFromAllLoopsWithCodeZero)
{
    bool box_returned = false;
    QTimer::singleShot(0, [&] {
        QDialog box;
        QTimer::singleShot(0, [&] { guard.run([] { throw common::ProgramEnded{}; }); });
        box.exec();
        box_returned = true;
    });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(box_returned);
}

TEST_F(QtGuardTest, AnErrorWhileAnotherIsReportedShowsNoSecondReport)
{
    guard.on_error = [this](const std::exception& error) {
        reported.emplace_back(error.what());
        guard.run([] { throw std::runtime_error("second"); });
    };
    guard.run([] { throw std::runtime_error("first"); });
    EXPECT_EQ(reported, std::vector<std::string>{"first"});
}

TEST_F(QtGuardTest, AReportThatFailsIsNotThrownAndTheNextErrorIsReportedAgain)
{
    int reports = 0;
    guard.on_error = [&](const std::exception&) {
        ++reports;
        throw std::runtime_error("no trace file");
    };
    guard.run([] { throw std::runtime_error("first"); });
    guard.run([] { throw std::runtime_error("second"); });
    EXPECT_EQ(reports, 2);
    EXPECT_FALSE(guard.ending());
}

TEST_F(QtGuardTest, AReportMayEndTheProgram)
{
    guard.on_error = [](const std::exception&) { throw common::ProgramEnded{}; };
    guard.run([] { throw std::runtime_error("first"); });
    EXPECT_TRUE(guard.ending());
}

class QtActionGateTest : public QtGuardTest {
protected:
    QWidget window;
    QtActionGate gate{guard, window};
};

TEST_F(QtActionGateTest, AnActionDuringAnotherOneIsDropped)
{
    int inner = 0;
    bool inner_ran = true;
    EXPECT_TRUE(gate.run([&] { inner_ran = gate.run([&] { ++inner; }); }));
    EXPECT_FALSE(inner_ran);
    EXPECT_EQ(inner, 0);
}

TEST_F(QtActionGateTest, AnActionAfterOneThatFailedRuns)
{
    int runs = 0;
    gate.run([] { throw std::runtime_error("failed"); });
    gate.run([&] { ++runs; });
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(reported.size(), 1U);
}

TEST_F(QtActionGateTest, AnActionBehindAModalBoxIsDropped)
{
    int runs = 0;
    QDialog box;
    QTimer::singleShot(0, [&] {
        gate.run([&] { ++runs; });
        box.reject();
    });
    box.exec();
    EXPECT_EQ(runs, 0);
}

} // namespace

} // namespace cuedrill::platform::qt
