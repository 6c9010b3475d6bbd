#include "platform/qt/qt_marked_text.h"

#include <QTextBlock>
#include <QTextDocument>
#include <gtest/gtest.h>
#include <string>

namespace cuedrill::platform::qt {

namespace {

/// The markup as the toolkit displays it, with bold underlined text in brackets.
std::string shown(std::string_view text, const std::vector<common::TextRange>& marked)
{
    QTextDocument document;
    document.setHtml(to_marked_html(text, marked));
    QString result;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block != document.begin())
            result += "(new block)";
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            const QTextCharFormat format = at.fragment().charFormat();
            EXPECT_EQ(format.font().bold(), format.fontUnderline());
            result += format.fontUnderline() ? "[" + at.fragment().text() + "]" : at.fragment().text();
        }
    }
    return result.replace(QChar(QChar::LineSeparator), '\n').toStdString();
}

TEST(QtMarkedText, OnlyWhatIsMarkedIsBoldAndUnderlined)
{
    EXPECT_EQ(shown("helium", {{1, 3}}), "h[el]ium");
    EXPECT_EQ(shown("helium", {{0, 2}, {4, 6}}), "[he]li[um]");
    EXPECT_EQ(shown("helium", {}), "helium");
}

TEST(QtMarkedText, MarkupOfTheUserIsShownAsItIs)
{
    EXPECT_EQ(shown("<b>a</b> & &amp; \"q\"", {{3, 4}}), "<b>[a]</b> & &amp; \"q\"");
    EXPECT_EQ(shown("a<b", {{1, 2}}), "a[<]b");
}

TEST(QtMarkedText, BlanksAndLineEndsStayAsTheyAre)
{
    EXPECT_EQ(shown("  a   b \r\n\r\n c  ", {{2, 3}}), "  [a]   b \n\n c  ");
    EXPECT_EQ(shown("a  b", {{1, 3}}), "a[  ]b");
    EXPECT_EQ(shown("a\tb\u00a0c\r\n", {}), "a\tb\u00a0c\n");
}

TEST(QtMarkedText, RangesCountCodePointsAndALineEndAsTwo)
{
    EXPECT_EQ(shown("\U0001F600b\r\ncd", {{0, 1}}), "[\U0001F600]b\ncd");
    EXPECT_EQ(shown("\U0001F600b\r\ncd", {{1, 2}, {5, 6}}), "\U0001F600[b]\nc[d]");
    EXPECT_EQ(shown("ab\r\ncd", {{1, 5}}), "a[b\nc]d");
}

TEST(QtMarkedText, RangesMayOverlapAndReachBeyondTheEnd)
{
    EXPECT_EQ(shown("helium", {{3, 9}, {2, 4}, {40, 50}, {1, 1}}), "he[lium]");
}

} // namespace

} // namespace cuedrill::platform::qt
