#include "platform/qt/qt_screen.h"

#include "platform/qt/qt_context_help.h"
#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

/// Default look of a label.
enum class Kind {
    value,   ///< a figure
    caption, ///< caption of the figure beside it
    heading, ///< heading of an area
    prompt   ///< question to the user
};

Kind kind_of(ScreenLine line)
{
    if (line == &Screen::panel_dialog)
        return Kind::prompt;
    if (line == &Screen::lab_q || line == &Screen::panel_a)
        return Kind::heading;
    constexpr ScreenLine captions[] = {&Screen::lab_q_level,   &Screen::lab_q_attempts, &Screen::lab_fails,
                                       &Screen::lab_elapsed,   &Screen::lab_total,      &Screen::lab_nr_unpassed,
                                       &Screen::lab_score,     &Screen::lab_open_time,  &Screen::lab_time_today,
                                       &Screen::lab_time_ever, &Screen::lab_time_now};
    return std::find(std::begin(captions), std::end(captions), line) != std::end(captions) ? Kind::caption
                                                                                           : Kind::value;
}

/// Whether assistive technology reads a new text out at once.
bool is_announced(ScreenLine line)
{
    return line == &Screen::panel_dialog || line == &Screen::P_status;
}

QFont::Weight regular_weight(ScreenLine line)
{
    const Kind kind = kind_of(line);
    return kind == Kind::heading || kind == Kind::prompt ? QFont::DemiBold : QFont::Normal;
}

CaptionLabel* make_label(const NamedLine& named, QWidget& parent)
{
    const Kind kind = kind_of(named.line);
    auto* const label = new CaptionLabel(kind == Kind::caption ? CaptionLabel::Tone::quiet : CaptionLabel::Tone::plain);
    label->setParent(&parent);
    label->setObjectName(QString::fromLatin1(named.name));
    QFont font = label->font();
    font.setWeight(regular_weight(named.line));
    if (kind == Kind::prompt)
        font.setPointSizeF(font.pointSizeF() * 1.15);
    label->setFont(font);
    return label;
}

void draw_level(LevelRow& row, const LevelLine& line)
{
    row.set_caption(to_qt(line.caption));
    row.setAccessibleDescription(to_qt(line.description));
    const double share = line.total > 0 ? static_cast<double>(line.count) / static_cast<double>(line.total) : 0.0;
    row.set_share(std::clamp(share, 0.0, 1.0));
    row.setText(QString::number(line.count));
    set_fixed_background(row, line.background);
    row.set_marked(line.marked);
}

/// The figures of the course, each with its caption, the most important first; without the clock.
QStringList in_one_line(const Screen& screen)
{
    const auto figure = [](const Line& caption, const Line& value) {
        return to_qt(caption.text) + QLatin1Char(' ') + to_qt(value.text);
    };
    QStringList counts;
    for (const LevelLine& line : screen.panel_level)
        counts.append(QString::number(line.count));
    QStringList figures{figure(screen.lab_total, screen.panel_total),
                        figure(screen.lab_nr_unpassed, screen.panel_nr_unpassed)};
    if (const std::array<DueBar, due_bars>& due = screen.due_picture.bars; !due.front().figure.empty())
        figures.append(QStringLiteral("Due now %1, later today %2, new %3")
                           .arg(to_qt(due[0].figure), to_qt(due[1].figure), to_qt(due.back().figure)));
    figures.append(
        {QStringLiteral("Levels 0 to %1+: %2").arg(level_panels - 1).arg(counts.join(QStringLiteral(", "))),
         figure(screen.lab_score, screen.Panel_score), figure(screen.lab_time_today, screen.panel_time_today),
         figure(screen.lab_open_time, screen.panel_open_time), figure(screen.lab_time_ever, screen.panel_time_ever)});
    return figures;
}

} // namespace

QtScreen::QtScreen(QWidget& parent, std::function<void(const QString&)> tell)
    : tell_(std::move(tell)), folded_figures_(new FoldedFigures)
{
    folded_figures_->setParent(&parent);
    folded_figures_->setObjectName(QStringLiteral("folded_statistics"));
    folded_figures_->setAccessibleDescription(QStringLiteral("Statistics"));
    std::transform(screen_lines.begin(), screen_lines.end(), labels_.begin(),
                   [&](const NamedLine& named) { return make_label(named, parent); });
    for (std::size_t level = 0; level < level_rows_.size(); ++level) {
        level_rows_[level] = new LevelRow;
        level_rows_[level]->setParent(&parent);
        level_rows_[level]->setObjectName(QStringLiteral("panel_level_%1").arg(level));
    }
    due_chart_->setParent(&parent);
    due_chart_->setObjectName(QStringLiteral("due_picture"));
}

CaptionLabel& QtScreen::label(ScreenLine line) const
{
    const auto named = std::find_if(screen_lines.begin(), screen_lines.end(),
                                    [line](const NamedLine& one) { return one.line == line; });
    return *labels_.at(static_cast<std::size_t>(named - screen_lines.begin()));
}

void QtScreen::show(const Screen& screen)
{
    const Screen before = std::exchange(shown_, screen);
    for (std::size_t i = 0; i < labels_.size(); ++i) {
        const ScreenLine line = screen_lines[i].line;
        draw(*labels_[i], screen.*line, before.*line);
        if (is_announced(line))
            tell(screen.*line, before.*line);
    }
    for (std::size_t level = 0; level < level_rows_.size(); ++level) {
        if (screen.panel_level[level] != before.panel_level[level])
            draw_level(*level_rows_[level], screen.panel_level[level]);
    }
    folded_figures_->set_figures(in_one_line(screen));
    if (screen.due_picture != before.due_picture)
        due_chart_->show_picture(screen.due_picture);
}

void QtScreen::draw(CaptionLabel& label, const Line& line, const Line& before) const
{
    if (line.description != before.description)
        label.setAccessibleDescription(to_qt(line.description));
    if (line.text != before.text)
        label.setText(to_qt(line.text)); // this also tells assistive technology about the new name
    if (line.background != before.background)
        set_fixed_background(label, line.background);
    if (line.alignment != before.alignment)
        label.setAlignment((line.alignment == Alignment::emphasised ? Qt::AlignHCenter : Qt::AlignLeft) |
                           Qt::AlignVCenter);
    if (line.bold != before.bold)
        label.set_bold(line.bold);
    if (line.visible != before.visible)
        label.setVisible(line.visible);
    if (line.enabled != before.enabled)
        label.setEnabled(line.enabled);
}

/// Announces a line whose `news` has changed, even if the text is the same: the same thing has happened again.
void QtScreen::tell(const Line& line, const Line& before) const
{
    if (line.news != before.news && !line.text.empty())
        tell_(to_qt(line.text));
}

void QtScreen::offer_help(ScreenLine line, const std::function<void()>& ask)
{
    qt::offer_help(label(line), ask);
}

void QtScreen::offer_level_help(const std::function<void()>& ask)
{
    for (LevelRow* row : level_rows_)
        qt::offer_help(*row, ask);
}

void QtScreen::offer_due_help(const std::function<void()>& ask)
{
    qt::offer_help(*due_chart_, ask);
}

} // namespace cuedrill::platform::qt
