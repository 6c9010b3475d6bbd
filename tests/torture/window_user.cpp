#include "torture/window_user.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace cuedrill::torture {
namespace {

std::string on_one_line(std::string_view text)
{
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n')
            line += " / ";
        else if (text[i] != '\r')
            line += text[i];
    }
    return line;
}

QString lines_of(const QAbstractItemModel& model)
{
    QStringList lines;
    for (int row = 0; row < model.rowCount(); ++row)
        lines << model.index(row, 0).data().toString();
    return lines.join(QLatin1Char('\n'));
}

/// What a widget shows or a screen reader says of it.
QString text_of(const QWidget& widget)
{
    QStringList texts;
    if (const auto* const label = qobject_cast<const QLabel*>(&widget))
        texts << label->text();
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget))
        texts << button->text();
    if (const auto* const line = qobject_cast<const QLineEdit*>(&widget))
        texts << line->text();
    if (const auto* const edit = qobject_cast<const QPlainTextEdit*>(&widget))
        texts << edit->toPlainText();
    if (const auto* const list = qobject_cast<const QAbstractItemView*>(&widget); list != nullptr && list->model())
        texts << lines_of(*list->model());
    texts << widget.accessibleName() << widget.accessibleDescription();
    if (widget.isWindow())
        texts << widget.windowTitle();
    texts.removeAll(QString());
    return texts.join(QStringLiteral(" | "));
}

std::string details_of(const QMessageBox& box)
{
    const auto* const details = box.findChild<QPlainTextEdit*>();
    return details == nullptr ? std::string() : " | " + details->toPlainText().toStdString();
}

/// What is due is counted a moment after an action: whether it is there already depends on the machine.
bool tells_what_is_due(const QWidget& widget)
{
    return widget.objectName() == "due_picture" || widget.objectName() == "folded_statistics";
}

} // namespace

void Teller::tell(std::string_view text) const
{
    const std::string line = on_one_line(text) + "\n";
    std::string_view rest = line;
    while (!rest.empty()) {
        const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
        if (written <= 0)
            std::_Exit(EXIT_FAILURE);
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
}

WindowUser::WindowUser(const Teller& teller) : teller_(teller)
{
    watch_.callOnTimeout([this] { answer(); });
    watch_.start(1);
}

void WindowUser::press(QWidget& window, const std::string& name)
{
    auto* const button = window.findChild<QAbstractButton*>(QString::fromStdString(name));
    if (button == nullptr || !button->isEnabled() || !button->isVisible())
        teller_.tell("cannot press " + name);
    else
        button->click();
}

void WindowUser::choose(QWidget& window, const std::string& name)
{
    auto* const entry = window.findChild<QAction*>(QString::fromStdString(name));
    if (entry == nullptr || !entry->isEnabled())
        return teller_.tell("cannot choose " + name);
    entry->trigger();
    QCoreApplication::processEvents();
}

void WindowUser::type(QWidget& window, const std::string& name, const std::string& text)
{
    if (!name.empty()) {
        auto* const control = window.findChild<QWidget*>(QString::fromStdString(name));
        if (control == nullptr)
            return teller_.tell("cannot type into " + name);
        control->setFocus();
    }
    for (const QChar character : QString::fromStdString(text)) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QWidget* const focus = window.focusWidget();
            QKeyEvent event(type, 0, Qt::NoModifier, character);
            QCoreApplication::sendEvent(focus != nullptr ? focus : &window, &event);
        }
    }
}

void WindowUser::tell_screen()
{
    std::map<std::string, std::string> now;
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->objectName().isEmpty())
            continue;
        const std::string place = window->objectName().toStdString();
        now[place] = text_of(*window).toStdString();
        for (const QWidget* const widget : window->findChildren<QWidget*>()) {
            if (!widget->objectName().isEmpty() && widget->isVisibleTo(window) && !tells_what_is_due(*widget))
                now[place + "." + widget->objectName().toStdString()] = text_of(*widget).toStdString();
        }
        for (const QAction* const entry : window->findChildren<QAction*>()) {
            if (!entry->objectName().isEmpty())
                now[place + "." + entry->objectName().toStdString()] = entry->text().toStdString();
        }
    }
    for (const auto& [place, text] : now) {
        const auto before = shown_.find(place);
        if (!text.empty() && (before == shown_.end() || before->second != text))
            teller_.tell(place + ": " + text);
    }
    shown_ = std::move(now);
}

void WindowUser::answer()
{
    QWidget* const modal = QApplication::activeModalWidget();
    if (auto* const box = qobject_cast<QMessageBox*>(modal)) {
        last_box_ = box->text().toStdString();
        teller_.tell("box: " + last_box_ + details_of(*box));
        // Opening an exported file starts another program.
        const bool declines = box->text().endsWith(QLatin1String("open the exported file?"));
        for (const auto button : {declines ? QMessageBox::No : QMessageBox::Yes, QMessageBox::Ok}) {
            if (QAbstractButton* const found = box->button(button))
                return found->click();
        }
        box->reject();
    } else if (auto* const files = qobject_cast<QFileDialog*>(modal)) {
        answer_file_dialog(*files);
    } else if (auto* const input = qobject_cast<QInputDialog*>(modal)) {
        teller_.tell("input box: " + input->labelText().toStdString() + " | " + input->textValue().toStdString());
        if (inputs_.empty())
            return input->reject();
        input->setTextValue(QString::fromStdString(inputs_.front()));
        inputs_.pop_front();
        input->accept();
    } else if (auto* const dialog = qobject_cast<QDialog*>(modal)) {
        dialog->reject();
    }
}

void WindowUser::answer_file_dialog(QDialog& dialog)
{
    teller_.tell("file dialog: " + dialog.windowTitle().toStdString());
    if (paths_.empty())
        return dialog.reject();
    dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QString::fromStdString(paths_.front()));
    paths_.pop_front();
    dialog.accept();
}

} // namespace cuedrill::torture
