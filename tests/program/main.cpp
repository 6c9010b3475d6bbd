#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Keeps windows off the screen of a developer who runs the tests, unless requested.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Text widths must not depend on the installed fonts.
    qputenv("FONTCONFIG_FILE", CUEDRILL_TEST_FONTS);
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
