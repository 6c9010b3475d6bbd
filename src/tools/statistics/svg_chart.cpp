#include "tools/statistics/svg_chart.h"

#include "common/number_format.h"
#include "common/text.h"

#include <algorithm>
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

/// The least of 1, 2, 5, 10, 20 … that is not below `value`; at least 1.
double round_maximum(double value)
{
    double step = 1;
    for (;;) {
        for (const double factor : {1.0, 2.0, 5.0}) {
            if (step * factor >= value)
                return step * factor;
        }
        step *= 10;
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
    explicit Drawing(const Chart& chart) : chart_(chart), maximum_(round_maximum(highest(chart))) {}

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

    [[nodiscard]] double height_of(double value) const { return value / maximum_ * plot_height; }

    [[nodiscard]] std::string figure(double value) const
    {
        const bool whole = value == std::floor(value);
        return common::format_fixed(value, whole ? 0 : 1) + (chart_.unit.empty() ? "" : " " + chart_.unit);
    }

    /// Lines at parts of the maximum that are whole numbers.
    [[nodiscard]] std::string grid() const
    {
        const int parts = std::fmod(maximum_, 4) == 0 ? 4 : std::fmod(maximum_, 5) == 0 ? 5 : maximum_ < 2 ? 1 : 2;
        std::string svg;
        for (int part = 0; part <= parts; ++part) {
            const double value = maximum_ * part / parts;
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
        for (std::size_t place = 0; place < chart_.labels.size(); place += every)
            svg += "<text class=\"axis middle\"" + attribute("x", left + (static_cast<double>(place) + 0.5) * slot()) +
                   attribute("y", height - 8) + ">" + escaped_html(chart_.labels[place]) + "</text>\n";
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
    double maximum_;
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
