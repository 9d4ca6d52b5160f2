#pragma once

#include <QWidget>

#include "app/screens/suggestions/SuggestionMenu.h"
#include "app/screens/suggestions/SuggestionsView.h"
#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/suggestions/SplitButton.h"

class QBoxLayout;
class QMenu;
class QPushButton;

namespace tolvane::desktop {

/// One suggestion: its subject, reason, value and actions.
class SuggestionRowWidget : public QWidget {
    Q_OBJECT

public:
    explicit SuggestionRowWidget(const Look& look, QWidget* parent = nullptr);

    void show(const SuggestionRow& row);
    using QWidget::show;

    const SuggestionRow& row() const { return row_; }
    SplitButton& actionButton() const { return *action_; }
    /// Lets the rows of a list align their values in a column.
    int buttonsWidth() const;
    void setButtonsWidth(int width);

signals:
    void wanted(tolvane::SuggestionRow row, tolvane::SuggestionAction action);
    /// While a menu is open, its row must not change.
    void menuOpened();
    void menuClosed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildLayout();
    void fill(QMenu& menu, bool includesPrimary);
    int iconSize() const { return look_.fonts().scaled(Sizes::listIcon); }

    const Look& look_;
    SuggestionRow row_;
    ElidedLabel* title_;
    ParagraphLabel* evidence_;
    ElidedLabel* figure_;
    QWidget* buttons_;
    QBoxLayout* whole_ = nullptr;
    QPushButton* makeRule_;
    SplitButton* action_;
};

}  // namespace tolvane::desktop
