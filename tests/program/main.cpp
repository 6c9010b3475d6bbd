#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Not on the screen of whoever runs the tests by hand, unless asked to.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
