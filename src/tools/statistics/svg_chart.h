#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::tools {

/// Figures with a name, one for each label of a chart.
struct Series {
    std::string name;
    std::vector<double> values; ///< not negative
};

/// A picture of figures.
struct Chart {
    enum class Form {
        bars,   ///< for each label a group of bars, one for each series
        stacked ///< for each label one bar, in which the series lie upon each other
    };

    std::string title;
    Form form = Form::bars;
    std::vector<std::string> labels; ///< along the horizontal axis; where there is no room for all, some are left out
    std::vector<Series> series;
    std::string unit{}; ///< of the figures, such as "%"; empty for numbers of things
};

/// The chart as an SVG element for a web page. Colours come from the page's style sheet: each series has the class
/// "series-0", "series-1" and so on. Each bar names its figure to a pointer and to assistive technology.
[[nodiscard]] std::string svg_of(const Chart& chart);

/// `text` with the characters that mean something in HTML and XML as entities, and others that XML cannot hold
/// replaced.
[[nodiscard]] std::string escaped_html(std::string_view text);

} // namespace cuedrill::tools
