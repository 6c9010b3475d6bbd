#pragma once

#include "platform/controls.h"
#include "platform/qt/qt_guard.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;

namespace cuedrill::platform::qt {

/// The check mark shows what was set; a click does not toggle it.
class QtMenuEntry final : public MenuEntry {
public:
    QtMenuEntry(QAction& action, QtActionGate& gate);

    void set_visible(bool visible) override;
    [[nodiscard]] bool visible() const override;
    void set_enabled(bool enabled) override;
    [[nodiscard]] bool enabled() const override;
    void set_caption(std::string_view text) override;
    [[nodiscard]] std::string caption() const override;
    void set_checkable(bool checkable) override;
    void set_checked(bool checked) override;

private:
    void show_caption();

    QAction& action_;
    bool visible_ = true;
    bool enabled_ = true;
    bool checked_ = false;
    std::string caption_;
};

/// Announces a text to assistive technology.
using MenuTell = std::function<void(const QString&)>;

class QtMenu final : public Menu {
public:
    QtMenu(QMenu& menu, QtActionGate& gate, MenuTell tell) : menu_(menu), gate_(gate), tell_(std::move(tell)) {}

    MenuEntry& add_entry(std::string_view name, std::string_view caption) override;

private:
    QMenu& menu_;
    QtActionGate& gate_;
    MenuTell tell_;
    std::vector<std::unique_ptr<QtMenuEntry>> entries_;
};

/// Returns the keyboard focus to its previous widget when the user leaves the menu bar, however he got there. The
/// toolkit forgets that widget when a second menu is opened with Alt while the bar itself has the focus.
class QtMenuFocus : public QObject {
public:
    explicit QtMenuFocus(QMenuBar& menu_bar);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void note_focus(QWidget* before, QWidget* now);

    QMenuBar& menu_bar_;
    QPointer<QWidget> before_; ///< had the focus before the menu bar
};

class QtMenuBar final : public MenuBar {
public:
    /// @param tell announces whether an option is off when the user comes to its entry.
    QtMenuBar(QMenuBar& menu_bar, QtActionGate& gate, MenuTell tell)
        : menu_bar_(menu_bar), gate_(gate), tell_(std::move(tell)), focus_(menu_bar)
    {
    }

    Menu& add_menu(std::string_view name, std::string_view caption) override;

private:
    QMenuBar& menu_bar_;
    QtActionGate& gate_;
    MenuTell tell_;
    QtMenuFocus focus_;
    std::vector<std::unique_ptr<QtMenu>> menus_;
};

} // namespace cuedrill::platform::qt
