#include "platform/qt/qt_desktop.h"

#include "common/errors.h"
#include "platform/qt/qt_answered_box.h"
#include "platform/qt/qt_columns_dialog.h"
#include "platform/qt/qt_dialog_host.h"
#include "platform/qt/qt_file_dialog.h"
#include "platform/qt/qt_file_filter.h"
#include "platform/qt/qt_marked_text.h"
#include "platform/qt/qt_program_icon.h"
#include "platform/qt/qt_screen_room.h"
#include "platform/qt/qt_text.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QRegularExpression>
#include <QScreen>
#include <QValidator>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

constexpr auto program_title = "CUEDRILL";
constexpr QSize icon_of_program_size{64, 64};

/// Shows the normal pointer while an object of this class lives, even if the busy pointer is set.
class NormalPointer {
public:
    NormalPointer() { QGuiApplication::setOverrideCursor(Qt::ArrowCursor); }
    NormalPointer(const NormalPointer&) = delete;
    NormalPointer& operator=(const NormalPointer&) = delete;
    ~NormalPointer() { QGuiApplication::restoreOverrideCursor(); }
};

/// Limits a text to a number of code points. A line edit's own limit counts characters beyond U+FFFF twice.
class LongestText : public QValidator {
public:
    LongestText(QObject* parent, int longest) : QValidator(parent), longest_(longest) {}

    State validate(QString& text, int& caret) const override
    {
        const QList<uint> code_points = text.toUcs4();
        if (code_points.size() > longest_) {
            text = QString::fromUcs4(reinterpret_cast<const char32_t*>(code_points.data()), longest_);
            caret = std::min(caret, static_cast<int>(text.size()));
        }
        return Acceptable;
    }

private:
    int longest_;
};

/// The window over which a box appears; null if none is visible.
QWidget* window_in_front()
{
    if (QWidget* active = QApplication::activeWindow())
        return active;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && !window->isMinimized() && qobject_cast<QMainWindow*>(window) != nullptr)
            return window;
    }
    return nullptr;
}

QMessageBox::Icon to_icon(BoxIcon icon)
{
    switch (icon) {
    case BoxIcon::information:
        return QMessageBox::Information;
    case BoxIcon::question:
        return QMessageBox::Question;
    case BoxIcon::exclamation:
        return QMessageBox::Warning;
    case BoxIcon::program:
    case BoxIcon::none:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton to_button(BoxAnswer answer)
{
    switch (answer) {
    case BoxAnswer::yes:
        return QMessageBox::Yes;
    case BoxAnswer::no:
        return QMessageBox::No;
    case BoxAnswer::cancel:
        return QMessageBox::Cancel;
    case BoxAnswer::ok:
        break;
    }
    return QMessageBox::Ok;
}

BoxAnswer to_answer(int button)
{
    switch (button) {
    case QMessageBox::Yes:
        return BoxAnswer::yes;
    case QMessageBox::No:
        return BoxAnswer::no;
    case QMessageBox::Cancel:
        return BoxAnswer::cancel;
    default:
        return BoxAnswer::ok;
    }
}

QString title_or_default(const std::string& title)
{
    return title.empty() ? QString::fromLatin1(program_title) : to_qt(title);
}

void set_buttons(QMessageBox& widget, const MessageBox& box)
{
    switch (box.buttons) {
    case BoxButtons::yes_no:
        widget.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        widget.setEscapeButton(QMessageBox::No);
        widget.setDefaultButton(to_button(box.default_button.value_or(BoxAnswer::yes)));
        break;
    case BoxButtons::ok_cancel:
        widget.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        widget.setDefaultButton(to_button(box.default_button.value_or(BoxAnswer::ok)));
        break;
    case BoxButtons::ok:
        widget.setStandardButtons(QMessageBox::Ok);
        widget.setDefaultButton(QMessageBox::Ok);
        break;
    }
}

/// Width, in pixels, of the widest piece of a text between separators.
int widest_piece(const QString& text, const char* separator, const QFontMetrics& metrics)
{
    int widest = 0;
    for (const QString& piece : text.split(QRegularExpression(QLatin1String(separator))))
        widest = std::max(widest, metrics.horizontalAdvance(piece));
    return widest;
}

/// Widens the box for a long word, which is never broken, as far as the screen allows.
void make_room_for_words(QMessageBox& widget, QLabel& label, const QString& text)
{
    constexpr int usual_width = 480; // the toolkit exceeds this only for words that it cannot break
    constexpr int long_word = 300;
    QFont bold = label.font();
    bold.setBold(true); // as marked words are
    const QFontMetrics metrics(bold);
    const QString blanks(4, QLatin1Char(' '));
    const int word = widest_piece(text, "\\s+", metrics) + metrics.horizontalAdvance(blanks);
    if (word < long_word)
        return;
    const int line = std::min(widest_piece(text, "\n", metrics), usual_width);
    constexpr int icon_and_margins = 120;
    const int widest = std::min(widget.screen()->availableGeometry().width() * 3 / 4,
                                room_on_screen(widget).width() - icon_and_margins);
    label.setMinimumWidth(std::min(std::max(word, line), widest));
}

/// Shows plain text, or markup if parts of it are marked. The text can be read with the keyboard.
void show_text(AnsweredBox& widget, const MessageBox& box)
{
    widget.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QLabel* const label = widget.text_label();
    if (label != nullptr) {
        label->setFocusPolicy(Qt::StrongFocus); // by default only a click focuses it
        make_room_for_words(widget, *label, to_qt(box.text));
    }
    if (box.marked.empty()) {
        widget.setTextFormat(Qt::PlainText);
        widget.setText(to_qt(box.text));
        return;
    }
    widget.setTextFormat(Qt::RichText);
    widget.setText(to_marked_html(box.text, box.marked));
    if (label != nullptr)
        label->setAccessibleName(to_qt(box.text));
}

/// Makes the prompt plain text; by default it accepts markup and treats "&" as an access letter.
void make_prompt_plain(QInputDialog& widget)
{
    for (QLabel* label : widget.findChildren<QLabel*>()) {
        const QString text = widget.labelText();
        label->setBuddy(nullptr);
        label->setTextFormat(Qt::PlainText);
        label->setText(text);
    }
}

} // namespace

BoxAnswer QtDesktop::message_box(const MessageBox& box)
{
    AnsweredBox widget(window_in_front(), box.must_be_answered);
    widget.setWindowTitle(title_or_default(box.title));
    show_text(widget, box);
    widget.setIcon(to_icon(box.icon));
    if (box.icon == BoxIcon::program)
        widget.setIconPixmap(program_icon().pixmap(icon_of_program_size, widget.devicePixelRatioF()));
    set_buttons(widget, box);
    if (!box.details.empty())
        widget.add_details(to_qt(box.details), to_qt(box.text));

    return to_answer(run_modal(widget));
}

std::optional<std::string> QtDesktop::input_box(const InputBox& box)
{
    QInputDialog widget(window_in_front());
    widget.setWindowTitle(title_or_default(box.title));
    widget.setInputMode(QInputDialog::TextInput);
    widget.setLabelText(to_qt(box.prompt));
    make_prompt_plain(widget);
    if (auto* line = widget.findChild<QLineEdit*>()) {
        line->setMaxLength(2 * box.longest);
        line->setValidator(new LongestText(line, box.longest));
        line->setAccessibleName(to_qt(box.prompt));
        const QMargins margins = widget.layout()->contentsMargins();
        line->setMinimumWidth(std::min(line->fontMetrics().averageCharWidth() * 60,
                                       room_on_screen(widget).width() - margins.left() - margins.right()));
    }
    widget.setTextValue(to_qt(box.default_text));
    if (run_modal(widget) != QDialog::Accepted)
        return std::nullopt;
    // A clipboard may contain NUL characters, which would end the text for code that reads it as a C string.
    return from_qt(widget.textValue().remove(QChar(QChar::Null)));
}

std::optional<ChosenColumns> QtDesktop::columns_box(const ColumnsBox& box)
{
    ColumnsDialog widget(window_in_front(), box);
    widget.setWindowTitle(title_or_default(box.title));
    if (run_modal(widget) != QDialog::Accepted)
        return std::nullopt;
    return widget.chosen();
}

ChosenFile QtDesktop::open_file_dialog(const FileDialog& dialog)
{
    OneFileDialog widget(file_dialog_parent());
    widget.setAcceptMode(QFileDialog::AcceptOpen);
    return choose_file(widget, dialog);
}

ChosenFile QtDesktop::save_file_dialog(const FileDialog& dialog)
{
    OneFileDialog widget(file_dialog_parent());
    widget.setAcceptMode(QFileDialog::AcceptSave);
    return choose_file(widget, dialog);
}

QWidget* QtDesktop::file_dialog_parent() const
{
    QWidget* const front = window_in_front();
    return front != nullptr ? front : host_.widget();
}

ChosenFile QtDesktop::choose_file(OneFileDialog& widget, const FileDialog& dialog)
{
    if (!dialog.title.empty())
        widget.setWindowTitle(to_qt(dialog.title));
    widget.setNameFilters(to_name_filters(dialog.filter));
    widget.setDefaultSuffix(to_qt(dialog.default_extension));
    if (!dialog.initial_folder.empty())
        widget.setDirectory(to_qt(dialog.initial_folder));
    if (!dialog.initial_file.empty())
        widget.selectFile(to_qt(dialog.initial_file));
    widget.take_size();

    if (run_modal(widget) != QDialog::Accepted || widget.chosen_path().isEmpty())
        return {};
    const QFileInfo chosen(QDir::cleanPath(QFileInfo(widget.chosen_path()).absoluteFilePath()));
    return {from_qt(chosen.filePath()), from_qt(chosen.fileName())};
}

void QtDesktop::pump()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    // Applies layout changes and repaints now instead of at the next turn of the event loop.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
    throw_if_ending();
}

void QtDesktop::beep()
{
    QApplication::beep();
}

void QtDesktop::set_pointer(Pointer pointer)
{
    if (pointer == Pointer::busy) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        ++busy_;
    } else if (busy_ > 0) {
        QGuiApplication::restoreOverrideCursor();
        --busy_;
    }
}

int QtDesktop::run_modal(QDialog& dialog)
{
    throw_if_ending();
    const NormalPointer normal_pointer;
    const int result = dialog.exec();
    throw_if_ending();
    return result;
}

void QtDesktop::throw_if_ending() const
{
    if (guard_.ending())
        throw common::ProgramEnded{};
}

} // namespace cuedrill::platform::qt
