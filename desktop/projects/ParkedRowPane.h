#pragma once

#include <QWidget>
#include <vector>

#include "app/screens/projects/ProjectsView.h"
#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/IconButton.h"
#include "desktop/projects/CopyableLine.h"

class QPushButton;
class QVBoxLayout;

namespace tolvane::desktop {

/// One parked project and what Start Again would start.
class ParkedRowPane : public QWidget {
    Q_OBJECT

public:
    explicit ParkedRowPane(const Look& look, QWidget* parent = nullptr);

    void show(ParkedRow row);
    using QWidget::show;
    /// The project that is shown now, which the controls act on.
    const ParkedRow& row() const { return row_; }

    QPushButton& startButton() const { return *start_; }
    IconButton& menuButton() const { return *more_; }

signals:
    void startWanted();
    /// `place` is the point on the screen to open the menu at.
    void menuWanted(QPoint place);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QVBoxLayout* buildTexts();
    void buildRow();
    void showCommands();

    const Look& look_;
    ParkedRow row_;
    ElidedLabel* title_;
    ElidedLabel* when_;
    QVBoxLayout* commandColumn_;
    std::vector<CopyableLine*> commands_;
    ElidedLabel* containers_;
    QPushButton* start_;
    IconButton* more_;
};

}  // namespace tolvane::desktop
