#include "platform/qt/qt_columns_dialog.h"

#include "platform/qt/qt_screen_room.h"
#include "platform/qt/qt_text.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace cuedrill::platform::qt {
namespace {

/// Width of a column, in average characters, that is given without scrolling.
constexpr int widest_column = 40;

/// Width of a choice on a small screen, in average characters.
constexpr int narrowest_choice = 16;

/// With its heading and a scroll bar.
constexpr int lines_of_smallest_table = 3;

/// In pixels.
constexpr QSize usual_size(560, 320);

/// A text of a cell: on one line, and no longer than anybody reads in a preview.
QString cell_text(const std::string& text)
{
    constexpr int longest = 200;
    return to_qt(text).simplified().left(longest);
}

} // namespace

ColumnsDialog::ColumnsDialog(QWidget* parent, const ColumnsBox& box)
    : QDialog(parent), first_label_(to_qt(box.first_label)), second_label_(to_qt(box.second_label))
{
    for (const std::string& name : box.names)
        names_.append(cell_text(name));
    auto* const prompt = new QLabel(to_qt(box.prompt));
    prompt->setTextFormat(Qt::PlainText);
    prompt->setWordWrap(true);
    first_ = column_choice(box, box.first_label, 0);
    second_ = column_choice(box, box.second_label, 1);
    table_ = preview(box);
    buttons_ = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons_, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons_, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const choices = new QFormLayout;
    choices->addRow(first_label_ + QStringLiteral(":"), first_);
    choices->addRow(second_label_ + QStringLiteral(":"), second_);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(prompt);
    layout->addLayout(choices);
    layout->addWidget(table_);
    layout->addWidget(buttons_);
    show_choice();
    first_->setFocus();
    const QSize room = room_on_screen(*this);
    if (room.height() < sizeHint().height()) {
        draw_together(*layout);
        choices->setVerticalSpacing(layout->spacing());
        table_->setMinimumHeight(lines_of_smallest_table * table_->fontMetrics().lineSpacing());
    }
    resize(sizeHint().expandedTo(usual_size).boundedTo(room));
}

QComboBox* ColumnsDialog::column_choice(const ColumnsBox& box, const std::string& label, int preset)
{
    auto* const choice = new QComboBox;
    choice->addItems(names_);
    choice->setCurrentIndex(preset);
    choice->setAccessibleName(to_qt(label));
    choice->setAccessibleDescription(to_qt(box.prompt));
    choice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    choice->setMinimumContentsLength(24);
    choice->setMinimumWidth(fontMetrics().averageCharWidth() * narrowest_choice);
    connect(choice, &QComboBox::currentIndexChanged, this, [this] { show_choice(); });
    return choice;
}

QTableWidget* ColumnsDialog::preview(const ColumnsBox& box)
{
    auto* const table = new QTableWidget(static_cast<int>(box.rows.size()), static_cast<int>(names_.size()));
    for (int row = 0; row < table->rowCount(); ++row) {
        const std::vector<std::string>& texts = box.rows[static_cast<std::size_t>(row)];
        for (int column = 0; column < std::min(table->columnCount(), static_cast<int>(texts.size())); ++column)
            table->setItem(row, column, new QTableWidgetItem(cell_text(texts[static_cast<std::size_t>(column)])));
    }
    table->setHorizontalHeaderLabels(names_);
    table->verticalHeader()->hide();
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setTabKeyNavigation(false);
    table->setAccessibleName(QStringLiteral("The first records"));
    return table;
}

/// The chosen columns have what they are in their heading, and bold texts.
void ColumnsDialog::show_choice()
{
    // The first choices are made before there is a table.
    if (table_ == nullptr || buttons_ == nullptr)
        return;
    for (int column = 0; column < table_->columnCount(); ++column) {
        const bool is_first = column == first_->currentIndex();
        const bool is_second = column == second_->currentIndex();
        const QString role = is_first ? first_label_ : is_second ? second_label_ : QString();
        table_->horizontalHeaderItem(column)->setText(role.isEmpty() ? names_[column]
                                                                     : role + QStringLiteral(": ") + names_[column]);
        for (int row = 0; row < table_->rowCount(); ++row) {
            if (QTableWidgetItem* const item = table_->item(row, column)) {
                QFont font = item->font();
                font.setBold(is_first || is_second);
                item->setFont(font);
            }
        }
    }
    table_->resizeColumnsToContents();
    const int widest = fontMetrics().averageCharWidth() * widest_column;
    for (int column = 0; column < table_->columnCount(); ++column)
        table_->setColumnWidth(column, std::min(table_->columnWidth(column), widest));
    buttons_->button(QDialogButtonBox::Ok)->setEnabled(first_->currentIndex() != second_->currentIndex());
}

ChosenColumns ColumnsDialog::chosen() const
{
    return {.first = static_cast<std::size_t>(first_->currentIndex()),
            .second = static_cast<std::size_t>(second_->currentIndex())};
}

} // namespace cuedrill::platform::qt
