#pragma once

#include <string>
#include <vector>

#include "app/screens/history/HistoryView.h"
#include "desktop/charts/MomentChart.h"
#include "desktop/history/MomentPane.h"
#include "desktop/look/Look.h"
#include "desktop/parts/ScrolledColumn.h"
#include "desktop/parts/SegmentedPicker.h"
#include "desktop/window/Page.h"

class QStackedLayout;

namespace tolvane::desktop {

/// The history screen: memory and CPU over a range, and the details of one moment. Follows the model while it is
/// visible.
class HistoryPage : public Page {
    Q_OBJECT

public:
    /// `model` and `look` outlive the page. `locale` is an ICU locale identifier, `zone` an ICU time zone identifier.
    HistoryPage(AppModel& model, const Look& look, std::string locale, std::string zone = {},
                QWidget* parent = nullptr);

    std::vector<QWidget*> controls() override { return {range_}; }
    QWidget* firstFocus() override { return memory_; }

    HistoryView& view() { return view_; }

protected:
    void draw() override;
    void showEvent(QShowEvent* event) override;

private:
    void buildColumn();
    void connectControls();

    const Look& look_;
    HistoryView view_;
    SegmentedPicker* range_;
    QStackedLayout* panes_;
    QWidget* empty_;
    ScrolledColumn* scroll_;
    MomentChart* memory_;
    MomentChart* cpu_;
    MomentPane* moment_;
};

}  // namespace tolvane::desktop
