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

} // namespace cuedrill::platform::qt
