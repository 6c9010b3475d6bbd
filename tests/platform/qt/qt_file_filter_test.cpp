#include "platform/qt/qt_file_filter.h"

#include <gtest/gtest.h>

namespace cuedrill::platform::qt {

namespace {

TEST(FileFilter, TakesPairsOfDescriptionAndPatterns)
{
    struct Case {
        const char* filter;
        QStringList expected;
    };
    const Case cases[] = {
        {"", {}},
        {"Only a description", {}},
        {"Text file (*.txt)|*.txt", {"Text file (*.txt)"}},
        {"Text file|*.txt", {"Text file (*.txt)"}},
        {"Text file (*.txt)|*.txt|All files (*.*)|*.*", {"Text file (*.txt)", "All files (*)"}},
        {"Texts|*.txt;*.text", {"Texts (*.txt *.text)"}},
        {"Texts|", {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(to_name_filters(c.filter), c.expected) << c.filter;
}

} // namespace

} // namespace cuedrill::platform::qt
