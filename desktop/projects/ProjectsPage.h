#pragma once

#include <string>
#include <vector>

#include "app/screens/projects/ProjectsView.h"
#include "desktop/look/Look.h"
#include "desktop/parts/Card.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/ScrolledColumn.h"
#include "desktop/projects/ParkedRowPane.h"
#include "desktop/projects/ProjectRowPane.h"
#include "desktop/window/Page.h"

class QMenu;
class QStackedLayout;

namespace tolvane::desktop {

class EmptyState;

/// The projects screen: what runs, and what is parked. Has project facts read while it is visible.
class ProjectsPage : public Page {
    Q_OBJECT

public:
    /// `model` and `look` outlive the page. `locale` is an ICU locale identifier, `zone` an ICU time zone identifier.
    ProjectsPage(AppModel& model, const Look& look, std::string locale, std::string zone = {},
                 QWidget* parent = nullptr);

    std::vector<QWidget*> controls() override { return {}; }
    QWidget* firstFocus() override;
    QString subtitle() const override;

    const ProjectsContent& shown() const { return shown_; }
    ProjectsView& view() { return view_; }
    ProjectRowPane& runningRow(std::size_t index) const;
    ParkedRowPane& parkedRow(std::size_t index) const;

protected:
    void draw() override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct Section {
        QWidget* whole = nullptr;
        Card* card = nullptr;
        ParagraphLabel* footer = nullptr;
    };

    void buildColumn();
    Section buildSection(std::string_view title);
    void keepOrder(std::vector<ProjectRow>& rows) const;
    void showRunning();
    void showParked();
    void addRunningRow();
    void addParkedRow();
    void askToPark(const ProjectGroup& project);
    void askToStop(const ProjectGroup& project);
    void ask(const Question& question, bool destructive);
    QMenu* newMenu();
    void openRunningMenu(const ProjectRow& row, QPoint place);
    void openParkedMenu(const ParkedRow& row, QPoint place);

    const Look& look_;
    ProjectsView view_;
    ProjectsContent shown_;
    QStackedLayout* panes_;
    EmptyState* empty_;
    ScrolledColumn* scroll_;
    Section running_;
    Section parked_;
};

}  // namespace tolvane::desktop
