#pragma once

#include <QPropertyNotifier>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "app/screens/processes/InspectorView.h"
#include "app/screens/processes/ProcessesView.h"
#include "app/screens/processes/RowActs.h"
#include "desktop/look/Look.h"
#include "desktop/parts/IconButton.h"
#include "desktop/parts/NoticeBar.h"
#include "desktop/parts/SegmentedPicker.h"
#include "desktop/processes/InspectorPane.h"
#include "desktop/processes/ProcessTable.h"
#include "desktop/processes/SearchField.h"
#include "desktop/processes/SystemStripBar.h"
#include "desktop/window/Page.h"
#include "desktop/window/WindowState.h"

class QSplitter;

namespace tolvane::desktop {

/// The table's state as the user left it, for the next page of this run.
struct TableArrangement {
    std::vector<RowOrder> order;
    std::set<std::string> disclosedIds;
};

/// The processes screen: table, inspector, system strip.
class ProcessesPage : public Page {
    Q_OBJECT

public:
    /// `model`, `look` and `state` outlive the page. `locale` is an ICU locale identifier.
    ProcessesPage(AppModel& model, const Look& look, WindowState& state, std::string locale, QWidget* parent = nullptr);
    ~ProcessesPage() override;

    /// Call before the page is first shown. Restores the table from `kept` if it holds an arrangement, and saves the
    /// table's arrangement there when the page goes.
    void keepArrangement(std::shared_ptr<TableArrangement> kept);

    std::vector<QWidget*> controls() override;
    QWidget* firstFocus() override { return tree_; }

    ProcessTable& table() const { return *tree_; }
    ProcessesView& view() { return view_; }

protected:
    void draw() override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildControls();
    void buildPanes();
    void connectControls();
    void connectModel();
    void restoreLayout();
    void showSorting();
    void sortByColumn(int column);
    void showInspector();
    std::vector<TableRow> shownSelection() const;
    void openMenu(QPoint position);
    void chosen(ProcessAction action, const std::vector<TableRow>& clicked, const ProcessActions& subject);
    void carryOut(ProcessAction action);
    void askForceQuit(const std::vector<TableRow>& lines);
    void fitStrip();

    AppModel& model_;
    const Look& look_;
    WindowState& state_;
    ProcessesView view_;
    SegmentedPicker* group_;
    SearchField* search_;
    IconButton* inspectorToggle_;
    ProcessTable* tree_;
    SystemStripBar* strip_;
    QSplitter* panes_;
    NoticeBar* notice_;
    InspectorPane* inspector_;
    InspectorView inspected_;
    RowActs acts_;
    std::shared_ptr<TableArrangement> kept_;
    QPropertyNotifier selection_;
};

}  // namespace tolvane::desktop
