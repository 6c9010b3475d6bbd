#include "tools/statistics/svg_chart.h"

#include "common/number_format.h"
#include "common/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace cuedrill::tools {
namespace {

// Lengths in the units of the picture, which the page scales to its width.
constexpr double width = 720;
constexpr double height = 240;
constexpr double left = 48;
constexpr double right = 8;
constexpr double top = 12;
constexpr double bottom = 28;
constexpr double plot_width = width - left - right;
constexpr double plot_height = height - top - bottom;
/// Part of a label's place that its bars take.
constexpr double part_of_bars = 0.8;
/// Width of a character of a label, at most.
constexpr double character = 7;
/// Free room between two labels.
constexpr double between_labels = 8;

std::string number(double value)
{
    return common::format_fixed(value, 1);
}

std::string attribute(std::string_view name, double value)
{
    return " " + std::string(name) + "=\"" + number(value) + "\"";
}

/// The end of an axis.
struct Scale {
    double maximum = 1;
    int parts = 1; ///< into which lines divide it; each is a whole number
};

/// The least round number that is not below `value`; at least 1.
Scale scale_for(double value)
{
    constexpr std::array<Scale, 7> rounds{{{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 3}, {8, 4}}};
    for (double step = 1;; step *= 10) {
        for (const Scale& round : rounds) {
            if (round.maximum * step >= value)
                return {.maximum = round.maximum * step, .parts = step > 1 && round.parts == 1 ? 5 : round.parts};
        }
    }
}

double value_at(const Series& series, std::size_t place)
{
    return place < series.values.size() ? series.values[place] : 0;
}

double highest(const Chart& chart)
{
    double most = 0;
    for (std::size_t place = 0; place < chart.labels.size(); ++place) {
        double sum = 0;
        for (const Series& series : chart.series) {
            sum += value_at(series, place);
            most = std::max(most, chart.form == Chart::Form::stacked ? sum : value_at(series, place));
        }
    }
    return most;
}

/// Draws one chart.
class Drawing {
public:
    explicit Drawing(const Chart& chart) : chart_(chart), scale_(scale_for(highest(chart))) {}

    [[nodiscard]] std::string svg() const
    {
        std::string svg = "<svg viewBox=\"0 0 " + number(width) + " " + number(height) +
                          "\" role=\"img\" aria-label=\"" + escaped_html(chart_.title) + "\">\n";
        svg += grid() + labels();
        for (std::size_t place = 0; place < chart_.labels.size(); ++place)
            svg += bars(place);
        return svg + "</svg>\n";
    }

private:
    [[nodiscard]] double slot() const
    {
        return plot_width / static_cast<double>(std::max<std::size_t>(chart_.labels.size(), 1));
    }

    [[nodiscard]] double height_of(double value) const { return value / scale_.maximum * plot_height; }

    [[nodiscard]] std::string figure(double value) const
    {
        const bool whole = value == std::floor(value);
        return common::format_fixed(value, whole ? 0 : 1) + (chart_.unit.empty() ? "" : " " + chart_.unit);
    }

    [[nodiscard]] std::string grid() const
    {
        std::string svg;
        for (int part = 0; part <= scale_.parts; ++part) {
            const double value = scale_.maximum * part / scale_.parts;
            const double y = top + plot_height - height_of(value);
            svg += "<line class=\"grid\"" + attribute("x1", left) + attribute("x2", width - right) +
                   attribute("y1", y) + attribute("y2", y) + "/>\n<text class=\"axis end\"" + attribute("x", left - 6) +
                   attribute("y", y + 4) + ">" + figure(value) + "</text>\n";
        }
        return svg;
    }

    [[nodiscard]] std::string labels() const
    {
        std::size_t longest = 1;
        for (const std::string& label : chart_.labels)
            longest = std::max(longest, common::code_points(label));
        const double needed = static_cast<double>(longest) * character + between_labels;
        const auto every = static_cast<std::size_t>(std::max(1.0, std::ceil(needed / slot())));
        std::string svg;
        for (std::size_t place = 0; place < chart_.labels.size(); place += every) {
            const double x = left + (static_cast<double>(place) + 0.5) * slot();
            const double half = static_cast<double>(common::code_points(chart_.labels[place])) * character / 2;
            if (x + half <= width)
                svg += "<text class=\"axis middle\"" + attribute("x", x) + attribute("y", height - 8) + ">" +
                       escaped_html(chart_.labels[place]) + "</text>\n";
        }
        return svg;
    }

    [[nodiscard]] std::string bars(std::size_t place) const
    {
        const bool stacked = chart_.form == Chart::Form::stacked;
        const double group = slot() * part_of_bars;
        const double bar =
            stacked ? group : group / static_cast<double>(std::max<std::size_t>(chart_.series.size(), 1));
        double x = left + static_cast<double>(place) * slot() + (slot() - group) / 2;
        double base = top + plot_height;
        std::string svg;
        for (std::size_t i = 0; i < chart_.series.size(); ++i) {
            const double value = value_at(chart_.series[i], place);
            const double length = height_of(value);
            if (value > 0)
                svg += "<rect class=\"series-" + std::to_string(i) + "\"" + attribute("x", x) +
                       attribute("y", base - length) + attribute("width", bar) + attribute("height", length) +
                       "><title>" + escaped_html(chart_.labels[place]) + ", " + escaped_html(chart_.series[i].name) +
                       ": " + figure(value) + "</title></rect>\n";
            if (stacked)
                base -= length;
            else
                x += bar;
        }
        return svg;
    }

    const Chart& chart_;
    Scale scale_;
};

} // namespace

std::string svg_of(const Chart& chart)
{
    return Drawing(chart).svg();
}

std::string escaped_html(std::string_view text)
{
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string escaped;
    while (!text.empty()) {
        const std::string_view character_bytes = common::first_code_points(text, 1);
        text.remove_prefix(character_bytes.size());
        const auto code = static_cast<unsigned char>(character_bytes.front());
        if (character_bytes == "&")
            escaped += "&amp;";
        else if (character_bytes == "<")
            escaped += "&lt;";
        else if (character_bytes == ">")
            escaped += "&gt;";
        else if (character_bytes == "\"")
            escaped += "&quot;";
        else if (!common::is_utf8(character_bytes) || (code < 0x20 && code != '\t' && code != '\n' && code != '\r'))
            escaped += replacement;
        else
            escaped += character_bytes;
    }
    return escaped;
}

} // namespace cuedrill::tools
