#include "platform/qt/qt_dialog_host.h"

#include "platform/qt/qt_look.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <algorithm>

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

common::Twips least_height()
{
    return to_twips(title_bar_height() + both_frame_edges());
}

common::Twips least_width()
{
    // A title bar holds at least the window's sign and three buttons, each about as wide as the bar is high.
    return to_twips(4 * title_bar_height() + both_frame_edges());
}

} // namespace

QtDialogHost::QtDialogHost() : m_width(least_width()), m_height(least_height())
{
}

QtDialogHost::~QtDialogHost() = default;

void QtDialogHost::set_caption(std::string_view text)
{
    m_caption = text;
    if (m_window)
        m_window->setWindowTitle(to_qt(text));
}

void QtDialogHost::set_height(common::Twips height)
{
    m_height = std::max(height, least_height());
    place();
}

void QtDialogHost::set_width(common::Twips width)
{
    m_width = std::max(width, least_width());
    place();
}

void QtDialogHost::set_position(common::Twips left, common::Twips top)
{
    m_left = left;
    m_top = top;
    place();
}

common::Twips QtDialogHost::screen_width() const
{
    return to_twips(QApplication::primaryScreen()->geometry().width());
}

common::Twips QtDialogHost::screen_height() const
{
    return to_twips(QApplication::primaryScreen()->geometry().height());
}

void QtDialogHost::load()
{
    if (m_window)
        return;
    m_window = std::make_unique<QWidget>();
    m_window->setObjectName(QStringLiteral("Form2"));
    m_window->setWindowTitle(to_qt(m_caption));
    place();
}

void QtDialogHost::unload()
{
    m_window.reset();
}

void QtDialogHost::place()
{
    if (m_window)
        m_window->setGeometry(to_pixels(m_left), to_pixels(m_top), to_pixels(m_width), to_pixels(m_height));
}

} // namespace cuedrill::platform::qt
