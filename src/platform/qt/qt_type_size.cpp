#include "platform/qt/qt_type_size.h"

#include "platform/qt/qt_form1.h"
#include "platform/qt/qt_hint_edit.h"
#include "platform/qt/qt_line_view.h"
#include "platform/qt/qt_text_box.h"

#include <QEvent>
#include <QKeySequence>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <iterator>

namespace cuedrill::platform::qt {

namespace {

/// The steps of the zoom in percent, each about as much larger than the one before.
constexpr std::array zoom_steps{smallest_zoom, 70,  80,  90,  usual_zoom, 110, 125,         150,
                                175,           200, 225, 250, 300,        350, largest_zoom};

/// Size of the fixed-pitch type of hint and list before it grows, in points, as that of the question.
constexpr double points = 9.0;

int next_step(int zoom)
{
    const auto* const next = std::upper_bound(zoom_steps.begin(), zoom_steps.end(), zoom);
    return next == zoom_steps.end() ? largest_zoom : *next;
}

int previous_step(int zoom)
{
    const auto* const at = std::lower_bound(zoom_steps.begin(), zoom_steps.end(), zoom);
    return at == zoom_steps.begin() ? smallest_zoom : *std::prev(at);
}

} // namespace

double growth(QSize window)
{
    return std::max(1.0, std::min(static_cast<double>(window.width()) / first_size.width(),
                                  static_cast<double>(window.height()) / first_size.height()));
}

QtTypeSize::QtTypeSize(QMainWindow& window, const Texts& texts, QtWindowState state)
    : window_(window), texts_(texts), state_(state), zoom_(state.zoom().value_or(usual_zoom)), kept_zoom_(zoom_)
{
    window_.installEventFilter(this);
    for (QAbstractScrollArea* text : std::initializer_list<QAbstractScrollArea*>{
             &texts_.question.widget(), &texts_.answer.widget(), &texts_.hint, &texts_.list})
        text->viewport()->installEventFilter(this);
    add_keys();
    apply();
}

QtTypeSize::~QtTypeSize()
{
    keep();
}

/// As shortcuts, because the toolkit then finds plus on every keyboard, with Shift and on the keypad, too.
void QtTypeSize::add_keys()
{
    const auto add = [this](Qt::Key key, auto action) {
        connect(new QShortcut(QKeySequence(Qt::CTRL | key), &window_), &QShortcut::activated, this, action);
    };
    add(Qt::Key_Plus, [this] { step(1); });
    // The key of plus without Shift on many keyboards.
    add(Qt::Key_Equal, [this] { step(1); });
    add(Qt::Key_Minus, [this] { step(-1); });
    add(Qt::Key_0, [this] { set_zoom(usual_zoom); });
}

void QtTypeSize::set_zoom(int percent)
{
    zoom_ = std::clamp(percent, smallest_zoom, largest_zoom);
    apply();
}

void QtTypeSize::step(int steps)
{
    int zoom = zoom_;
    for (; steps > 0; --steps)
        zoom = next_step(zoom);
    for (; steps < 0; ++steps)
        zoom = previous_step(zoom);
    set_zoom(zoom);
}

/// Fine wheels and touch pads tell a step in several events.
void QtTypeSize::turn(int angle)
{
    constexpr int notch = QWheelEvent::DefaultDeltasPerStep;
    if ((angle > 0) != (turned_ > 0))
        turned_ = 0;
    turned_ += angle;
    step(turned_ / notch);
    turned_ %= notch;
}

void QtTypeSize::keep()
{
    if (zoom_ == kept_zoom_)
        return;
    state_.save_zoom(zoom_);
    kept_zoom_ = zoom_;
}

bool QtTypeSize::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel) {
        const auto& wheel = static_cast<const QWheelEvent&>(*event);
        if (wheel.modifiers().testFlag(Qt::ControlModifier)) {
            turn(wheel.angleDelta().y());
            event->accept();
            return true;
        }
    } else if (watched == &window_ && event->type() == QEvent::Resize) {
        apply();
    } else if (watched == &window_ && event->type() == QEvent::Hide) {
        keep();
    }
    return QObject::eventFilter(watched, event);
}

void QtTypeSize::apply()
{
    const double scale = growth(window_.size()) * zoom_ / 100;
    texts_.question.set_scale(scale);
    texts_.answer.set_scale(scale);
    texts_.hint.set_points(points * scale);
    texts_.list.set_points(points * scale);
}

} // namespace cuedrill::platform::qt
