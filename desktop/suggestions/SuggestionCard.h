#pragma once

#include <QWidget>
#include <vector>

#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/suggestions/SuggestionRowWidget.h"

class QVBoxLayout;

namespace tolvane::desktop {

/// All suggestions of one kind: a heading, the rows on one background, and an explanation of the kind.
class SuggestionCard : public QWidget {
    Q_OBJECT

public:
    explicit SuggestionCard(const Look& look, QWidget* parent = nullptr);

    /// Rows that stay keep their widgets, and with them the keyboard focus.
    void show(const SuggestionSection& section);
    using QWidget::show;

    const std::vector<SuggestionRowWidget*>& rows() const { return rows_; }

signals:
    void wanted(tolvane::SuggestionRow row, tolvane::SuggestionAction action);
    void menuOpened();
    void menuClosed();

private:
    class Ground;

    SuggestionRowWidget* rowOf(const SuggestionRow& row);

    const Look& look_;
    ElidedLabel* heading_;
    Ground* ground_;
    QVBoxLayout* list_;
    ParagraphLabel* footer_;
    std::vector<SuggestionRowWidget*> rows_;
};

}  // namespace tolvane::desktop
