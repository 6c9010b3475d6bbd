#include "platform/qt/qt_contrast.h"

#include "platform/qt/qt_look.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace cuedrill::platform::qt {

namespace {

/// Parts of linear light: red, green, blue.
using Light = std::array<double, 3>;
using Matrix = std::array<Light, 3>;

double to_linear(double part)
{
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double from_linear(double part)
{
    const double inside = std::clamp(part, 0.0, 1.0);
    return inside <= 0.0031308 ? inside * 12.92 : 1.055 * std::pow(inside, 1 / 2.4) - 0.055;
}

Light light_of(const QColor& colour)
{
    return {to_linear(colour.redF()), to_linear(colour.greenF()), to_linear(colour.blueF())};
}

double product(const Light& one, const Light& other)
{
    return one[0] * other[0] + one[1] * other[1] + one[2] * other[2];
}

double luminance(const Light& light)
{
    constexpr Light shares{0.2126, 0.7152, 0.0722};
    return product(shares, light);
}

Matrix matrix_of(Sight sight)
{
    switch (sight) {
    case Sight::protanopia:
        return {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}};
    case Sight::deuteranopia:
        return {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}};
    case Sight::tritanopia:
        return {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}};
    case Sight::usual:
        break;
    }
    return {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
}

Light light_as_seen(const Light& light, Sight sight)
{
    const Matrix matrix = matrix_of(sight);
    Light seen{};
    std::transform(matrix.begin(), matrix.end(), seen.begin(),
                   [&](const Light& row) { return std::clamp(product(row, light), 0.0, 1.0); });
    return seen;
}

double contrast_of(const Light& one, const Light& other)
{
    constexpr double flare = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + flare) / (darker + flare);
}

} // namespace

QColor as_seen(const QColor& colour, Sight sight)
{
    const Light seen = light_as_seen(light_of(colour), sight);
    const auto part = [&](std::size_t place) { return static_cast<float>(from_linear(seen.at(place))); };
    return QColor::fromRgbF(part(0), part(1), part(2));
}

double contrast(const QColor& one, const QColor& other)
{
    return contrast_of(light_of(one), light_of(other));
}

double least_contrast(const QColor& one, const QColor& other)
{
    const Light first = light_of(one);
    const Light second = light_of(other);
    double least = contrast_of(first, second);
    for (const Sight sight : {Sight::protanopia, Sight::deuteranopia, Sight::tritanopia})
        least = std::min(least, contrast_of(light_as_seen(first, sight), light_as_seen(second, sight)));
    return least;
}

QColor with_contrast(const QColor& colour, const QColor& ground, double least)
{
    constexpr int steps = 50;
    const QColor end = contrast(Qt::black, ground) >= contrast(Qt::white, ground) ? Qt::black : Qt::white;
    for (int step = 0; step < steps; ++step) {
        const QColor changed = blend(colour, end, static_cast<double>(step) / steps);
        if (least_contrast(changed, ground) >= least)
            return changed;
    }
    return end;
}

bool takes_black_text(const QColor& ground)
{
    return least_contrast(Qt::black, ground) >= text_contrast;
}

} // namespace cuedrill::platform::qt
