#pragma once

#include <QListView>
#include <optional>
#include <vector>

#include "desktop/look/Look.h"
#include "desktop/rules/RuleListModel.h"

namespace tolvane::desktop {

/// The list of rules, at most one of which is selected.
class RuleList : public QListView {
    Q_OBJECT

public:
    explicit RuleList(const Look& look, QWidget* parent = nullptr);

    void show(std::vector<RuleRow> rows, const std::optional<UUID>& selected);
    using QListView::show;
    const RuleListModel& rules() const { return *rules_; }
    std::optional<UUID> current() const;

signals:
    /// The user changed or cleared the selection.
    void chosen();
    /// The user asked for a rule's menu at this point on the screen.
    void menuWanted(QPoint place);
    void deleteWanted();

protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void select(const std::optional<UUID>& id);

    RuleListModel* rules_;
    bool showing_ = false;
};

}  // namespace tolvane::desktop
