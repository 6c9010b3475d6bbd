#include "platform/qt/qt_test_tools.h"
#include "platform/qt/qt_timer.h"

#include <QCoreApplication>
#include <QDialog>
#include <QWidget>
#include <chrono>
#include <vector>

namespace cuedrill::platform::qt {

namespace {

using namespace std::chrono_literals;

class QtTimerTest : public QtTest {
protected:
    QtGuard guard;
    QtTimer timer{guard};
    int ticks = 0;
};

TEST_F(QtTimerTest, TicksAgainAndAgainUntilStopped)
{
    timer.on_tick = [this] {
        if (++ticks == 3) {
            timer.stop();
            QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
        }
    };
    timer.start(0ms);
    QCoreApplication::exec();
    EXPECT_EQ(ticks, 3);
}

TEST_F(QtTimerTest, ATickDuringATickIsLeftOut)
{
    timer.on_tick = [this] {
        ++ticks;
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        timer.stop();
        QCoreApplication::exit(0);
    };
    timer.start(0ms);
    QCoreApplication::exec();
    EXPECT_EQ(ticks, 1);
}

TEST_F(QtTimerTest, AFailingTickIsReportedAndTheNextOneComes)
{
    int reports = 0;
    guard.on_error = [&](const std::exception&) { ++reports; };
    timer.on_tick = [this] {
        if (++ticks == 2)
            QCoreApplication::exit(0);
        throw std::runtime_error("no figures");
    };
    timer.start(0ms);
    QCoreApplication::exec();
    timer.stop();
    EXPECT_EQ(ticks, 2);
    EXPECT_EQ(reports, 2);
}

class IdleTimer : public QtTest {
protected:
    /// Lets the timer tick for a while if it can.
    static void process_events()
    {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }

    QtGuard guard;
    QWidget window;
    QtActionGate gate{guard, window};
    QtTimer timer{gate};
    int ticks = 0;
};

TEST_F(IdleTimer, TicksWhileNothingElseRuns)
{
    timer.on_tick = [this] { ++ticks; };
    timer.start(0ms);
    process_events();
    EXPECT_GT(ticks, 0);
}

TEST_F(IdleTimer, RestsWhileAnActionOfTheUserIsRunning)
{
    timer.on_tick = [this] { ++ticks; };
    timer.start(0ms);
    EXPECT_TRUE(gate.run([] { process_events(); }));
    EXPECT_EQ(ticks, 0);
}

TEST_F(IdleTimer, RestsWhileABoxIsOpen)
{
    timer.on_tick = [this] { ++ticks; };
    timer.start(0ms);
    QDialog box;
    box.setModal(true);
    box.show();
    process_events();
    EXPECT_EQ(ticks, 0);
    box.hide();
    process_events();
    EXPECT_GT(ticks, 0);
}

TEST_F(IdleTimer, WaitsLongerAfterEachSkippedTickAndThenHasItsPeriodAgain)
{
    QtTimer patient(gate, 4ms);
    std::vector<std::chrono::milliseconds> waits{0ms};
    patient.on_tick = [] { QCoreApplication::exit(0); };
    patient.start(0ms);
    QDialog box;
    box.setModal(true);
    box.show();
    for (int i = 0; i < 1000 && patient.wait() < 4ms; ++i) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (patient.wait() != waits.back())
            waits.push_back(patient.wait());
    }
    EXPECT_EQ(waits, (std::vector<std::chrono::milliseconds>{0ms, 1ms, 2ms, 4ms}));
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(patient.wait(), 4ms);
    box.hide();
    QCoreApplication::exec();
    EXPECT_EQ(patient.wait(), 0ms);
}

TEST_F(IdleTimer, HasTheSamePeriodAfterASkippedTickUnlessToldToWait)
{
    timer.start(0ms);
    QDialog box;
    box.setModal(true);
    box.show();
    process_events();
    EXPECT_EQ(timer.wait(), 0ms);
}

} // namespace

} // namespace cuedrill::platform::qt
