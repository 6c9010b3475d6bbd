// Sends real signals to the test program itself, and reports the end of the session through the toolkit's own signal.

#include "common/errors.h"
#include "platform/qt/qt_session_end.h"
#include "platform/qt/qt_test_tools.h"

#include <csignal>

namespace cuedrill::platform::qt {

namespace {

class QtSessionEndTest : public QtTest {
protected:
    static bool is_handled(int signal)
    {
        struct sigaction action = {};
        ::sigaction(signal, nullptr, &action);
        return action.sa_handler != SIG_DFL && action.sa_handler != SIG_IGN;
    }

    QtGuard guard;
    int ends = 0;
};

TEST_F(QtSessionEndTest, EverySignalOfEndRunsTheHookOnceAndEndsTheProgram)
{
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        QtGuard own_guard;
        ends = 0;
        const QtSessionEnd session_end(own_guard, [this] { ++ends; });
        ASSERT_EQ(std::raise(signal), 0);
        EXPECT_EQ(ends, 0) << "the hook must not run inside the signal handler";
        QCoreApplication::processEvents();
        EXPECT_EQ(ends, 1);
        EXPECT_TRUE(own_guard.ending());
        forget_end();
    }
}

TEST_F(QtSessionEndTest, TheProgramEndsAlsoWhenTheHookFails)
{
    std::string reported;
    guard.on_error = [&](const std::exception& error) { reported = error.what(); };
    const QtSessionEnd session_end(guard, [] { throw std::runtime_error("disk full"); });
    std::raise(SIGTERM);
    QCoreApplication::processEvents();
    EXPECT_EQ(reported, "disk full");
    EXPECT_TRUE(guard.ending());
}

TEST_F(QtSessionEndTest, ASecondSignalOfTheSameKindIsTheSystems)
{
    const QtSessionEnd session_end(guard, [] {});
    EXPECT_TRUE(is_handled(SIGTERM));
    std::raise(SIGTERM);
    EXPECT_FALSE(is_handled(SIGTERM));
    QCoreApplication::processEvents();
}

TEST_F(QtSessionEndTest, AnIgnoredSignalStaysIgnoredAndAllAreGivenBack)
{
    const auto earlier = std::signal(SIGHUP, SIG_IGN);
    {
        const QtSessionEnd session_end(guard, [this] { ++ends; });
        std::raise(SIGHUP);
        QCoreApplication::processEvents();
        EXPECT_TRUE(is_handled(SIGTERM));
    }
    EXPECT_EQ(ends, 0);
    EXPECT_EQ(std::signal(SIGHUP, earlier), SIG_IGN);
    EXPECT_FALSE(is_handled(SIGTERM));
}

} // namespace

} // namespace cuedrill::platform::qt
