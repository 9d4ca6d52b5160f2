#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/screens/processes/InspectorContent.h"
#include "app/screens/processes/SelectionInspector.h"
#include "desktop/charts/LineChart.h"
#include "desktop/lists/ValueRows.h"
#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/EmptyState.h"
#include "desktop/processes/CopyableText.h"

class QGridLayout;
class QScrollArea;
class QStackedWidget;
class QVBoxLayout;

namespace tolvane::desktop {

class SubjectHead;

/// The pane beside the processes table: the selection, its values, its history, and the actions on it.
class InspectorPane : public QWidget {
    Q_OBJECT

public:
    InspectorPane(const Look& look, std::string locale, QWidget* parent = nullptr);

    void showNothing();
    void show(const InspectorContent& content);
    void show(const SelectionInspector& selection);
    using QWidget::show;

signals:
    void actionWanted(ProcessAction action);

private:
    QWidget* buildSubject();
    std::optional<ProcessAction> focusedAction() const;
    void showButtons(const std::vector<InspectorButton>& buttons);
    void showCommand(std::vector<ValueRow>& process);

    const Look& look_;
    std::string locale_;
    std::vector<InspectorButton> shownButtons_;
    QStackedWidget* stack_ = nullptr;
    QWidget* footer_ = nullptr;
    QGridLayout* buttons_ = nullptr;
    SubjectHead* head_ = nullptr;
    ValueRows* figures_ = nullptr;
    ElidedLabel* memoryTitle_ = nullptr;
    ElidedLabel* cpuTitle_ = nullptr;
    ElidedLabel* processTitle_ = nullptr;
    LineChart* memoryChart_ = nullptr;
    LineChart* cpuChart_ = nullptr;
    QWidget* memoryBlock_ = nullptr;
    QWidget* cpuBlock_ = nullptr;
    ValueRows* process_ = nullptr;
    ElidedLabel* commandLabel_ = nullptr;
    CopyableText* command_ = nullptr;
};

}  // namespace tolvane::desktop
