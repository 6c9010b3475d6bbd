#include "platform/qt/qt_file_dialog.h"

#include "platform/qt/qt_screen_room.h"

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace cuedrill::platform::qt {

namespace {

constexpr QSize usual_size{760, 480};

bool has_quotes(const QString& name)
{
    return name.contains(QLatin1Char('"'));
}

} // namespace

OneFileDialog::OneFileDialog(QWidget* parent) : QFileDialog(parent)
{
    // The native "open" dialogs reject the name of a file that does not exist yet.
    setOption(QFileDialog::DontUseNativeDialog);
    setFileMode(QFileDialog::AnyFile);
    auto* const line = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (line == nullptr)
        return;
    // The toolkit would select the file named between the quotes and overwrite the typed name with it.
    disconnect(line, &QLineEdit::textChanged, this, nullptr);
    connect(line, &QLineEdit::textChanged, this, [this] { enable_button(); });
    connect(line, &QLineEdit::textEdited, this, [this] { forget_clicked_file(); });
}

void OneFileDialog::take_size()
{
    const QSize room = room_on_screen(*this);
    const QSize least = minimumSizeHint();
    if (least != least.boundedTo(room) && layout() != nullptr) {
        draw_together(*layout());
        lower_lists();
    }
    resize(sizeHint().expandedTo(usual_size).boundedTo(room));
}

void OneFileDialog::lower_lists()
{
    constexpr int fewest_lines = 4; // one of them is the heading
    for (const char* name : {"listView", "treeView", "sidebar"}) {
        if (auto* const list = findChild<QAbstractItemView*>(QLatin1String(name)))
            list->setMinimumHeight(fewest_lines * list->fontMetrics().lineSpacing());
    }
}

void OneFileDialog::enable_button()
{
    const auto* const buttons = findChild<QDialogButtonBox*>();
    if (buttons == nullptr)
        return;
    const auto which = acceptMode() == AcceptOpen ? QDialogButtonBox::Open : QDialogButtonBox::Save;
    if (QPushButton* const button = buttons->button(which))
        button->setEnabled(!typed_name().isEmpty());
}

/// Clears the selection: the typed name counts, so no file must look selected.
void OneFileDialog::forget_clicked_file()
{
    if (auto* const files = findChild<QAbstractItemView*>(QStringLiteral("listView")))
        files->clearSelection();
}

QString OneFileDialog::typed_name() const
{
    const auto* const line = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    return line != nullptr ? line->text() : QString();
}

/// Full path, with the default extension added as the toolkit does for names without quotes.
QString OneFileDialog::path_of(const QString& name) const
{
    const QString path = directory().absoluteFilePath(name);
    const QFileInfo file(path);
    const bool complete = defaultSuffix().isEmpty() || file.isDir() || file.fileName().contains(QLatin1Char('.'));
    return complete ? path : path + QLatin1Char('.') + defaultSuffix();
}

void OneFileDialog::accept()
{
    quoted_path_.clear();
    const QString name = typed_name();
    if (!has_quotes(name)) {
        QFileDialog::accept();
        return;
    }
    const QString path = path_of(name);
    if (QFileInfo(path).isDir()) {
        setDirectory(path);
        selectFile(QString());
        return;
    }
    if (!may_replace(path))
        return;
    quoted_path_ = path;
    QDialog::accept();
}

bool OneFileDialog::may_replace(const QString& path)
{
    if (acceptMode() == AcceptOpen || !QFileInfo::exists(path))
        return true;
    // The toolkit's own wording.
    const QString question = QFileDialog::tr("%1 already exists.\nDo you want to replace it?");
    return QMessageBox::warning(this, windowTitle(), question.arg(QFileInfo(path).fileName()),
                                QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

QString OneFileDialog::chosen_path() const
{
    if (!quoted_path_.isEmpty())
        return quoted_path_;
    const QStringList files = selectedFiles();
    return files.isEmpty() ? QString() : files.front();
}

} // namespace cuedrill::platform::qt
