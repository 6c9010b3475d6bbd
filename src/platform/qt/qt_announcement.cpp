#include "platform/qt/qt_announcement.h"

#include <QAccessibleWidget>
#include <QEventLoop>
#include <QLabel>
#include <chrono>
#include <utility>

namespace cuedrill::platform::qt {

namespace {

/// How long texts are collected. Much shorter than a spoken word, and longer than a step of the drill takes.
constexpr std::chrono::milliseconds collecting{100};

/// How long assistive technology may take to read the last text. It asks for it several times between processes.
constexpr std::chrono::milliseconds reading{400};

constexpr auto mark = "cuedrill_announcement";

class AccessibleNotification : public QAccessibleWidget {
public:
    explicit AccessibleNotification(QLabel& label) : QAccessibleWidget(&label, QAccessible::Notification) {}

    [[nodiscard]] QString text(QAccessible::Text what) const override
    {
        return what == QAccessible::Name ? static_cast<QLabel*>(widget())->text() : QString();
    }
};

QAccessibleInterface* make_interface(const QString& /*class_name*/, QObject* object)
{
    auto* const widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || !widget->property(mark).toBool())
        return nullptr;
    if (auto* const label = qobject_cast<QLabel*>(widget))
        return new AccessibleNotification(*label);
    return new QAccessibleWidget(widget, QAccessible::StatusBar);
}

/// Must come first: the first accessibility event of the widget fixes its role.
void mark_as_announcement(QWidget& widget)
{
    QAccessible::installFactory(make_interface); // once, however often this function is called
    widget.setProperty(mark, true);
}

/// The parent of the notifications. It presents itself as a status bar, because a screen reader speaks a notification
/// in a status bar as it is; before any other it says the word "notification".
QWidget& make_strip(QWidget& window)
{
    auto* const strip = new QWidget(&window);
    mark_as_announcement(*strip);
    strip->setObjectName(QStringLiteral("announcements"));
    strip->setFixedSize(0, 0);
    return *strip;
}

QLabel* make_label(QWidget& strip, const char* name)
{
    auto* const label = new QLabel(&strip);
    mark_as_announcement(*label);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setFixedSize(0, 0);
    return label;
}

/// Assistive technology hears of an announcement first and asks for its text later. So two labels take turns: each text
/// stays while the next one is announced.
std::array<QLabel*, 2> make_labels(QWidget& window)
{
    QWidget& strip = make_strip(window);
    return {make_label(strip, "announcement"), make_label(strip, "other_announcement")};
}

/// `text` with a full stop if it ends with neither a stop nor another mark, so that the voice makes a pause.
QString with_pause(const QString& text)
{
    return text.isEmpty() || QStringLiteral(".?!:;,").contains(text.back()) ? text : text + QLatin1Char('.');
}

} // namespace

void announce(QLabel& label)
{
    for (const QAccessible::Event kind : {QAccessible::Alert, QAccessible::ObjectShow}) {
        QAccessibleEvent news(&label, kind);
        QAccessible::updateAccessibility(&news);
    }
}

QtAnnouncer::QtAnnouncer(QWidget& window, std::function<void(QLabel&)> tell)
    : labels_(make_labels(window)), tell_(std::move(tell)), watcher_(window, [this](QEvent::Type type) {
          if (type == QEvent::WindowBlocked)
              flush();
      })
{
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { flush(); });
}

void QtAnnouncer::tell(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return;
    waiting_ = waiting_.isEmpty() ? trimmed : with_pause(waiting_) + QLatin1Char(' ') + trimmed;
    if (!timer_.isActive())
        timer_.start(collecting);
}

void QtAnnouncer::tell_now(const QString& text)
{
    tell(text);
    flush();
}

void QtAnnouncer::tell_last(const QString& text)
{
    tell_now(text);
    if (!QAccessible::isActive())
        return;
    QEventLoop loop;
    QTimer::singleShot(reading, &loop, [&loop] { loop.quit(); });
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void QtAnnouncer::flush()
{
    timer_.stop();
    if (waiting_.isEmpty())
        return;
    QLabel& label = *labels_.front();
    std::swap(labels_.front(), labels_.back());
    label.setText(std::exchange(waiting_, QString()));
    tell_(label);
}

} // namespace cuedrill::platform::qt
