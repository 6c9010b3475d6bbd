#include "platform/qt/qt_dialog_host.h"

#include "platform/qt/qt_look.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>
#include <QWidget>

namespace cuedrill::platform::qt {

namespace {

int title_bar_height()
{
    return QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight);
}

int both_frame_edges()
{
    return 2 * QApplication::style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
}

QSize least_size()
{
    // A title bar holds at least the window's icon and three buttons, each about as wide as the bar is high.
    return {4 * title_bar_height() + both_frame_edges(), title_bar_height() + both_frame_edges()};
}

} // namespace

QtDialogHost::QtDialogHost() = default;

QtDialogHost::~QtDialogHost() = default;

common::Twips QtDialogHost::least_height() const
{
    return to_twips(least_size().height());
}

common::Twips QtDialogHost::least_width() const
{
    return to_twips(least_size().width());
}

void QtDialogHost::load()
{
    if (window_)
        return;
    const QSize screen = QApplication::primaryScreen()->size();
    const QSize size = least_size();
    window_ = std::make_unique<QWidget>();
    window_->setObjectName(QStringLiteral("Form2"));
    window_->setGeometry((screen.width() - size.width()) / 2, (screen.height() - size.height()) / 2, size.width(),
                         size.height());
}

void QtDialogHost::unload()
{
    window_.reset();
}

} // namespace cuedrill::platform::qt
