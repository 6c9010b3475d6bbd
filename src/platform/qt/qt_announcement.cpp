#include "platform/qt/qt_announcement.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <utility>

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

QLabel* make_announcement(QWidget& window, const char* name)
{
    auto* const label = new QLabel(&window);
    // Must come first: the first accessibility event of the label fixes its role.
    make_notification(*label);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setText(QStringLiteral("No announcement")); // a control must have a name
    label->setAccessibleDescription(QStringLiteral("Announcement"));
    label->setFixedSize(0, 0);
    return label;
}

} // namespace

void make_notification(QLabel& label)
{
    label.setProperty(mark, true);
    QAccessible::installFactory(make_interface); // once, however often this function is called
}

void announce(QLabel& label)
{
    for (const QAccessible::Event kind : {QAccessible::Alert, QAccessible::ObjectShow}) {
        QAccessibleEvent news(&label, kind);
        QAccessible::updateAccessibility(&news);
    }
}

QtAnnouncer::QtAnnouncer(QWidget& window, std::function<void(QLabel&)> tell)
    : labels_{make_announcement(window, "announcement"), make_announcement(window, "other_announcement")},
      tell_(std::move(tell))
{
}

void QtAnnouncer::tell(const QString& text)
{
    if (text.isEmpty())
        return;
    QLabel& label = *labels_.front();
    std::swap(labels_.front(), labels_.back());
    label.setText(text);
    tell_(label);
}

} // namespace cuedrill::platform::qt
