#include "platform/qt/qt_announcement.h"

#include <QAccessibleWidget>
#include <QLabel>

namespace cuedrill::platform::qt {

namespace {

constexpr auto mark = "cuedrill_notification";

class AccessibleNotification : public QAccessibleWidget {
public:
    explicit AccessibleNotification(QLabel& label) : QAccessibleWidget(&label, QAccessible::Notification) {}

    [[nodiscard]] QString text(QAccessible::Text what) const override
    {
        return what == QAccessible::Name ? static_cast<QLabel*>(widget())->text() : QAccessibleWidget::text(what);
    }
};

QAccessibleInterface* make_interface(const QString& /*class_name*/, QObject* object)
{
    auto* label = qobject_cast<QLabel*>(object);
    return label != nullptr && label->property(mark).toBool() ? new AccessibleNotification(*label) : nullptr;
}

} // namespace

void make_notification(QLabel& label)
{
    label.setProperty(mark, true);
    QAccessible::installFactory(make_interface); // once, however often it is called
}

void announce(QLabel& label)
{
    for (const QAccessible::Event kind : {QAccessible::Alert, QAccessible::ObjectShow}) {
        QAccessibleEvent news(&label, kind);
        QAccessible::updateAccessibility(&news);
    }
}

QtAnnouncer::QtAnnouncer(QWidget& window, std::function<void(QLabel&)> tell)
    : m_label(*new QLabel(&window)), m_tell(std::move(tell))
{
    // First of all: whatever is told of the label settles what it is presented as.
    make_notification(m_label);
    m_label.setObjectName(QStringLiteral("announcement"));
    m_label.setTextFormat(Qt::PlainText);
    m_label.setText(QStringLiteral("No announcement")); // a control must have a name
    m_label.setAccessibleDescription(QStringLiteral("Announcement"));
    m_label.setFixedSize(0, 0);
}

void QtAnnouncer::tell(const QString& text)
{
    if (text.isEmpty())
        return;
    m_label.setText(text);
    m_tell(m_label);
}

} // namespace cuedrill::platform::qt
