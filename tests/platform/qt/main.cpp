#include "platform/qt/qt_look.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Not on the screen of whoever runs the tests by hand, unless asked to.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // What a text measures must not depend on the fonts that are installed.
    qputenv("FONTCONFIG_FILE", CUEDRILL_TEST_FONTS);
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    cuedrill::platform::qt::set_up_application();
    return RUN_ALL_TESTS();
}
