#pragma once

#include "platform/controls.h"
#include "platform/qt/qt_guard.h"

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;

namespace cuedrill::platform::qt {

/// The check mark shows what was set, never what a click has toggled.
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

    QAction& m_action;
    bool m_visible = true;
    bool m_enabled = true;
    bool m_checked = false;
    std::string m_caption;
};

class QtMenu final : public Menu {
public:
    QtMenu(QMenu& menu, QtActionGate& gate) : m_menu(menu), m_gate(gate) {}

    MenuEntry& add_entry(std::string_view name, std::string_view caption) override;

private:
    QMenu& m_menu;
    QtActionGate& m_gate;
    std::vector<std::unique_ptr<QtMenuEntry>> m_entries;
};

/// Gives the keyboard back to where it was when the user leaves the menu bar, whatever way he has taken through it. The
/// toolkit forgets the place when a second menu is opened with Alt while the bar itself has the keyboard.
class QtMenuFocus : public QObject {
public:
    explicit QtMenuFocus(QMenuBar& menu_bar);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void note_focus(QWidget* before, QWidget* now);

    QMenuBar& m_menu_bar;
    QPointer<QWidget> m_before; ///< had the focus before the menu bar
};

class QtMenuBar final : public MenuBar {
public:
    QtMenuBar(QMenuBar& menu_bar, QtActionGate& gate) : m_menu_bar(menu_bar), m_gate(gate), m_focus(menu_bar) {}

    Menu& add_menu(std::string_view name, std::string_view caption) override;

private:
    QMenuBar& m_menu_bar;
    QtActionGate& m_gate;
    QtMenuFocus m_focus;
    std::vector<std::unique_ptr<QtMenu>> m_menus;
};

} // namespace cuedrill::platform::qt
