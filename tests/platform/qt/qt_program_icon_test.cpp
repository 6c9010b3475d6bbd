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

QImage reference(int size)
{
    return QImage(QStringLiteral(CUEDRILL_ICONS "/icons/cuedrill-%1.png").arg(size))
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
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

// The references are made of packaging/cuedrill.svg: rsvg-convert -w 128 -h 128 cuedrill.svg -o icons/cuedrill-128.png.
// After a change of that file make all sizes anew, draw the change in qt_program_icon.cpp, and note the new sum here.
TEST(ProgramIcon, IsThePictureThatDesktopsShow)
{
    QFile source(QStringLiteral(CUEDRILL_ICONS "/cuedrill.svg"));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    EXPECT_EQ(QCryptographicHash::hash(source.readAll(), QCryptographicHash::Sha256).toHex().toStdString(),
              "ddee20ccf1bc27ea3496a9b90e61c69320b901ba984201f909b216f72a627dfb");
    for (const int size : {16, 32, 48, 64, 128, 256}) {
        ASSERT_EQ(reference(size).size(), QSize(size, size));
        // The smallest one has hardly more than edges, which each program smooths in its own way.
        EXPECT_LT(mean_difference(drawn(size), reference(size)), size == 16 ? 3 : 1) << size;
        EXPECT_GT(mean_difference(drawn(size).mirrored(true, false), reference(size)), 10)
            << "the measure finds differences";
    }
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
