// What colours tell must be seen by everybody: the contrasts of texts and parts, and pairs of colours that mean
// different things, for each kind of sight and in both themes.
#include "common/colour.h"
#include "platform/qt/qt_caption_label.h"
#include "platform/qt/qt_contrast.h"
#include "platform/qt/qt_look.h"
#include "platform/qt/qt_style.h"

#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QStyleOptionButton>
#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <tuple>

namespace cuedrill::platform::qt {

namespace {

/// What the rounding of a colour as it is seen may cost.
constexpr double rounding = 0.01;

constexpr std::array sights{Sight::usual, Sight::protanopia, Sight::deuteranopia, Sight::tritanopia};

QPalette light_theme()
{
    QPalette palette = ProgramStyle(QStringLiteral("Fusion")).standardPalette();
    palette.setColor(QPalette::Window, QColor(239, 239, 239));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::Highlight, QColor(48, 140, 198));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette dark_theme()
{
    QPalette palette(QColor(53, 53, 53), QColor(42, 42, 42));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::WindowText, QColor(238, 238, 238));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

/// Difference of two colours in the space L*a*b* of 1976; one of 2 is just seen where they meet.
double difference(const QColor& one, const QColor& other)
{
    using Lab = std::array<double, 3>;
    const auto lab = [](const QColor& colour) -> Lab {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        const auto root = [](double part) { return part > 0.008856 ? std::cbrt(part) : 7.787 * part + 16.0 / 116; };
        const double red = linear(colour.redF());
        const double green = linear(colour.greenF());
        const double blue = linear(colour.blueF());
        const double x = root((0.4124 * red + 0.3576 * green + 0.1805 * blue) / 0.9505);
        const double y = root(0.2126 * red + 0.7152 * green + 0.0722 * blue);
        const double z = root((0.0193 * red + 0.1192 * green + 0.9505 * blue) / 1.089);
        return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
    };
    const Lab a = lab(one);
    const Lab b = lab(other);
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

/// A theme, and a kind of sight.
class ColoursAsSeen : public testing::TestWithParam<std::tuple<bool, Sight>> {
protected:
    ColoursAsSeen() { ProgramStyle(QStringLiteral("Fusion")).polish(theme); }

    [[nodiscard]] QColor seen(const QColor& colour) const { return as_seen(colour, std::get<1>(GetParam())); }
    [[nodiscard]] QColor seen(QPalette::ColorRole role) const { return seen(theme.color(role)); }
    [[nodiscard]] double seen_contrast(const QColor& one, const QColor& other) const
    {
        return contrast(seen(one), seen(other));
    }

    QPalette theme = std::get<0>(GetParam()) ? dark_theme() : light_theme();
    QColor card = blend(theme.color(QPalette::Window), theme.color(QPalette::Base), 0.5);
    QColor target = to_qt(common::light_cyan);
};

TEST_P(ColoursAsSeen, known_and_not_known_answers_differ)
{
    EXPECT_GE(difference(seen(to_qt(common::light_red)), seen(to_qt(common::light_green))), 20);
}

TEST_P(ColoursAsSeen, a_request_and_a_success_differ)
{
    EXPECT_GE(difference(seen(to_qt(common::pure_red)), seen(to_qt(common::pure_green))), 20);
}

TEST_P(ColoursAsSeen, the_target_row_stands_out_by_its_line_or_its_ground)
{
    EXPECT_GE(std::max(seen_contrast(target, card), seen_contrast(outline_of(target), card)), part_contrast - rounding);
}

TEST_P(ColoursAsSeen, black_text_can_be_read_on_each_background_or_on_its_plate)
{
    for (const common::Colour colour :
         {common::light_red, common::light_green, common::pure_red, common::pure_green, common::light_cyan}) {
        const QColor background = to_qt(colour);
        const QColor ground = takes_black_text(background) ? background : plate_of(background);
        EXPECT_GE(seen_contrast(Qt::black, ground), text_contrast - rounding) << background.name().toStdString();
    }
}

TEST_P(ColoursAsSeen, selected_text_can_be_read)
{
    EXPECT_GE(contrast(seen(QPalette::HighlightedText), seen(QPalette::Highlight)), text_contrast - rounding);
}

TEST_P(ColoursAsSeen, the_filled_part_of_a_bar_differs_from_the_rest)
{
    EXPECT_GE(seen_contrast(bar_fill(theme), bar_track(theme)), part_contrast - rounding);
    QPalette row = theme;
    row.setColor(QPalette::Window, target);
    row.setColor(QPalette::WindowText, Qt::black);
    EXPECT_GE(seen_contrast(bar_fill(row), bar_track(row)), part_contrast - rounding);
}

TEST_P(ColoursAsSeen, the_focus_ring_differs_from_what_is_around_it)
{
    for (const QColor& ground : {theme.color(QPalette::Window), theme.color(QPalette::Base), card})
        EXPECT_GE(seen_contrast(focus_colour(theme), ground), part_contrast - rounding);
}

TEST_P(ColoursAsSeen, the_line_around_a_box_differs_from_both_sides)
{
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base})
        EXPECT_GE(seen_contrast(hairline(theme), theme.color(role)), part_contrast - rounding);
}

INSTANTIATE_TEST_SUITE_P(Themes, ColoursAsSeen, testing::Combine(testing::Bool(), testing::ValuesIn(sights)));

TEST(Contrast, is_that_of_the_guidelines)
{
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(contrast(QColor(118, 118, 118), Qt::white), 4.54, 0.01);
    EXPECT_NEAR(contrast(Qt::red, Qt::red), 1, 0.001);
}

TEST(Contrast, of_black_on_red_is_lost_without_the_cones_for_long_waves)
{
    EXPECT_NEAR(contrast(Qt::black, as_seen(Qt::red, Sight::usual)), 5.25, 0.02);
    EXPECT_NEAR(contrast(Qt::black, as_seen(Qt::red, Sight::protanopia)), 3.3, 0.1);
    EXPECT_FALSE(takes_black_text(Qt::red));
    EXPECT_TRUE(takes_black_text(Qt::green));
}

TEST(Contrast, of_greys_is_the_same_for_every_sight)
{
    for (const Sight sight : sights)
        EXPECT_LT(difference(as_seen(QColor(120, 120, 120), sight), QColor(120, 120, 120)), 1);
}

TEST(Contrast, is_reached_by_the_nearest_colour_and_no_other)
{
    EXPECT_EQ(with_contrast(Qt::blue, Qt::white, text_contrast), QColor(Qt::blue));
    const QColor darker = with_contrast(QColor(48, 140, 198), Qt::white, text_contrast);
    EXPECT_GE(least_contrast(darker, Qt::white), text_contrast);
    EXPECT_LT(least_contrast(darker, Qt::white), text_contrast + 0.5);
    const QColor lighter = with_contrast(QColor(40, 60, 120), Qt::black, text_contrast);
    EXPECT_GE(contrast(lighter, Qt::black), text_contrast);
    EXPECT_EQ(with_contrast(Qt::gray, Qt::gray, 21), QColor(Qt::black)) << "no colour has it";
}

TEST(PaintedColours, put_the_text_of_a_request_on_a_plate)
{
    CaptionLabel label;
    label.resize(300, 26);
    label.setAlignment(Qt::AlignCenter);
    label.setText(QStringLiteral("iiiiiiiiii"));
    set_fixed_background(label, common::pure_red);
    const QImage picture = label.grab().toImage();
    EXPECT_EQ(picture.pixelColor(20, 13), QColor(255, 0, 0));
    EXPECT_EQ(picture.pixelColor(150, 5), plate_of(Qt::red));
    label.clear();
    EXPECT_EQ(label.grab().toImage().pixelColor(150, 5), QColor(255, 0, 0));
}

TEST(PaintedColours, show_the_focus_of_a_button)
{
    const ProgramStyle style(QStringLiteral("Fusion"));
    const auto drawn = [&](QStyle::State state) {
        QImage picture(80, 24, QImage::Format_RGB32);
        picture.fill(light_theme().color(QPalette::Window));
        QStyleOptionButton option;
        option.rect = picture.rect();
        option.palette = light_theme();
        option.state = QStyle::State_Enabled | state;
        QPainter painter(&picture);
        style.drawControl(QStyle::CE_PushButton, &option, &painter, nullptr);
        return picture;
    };
    const QPoint edge(40, 1);
    const QColor ring = focus_colour(light_theme());
    EXPECT_LT(difference(drawn(QStyle::State_HasFocus).pixelColor(edge), ring), 10);
    EXPECT_GT(difference(drawn(QStyle::State_None).pixelColor(edge), ring), 20);
}

} // namespace

} // namespace cuedrill::platform::qt
