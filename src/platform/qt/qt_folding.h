#pragma once

#include "platform/qt/qt_caption_label.h"
#include "platform/qt/qt_dialog_line.h"
#include "platform/qt/qt_toolbar.h"

#include <QBoxLayout>
#include <QObject>
#include <QWidget>
#include <array>

namespace cuedrill::platform::qt {

/// Space between a heading and the box below it, in pixels.
inline constexpr int heading_gap = 5;

/// The parts of the main window, from top to bottom.
struct FoldingParts {
    QBoxLayout& lines; ///< the layout of all the parts
    Toolbar& toolbar;
    QWidget& headings; ///< of question and answer
    QWidget& question;
    QWidget& answer;
    QWidget& figures;      ///< of the question
    QWidget& shared_place; ///< holds the statistics, and the hint and the list in their place
    QWidget& statistics;   ///< unfolded
    QWidget& folded_statistics;
    QWidget& hint_and_list;
    QWidget& hint;
    QWidget& list;
    DialogLine& dialog;
    CaptionLabel& status;
};

/// Lets the parts of the main window give way, one after the other, where it has too little room for all of them: the
/// statistics fold to one line, the figures of the question go, the gaps shrink, the toolbar gets one row instead of
/// two, the folded statistics go, then the headings, then the toolbar, and at last a long text of the status line is
/// shortened to one line. Question, answer, dialog and status line stay.
/// Where the statistics are folded, a hint or a list gets half of the height that is left, and scrolls.
class Folding : public QObject {
public:
    /// @param content the widget with all the parts; owns this object.
    Folding(QWidget& content, const FoldingParts& parts);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Fold {
        bool statistics;
        bool statistics_line;
        bool figures;
        bool wide_gaps;
        bool headings;
        bool whole_status; ///< the status line has as many lines as its text needs
        int toolbar_rows;
        int text_lines; ///< of question and answer that are seen at least
        int hint_lines; ///< lines of a hint or a list that are seen at least, where the statistics are folded

        friend bool operator==(const Fold&, const Fold&) = default;
    };

    static const std::array<Fold, 11> folds;

    void fold();
    [[nodiscard]] bool fits(const Fold& fold) const;
    [[nodiscard]] int width_inside(const Fold& fold) const;
    [[nodiscard]] int shared_height(const Fold& fold) const;
    [[nodiscard]] bool shows_place(const Fold& fold) const;
    void apply(const Fold& fold);

    QWidget& content_;
    FoldingParts parts_;
    QMargins wide_margins_;
    int wide_gap_;
    QMargins frame_margins_;
    int status_height_; ///< of a status line that is not shortened, at least
};

} // namespace cuedrill::platform::qt
