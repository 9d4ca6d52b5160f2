#pragma once

#include <QPropertyNotifier>
#include <string>
#include <vector>

#include "app/screens/activity/ActivityView.h"
#include "desktop/activity/ActivityTable.h"
#include "desktop/look/Look.h"
#include "desktop/parts/SegmentedPicker.h"
#include "desktop/window/Page.h"
#include "desktop/window/WindowState.h"

class QPushButton;
class QStackedLayout;

namespace tolvane::desktop {

class EmptyState;

/// The activity screen: the log as a table, or a message that explains why it is empty.
class ActivityPage : public Page {
    Q_OBJECT

public:
    /// `model`, `look` and `state` outlive the page. `locale` is an ICU locale identifier, `zone` an ICU time zone
    /// identifier.
    ActivityPage(AppModel& model, const Look& look, WindowState& state, std::string locale, std::string zone = {},
                 QWidget* parent = nullptr);

    std::vector<QWidget*> controls() override;
    QWidget* firstFocus() override { return table_; }

    ActivityTable& table() const { return *table_; }

protected:
    void draw() override;

private:
    void connectControls();
    void askToClear();

    const Look& look_;
    WindowState& state_;
    ActivityView view_;
    SegmentedPicker* filter_;
    QPushButton* clear_;
    ActivityTable* table_;
    std::vector<EmptyState*> empty_;
    QStackedLayout* panes_;
    QPropertyNotifier log_;
};

}  // namespace tolvane::desktop
