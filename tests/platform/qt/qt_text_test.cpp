#include "platform/qt/qt_text.h"

#include <gtest/gtest.h>

namespace cuedrill::platform::qt {

namespace {

struct PlaceCase {
    std::size_t place;
    int position;
};

TEST(QtText, APlaceCountsCodePointsAndAPositionWhatTheDocumentHolds)
{
    const QString text = to_qt("a\U0001F600") + QStringLiteral("\r\nb\r\n");
    for (const PlaceCase& c :
         {PlaceCase{0, 0}, PlaceCase{1, 1}, PlaceCase{2, 3}, PlaceCase{4, 4}, PlaceCase{5, 5}, PlaceCase{7, 6}}) {
        EXPECT_EQ(to_position(text, c.place), c.position);
        EXPECT_EQ(to_place(text, c.position), c.place);
    }
}

TEST(QtText, APlaceWithinALineEndIsBeforeItAndOneBehindTheTextAtItsEnd)
{
    const QString text = QStringLiteral("ab\r\nc");
    EXPECT_EQ(to_position(text, 3), 2);
    EXPECT_EQ(to_position(text, 6), 4);
    EXPECT_EQ(to_place(text, 100), 5U);
}

TEST(QtText, LineEndsOfBothKindsBecomeCrLf)
{
    EXPECT_EQ(with_cr_lf(QStringLiteral("a\nb\r\n\nc")), "a\r\nb\r\n\r\nc");
}

TEST(QtText, ACaptionWithoutItsAccessKeyKeepsAnAmpersandThatIsShown)
{
    EXPECT_EQ(without_access_key("Next &Question"), "Next Question");
    EXPECT_EQ(without_access_key("&Save && E&xit &"), "Save && Exit ");
    EXPECT_EQ(without_access_key("+"), "+");
}

} // namespace

} // namespace cuedrill::platform::qt
