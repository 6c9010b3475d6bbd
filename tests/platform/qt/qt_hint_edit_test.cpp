// Checks the drawing in pictures of the widget, with device pixel ratios 1 and 2.

#include "platform/qt/qt_hint_edit.h"
#include "platform/qt/qt_test_tools.h"
#include "platform/qt/qt_text.h"

#include <QScrollBar>
#include <QTextLayout>

namespace cuedrill::platform::qt {

namespace {

/// The pixels in the cell of one character.
struct CellPicture {
    int ink = 0;             ///< pixels in the text colour
    int ink_above = 0;       ///< pixels in the upper third that differ from the background
    int ink_at_the_edge = 0; ///< pixels at the left edge that differ from the background
};

class HintEditTest : public QtTest {
protected:
    HintEditTest()
    {
        edit.resize(300, 160);
        edit.show();
        edit.activateWindow();
        QCoreApplication::processEvents();
    }

    /// The viewport at this device pixel ratio.
    QImage picture(int scale)
    {
        edit.setCursorWidth(0); // the cursor blinks
        QImage result(edit.viewport()->size() * scale, QImage::Format_RGB32);
        result.setDevicePixelRatio(scale);
        edit.viewport()->render(&result);
        return result;
    }

    CellPicture picture_of(int position, const QColor& text, const QColor& ground, int scale = 1)
    {
        const QImage shown = picture(scale);
        const QRect found = cell_of(edit, position);
        const QRect area(found.topLeft() * scale, found.size() * scale);
        CellPicture result;
        for (int y = area.top() + 1; y < area.bottom(); ++y) {
            for (int x = area.left() + 1; x < area.right(); ++x) {
                const QColor colour = shown.pixelColor(x, y);
                result.ink += colour == text ? 1 : 0;
                result.ink_above += colour != ground && y < area.top() + area.height() / 3 ? 1 : 0;
            }
            result.ink_at_the_edge += shown.pixelColor(area.left(), y) != ground ? 1 : 0;
        }
        return result;
    }

    void show_text(const std::string& text) { edit.show_text(to_qt(text)); }

    void set_colours(const QColor& text, const QColor& ground)
    {
        QPalette palette = edit.palette();
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::Base, ground);
        palette.setColor(QPalette::Highlight, Qt::blue);
        palette.setColor(QPalette::HighlightedText, Qt::yellow);
        edit.setPalette(palette);
    }

    HintEdit edit;
};

TEST_F(HintEditTest, TheChosenWordIsSeenWithAndWithoutTheFocus)
{
    show_text("ant bee");
    edit.set_words({{0, 3}, {4, 7}});
    edit.setFocus();
    const auto ground = [this] { return picture(1).pixelColor(cell_of(edit, 5).topLeft() + QPoint(0, 1)); };
    EXPECT_EQ(ground(), edit.palette().color(QPalette::Base));
    press_key(edit, Qt::Key_End);
    EXPECT_EQ(ground(), edit.palette().color(QPalette::Active, QPalette::Highlight));
    edit.clearFocus();
    EXPECT_EQ(ground(), edit.palette().color(QPalette::Inactive, QPalette::Highlight));
}

TEST_F(HintEditTest, APlaceholderTakesOneCell)
{
    for (const int points : {7, 9, 14, 23}) {
        QFont font = edit.font();
        font.setPointSize(points);
        edit.setFont(font);
        show_text("xxxxxxxx\r\n\x01\x01\x01\x01\x01\x01\x01\x01");
        EXPECT_EQ(cell_of(edit, 7).left(), cell_of(edit, 9 + 7).left()) << points;
        EXPECT_EQ(cell_of(edit, 7).height(), cell_of(edit, 9 + 7).height()) << points;
    }
}

TEST_F(HintEditTest, APlaceholderTakesOneCellAlsoInAFontWithoutFixedPitch)
{
    edit.setFont(QFont("DejaVu Sans", 12));
    show_text("          |\r\n\x01\x01\x01\x01\x01\x01\x01\x01\x01\x01|");
    EXPECT_NEAR(cell_of(edit, 10).left(), cell_of(edit, 12 + 10).left(), 1);
}

TEST_F(HintEditTest, APlaceholderIsALowSquareInTheColourOfTheTextAndABlankIsNone)
{
    show_text("\x01 \x01\r\n\x01");
    for (const auto& [text, ground] :
         {std::pair(QColor(Qt::black), QColor(Qt::white)), std::pair(QColor(Qt::white), QColor(20, 20, 20))}) {
        set_colours(text, ground);
        for (const int position : {0, 2, 4}) {
            for (const int scale : {1, 2}) {
                const CellPicture drawn = picture_of(position, text, ground, scale);
                EXPECT_GE(drawn.ink, 12 * scale * scale) << position << " x" << scale;
                EXPECT_EQ(drawn.ink_above, 0) << position << " x" << scale << ": a glyph of the font shines through";
                EXPECT_EQ(drawn.ink_at_the_edge, 0) << position << " x" << scale;
            }
        }
        EXPECT_EQ(picture_of(1, text, ground).ink, 0);
    }
}

TEST_F(HintEditTest, APlaceholderIsDrawnInASelectionToo)
{
    set_colours(Qt::black, Qt::white);
    show_text("a\x01\x01z");
    edit.selectAll();
    edit.setFocus();
    const CellPicture drawn = picture_of(1, Qt::yellow, Qt::blue);
    EXPECT_GE(drawn.ink, 12);
    EXPECT_EQ(drawn.ink_above, 0) << "a glyph of the font shines through";
}

TEST_F(HintEditTest, APlaceholderIsDrawnInEachLineOfAWrappedTextWhereverItIsScrolledTo)
{
    set_colours(Qt::black, Qt::white);
    std::string text;
    for (int i = 0; i < 200; ++i)
        text += "\x01\x01\x01\x01\x01\x01 ";
    show_text(text);
    EXPECT_GE(picture_of(70, Qt::black, Qt::white).ink, 12);
    EXPECT_GT(cell_of(edit, 70).top(), cell_of(edit, 0).top());
    edit.verticalScrollBar()->setValue(edit.verticalScrollBar()->maximum());
    EXPECT_LT(cell_of(edit, 0).top(), 0);
    EXPECT_GE(picture_of(static_cast<int>(text.size()) - 2, Qt::black, Qt::white).ink, 12);
}

TEST_F(HintEditTest, LinesBreakBetweenWordsOfPlaceholders)
{
    std::string text;
    for (int i = 0; i < 12; ++i)
        text += "\x01\x01\x01\x01\x01\x01 ";
    show_text(text);
    const QTextLayout& layout = *edit.document()->firstBlock().layout();
    ASSERT_GT(layout.lineCount(), 1);
    EXPECT_EQ(layout.lineAt(1).textStart() % 7, 0);
}

} // namespace

} // namespace cuedrill::platform::qt
