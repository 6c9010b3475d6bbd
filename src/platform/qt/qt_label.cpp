#include "platform/qt/qt_label.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

namespace cuedrill::platform::qt {

namespace {

int regular_weight(QtLabel::Kind kind)
{
    return kind == QtLabel::Kind::heading || kind == QtLabel::Kind::prompt ? QFont::DemiBold : QFont::Normal;
}

} // namespace

QtLabel::QtLabel(const char* name, Kind kind, Announced announced, std::function<void(QLabel&)> tell)
    : QtLabel(name, kind, announced, std::move(tell),
              *new CaptionLabel(kind == Kind::caption ? CaptionLabel::Tone::quiet : CaptionLabel::Tone::plain))
{
}

QtLabel::QtLabel(const char* name, Kind kind, Announced announced, std::function<void(QLabel&)> tell,
                 CaptionLabel& label)
    : QtHelpfulControl(label, name), m_label(label), m_announced(announced == Announced::yes), m_tell(std::move(tell)),
      m_regular_weight(regular_weight(kind))
{
    if (m_announced)
        make_notification(m_label);
    QFont font = m_label.font();
    font.setWeight(static_cast<QFont::Weight>(m_regular_weight));
    if (kind == Kind::prompt)
        font.setPointSizeF(font.pointSizeF() * 1.15);
    m_label.setFont(font);
}

void QtLabel::set_untold_caption(std::string_view text)
{
    if (text == m_caption)
        return;
    m_caption = text;
    m_label.setText(to_qt(text)); // tells assistive technology that the name has changed
}

void QtLabel::set_caption(std::string_view text)
{
    set_untold_caption(text);
    // The same text once more is news too: something has happened a second time.
    if (m_announced && !text.empty())
        m_tell(m_label);
}

std::string QtLabel::caption() const
{
    return m_caption;
}

void QtLabel::set_description(std::string_view text)
{
    m_label.setAccessibleDescription(to_qt(text));
}

void QtLabel::set_background(std::optional<common::Colour> colour)
{
    set_fixed_background(m_label, colour);
}

void QtLabel::set_bold(bool bold)
{
    QFont font = m_label.font();
    font.setWeight(bold ? QFont::Bold : static_cast<QFont::Weight>(m_regular_weight));
    m_label.setFont(font);
}

void QtLabel::set_alignment(Alignment alignment)
{
    const Qt::Alignment horizontal = alignment == Alignment::emphasised ? Qt::AlignHCenter : Qt::AlignLeft;
    m_label.setAlignment(horizontal | Qt::AlignVCenter);
}

} // namespace cuedrill::platform::qt
