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
    : QtHelpfulControl(label, name), label_(label), announced_(announced == Announced::yes), tell_(std::move(tell)),
      regular_weight_(regular_weight(kind))
{
    if (announced_)
        make_notification(label_);
    QFont font = label_.font();
    font.setWeight(static_cast<QFont::Weight>(regular_weight_));
    if (kind == Kind::prompt)
        font.setPointSizeF(font.pointSizeF() * 1.15);
    label_.setFont(font);
}

void QtLabel::set_untold_caption(std::string_view text)
{
    if (text == caption_)
        return;
    caption_ = text;
    label_.setText(to_qt(text)); // tells assistive technology that the name has changed
}

void QtLabel::set_caption(std::string_view text)
{
    set_untold_caption(text);
    // The same text once more is news too: something has happened a second time.
    if (announced_ && !text.empty())
        tell_(label_);
}

std::string QtLabel::caption() const
{
    return caption_;
}

void QtLabel::set_description(std::string_view text)
{
    label_.setAccessibleDescription(to_qt(text));
}

void QtLabel::set_background(std::optional<common::Colour> colour)
{
    set_fixed_background(label_, colour);
}

void QtLabel::set_bold(bool bold)
{
    QFont font = label_.font();
    font.setWeight(bold ? QFont::Bold : static_cast<QFont::Weight>(regular_weight_));
    label_.setFont(font);
}

void QtLabel::set_alignment(Alignment alignment)
{
    const Qt::Alignment horizontal = alignment == Alignment::emphasised ? Qt::AlignHCenter : Qt::AlignLeft;
    label_.setAlignment(horizontal | Qt::AlignVCenter);
}

} // namespace cuedrill::platform::qt
