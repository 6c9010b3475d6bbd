#include "platform/qt/qt_look.h"
#include "platform/qt/qt_program_icon.h"
#include "platform/qt/qt_test_tools.h"

#include <QCryptographicHash>
#include <QFile>
#include <QImage>
#include <QMainWindow>
#include <cstdlib>

namespace cuedrill::platform::qt {

namespace {

QImage reference()
{
    return QImage(QStringLiteral(CUEDRILL_ICON_PICTURE)).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// Mean difference of the parts of two pictures of one size, 0 to 255.
double mean_difference(const QImage& one, const QImage& other)
{
    double sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b)) +
                   std::abs(qAlpha(a) - qAlpha(b));
        }
    }
    return sum / (4.0 * one.width() * one.height());
}

QImage drawn(int size)
{
    return program_icon().pixmap(size, size).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// The reference is made of packaging/cuedrill.svg: rsvg-convert -w 128 -h 128 cuedrill.svg -o icons/cuedrill-128.png.
// After a change of that file make all sizes anew, draw the change in qt_program_icon.cpp, and note the new sum here.
TEST(ProgramIcon, IsThePictureThatDesktopsShow)
{
    QFile source(QStringLiteral(CUEDRILL_ICON_SOURCE));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    EXPECT_EQ(QCryptographicHash::hash(source.readAll(), QCryptographicHash::Sha256).toHex().toStdString(),
              "ddee20ccf1bc27ea3496a9b90e61c69320b901ba984201f909b216f72a627dfb");
    ASSERT_EQ(reference().size(), QSize(128, 128));
    EXPECT_LT(mean_difference(drawn(128), reference()), 1);
    EXPECT_GT(mean_difference(drawn(128).mirrored(true, false), reference()), 10) << "the measure finds differences";
}

TEST(ProgramIcon, IsDrawnAnewAtEachSize)
{
    for (const int size : {16, 48, 64, 192, 384})
        EXPECT_EQ(drawn(size).size(), QSize(size, size));
    const QImage enlarged = drawn(64).scaled(192, 192, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_GT(mean_difference(drawn(192), enlarged), 1) << "a small picture is not enlarged";
}

TEST(ProgramIcon, IsThatOfEachWindow)
{
    const QMainWindow window;
    EXPECT_EQ(window.windowIcon().pixmap(64, 64).toImage(), program_icon().pixmap(64, 64).toImage());
    EXPECT_EQ(QGuiApplication::desktopFileName(), "cuedrill");
}

} // namespace

} // namespace cuedrill::platform::qt
