#pragma once

#include <QPropertyNotifier>
#include <string>
#include <vector>

#include "app/screens/stats/StatsView.h"
#include "desktop/charts/DayChart.h"
#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/SegmentedPicker.h"
#include "desktop/stats/RuleBars.h"
#include "desktop/window/Page.h"

class QPushButton;
class QScrollArea;
class QStackedLayout;
class QVBoxLayout;

namespace tolvane::desktop {

/// The stats screen: the large number, a bar for each rule, a bar for each day, and what log-only rules would have
/// freed. While visible, it recounts when the log changes and when a day begins.
class StatsPage : public Page {
    Q_OBJECT

public:
    /// `model` and `look` outlive the page. `locale` is an ICU locale identifier, `zone` an ICU time zone identifier.
    StatsPage(AppModel& model, const Look& look, std::string locale, std::string zone = {}, QWidget* parent = nullptr);

    std::vector<QWidget*> controls() override { return {period_}; }
    QWidget* firstFocus() override { return chart_; }

protected:
    void draw() override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();
    void buildColumn();
    QWidget* buildEachRule();
    QWidget* buildChart();
    QWidget* buildWould();
    void connectControls();
    void connectModel(AppModel& model);
    void showContent(const StatsContent& content);
    void showWould(const std::optional<WouldHaveFreed>& would);

    const Look& look_;
    StatsView view_;
    StatsContent shown_;
    Date shownDay_;
    SegmentedPicker* period_ = nullptr;
    QStackedLayout* panes_ = nullptr;
    QWidget* empty_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    ParagraphLabel* headline_ = nullptr;
    ElidedLabel* freed_ = nullptr;
    ParagraphLabel* remark_ = nullptr;
    QWidget* eachRule_ = nullptr;
    RuleBars* eachRuleBars_ = nullptr;
    ParagraphLabel* chartTitle_ = nullptr;
    DayChart* chart_ = nullptr;
    QWidget* would_ = nullptr;
    RuleBars* wouldBars_ = nullptr;
    QPushButton* showRule_ = nullptr;
    QPropertyNotifier newDay_;
};

}  // namespace tolvane::desktop
