#pragma once

#include <QWidget>
#include <array>

#include "app/screens/projects/ProjectsView.h"
#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/IconButton.h"
#include "desktop/projects/IconLabel.h"
#include "desktop/projects/NumberColumn.h"
#include "desktop/projects/ShrinkingRow.h"

class QBoxLayout;
class QPushButton;

namespace tolvane::desktop {

/// One running project with its numbers and controls.
class ProjectRowPane : public QWidget {
    Q_OBJECT

public:
    explicit ProjectRowPane(const Look& look, QWidget* parent = nullptr);

    void show(ProjectRow row);
    using QWidget::show;
    /// The project that is shown now, which the controls act on.
    const ProjectRow& row() const { return row_; }

    QPushButton& parkButton() const { return *park_; }
    IconButton& menuButton() const { return *more_; }

signals:
    void parkWanted();
    /// `place` is the point on the screen to open the menu at.
    void menuWanted(QPoint place);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    ShrinkingRow* buildFirstLine();
    QWidget* buildFigures();
    void buildRow();

    const Look& look_;
    ProjectRow row_;
    QBoxLayout* middle_ = nullptr;
    QWidget* figuresRow_ = nullptr;
    ElidedLabel* title_;
    IconLabel* branch_;
    IconLabel* mark_;
    ElidedLabel* details_;
    std::array<NumberColumn*, 3> figures_;
    QPushButton* park_;
    IconButton* more_;
};

}  // namespace tolvane::desktop
