#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "app/screens/panel/PanelView.h"
#include "desktop/look/Look.h"
#include "desktop/machine/CPUBlock.h"
#include "desktop/machine/MemoryBlock.h"
#include "desktop/panel/PanelRows.h"
#include "desktop/panel/QuietButton.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/LinkButton.h"

class QCheckBox;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace tolvane::desktop {

/// The contents of the panel, from memory to footer. The middle scrolls if the panel is not high enough.
class PanelContents : public QWidget {
    Q_OBJECT

public:
    explicit PanelContents(const Look& look, QWidget* parent = nullptr);

    void show(const PanelView& panel);
    using QWidget::show;

    /// Resizes to that width and to the height it needs, at most `most`.
    void fit(int width, int most);

    QPushButton& openButton() const { return *open_; }

signals:
    void openWanted();
    void suggestionsWanted();
    void pauseWanted(bool paused);
    void settingsWanted();
    void quitWanted();

private:
    QWidget* buildLargest();
    QWidget* buildSuggestions();
    QWidget* buildActivity();
    QWidget* buildFooter();
    void build();
    void connectControls();
    void showLargest(const std::vector<PanelLine>& lines);
    void showSuggestions(const PanelView& panel);

    const Look& look_;
    MemoryBlock* memory_;
    CPUBlock* cpu_;
    PanelRows* largest_;
    /// Includes the line above it.
    QWidget* suggestionsBlock_ = nullptr;
    LinkButton* showSuggestions_;
    PanelRows* suggestions_;
    QWidget* activityBlock_ = nullptr;
    ElidedLabel* activity_;
    ElidedLabel* activityDate_;
    QScrollArea* middle_;
    QWidget* footer_ = nullptr;
    QPushButton* open_;
    QCheckBox* pause_;
    QuietButton* settings_;
    QuietButton* quit_;
};

}  // namespace tolvane::desktop
