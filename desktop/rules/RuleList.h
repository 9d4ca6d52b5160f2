#pragma once

#include <QListView>
#include <optional>
#include <vector>

#include "desktop/look/Look.h"
#include "desktop/rules/RuleListModel.h"

namespace tolvane::desktop {

/// The rules, one of which can be selected.
class RuleList : public QListView {
    Q_OBJECT

public:
    explicit RuleList(const Look& look, QWidget* parent = nullptr);

    void show(std::vector<RuleRow> rows, const std::optional<UUID>& selected);
    using QListView::show;
    const RuleListModel& rules() const { return *rules_; }
    std::optional<UUID> current() const;

signals:
    /// The user selected another rule, or none.
    void chosen();
    /// The user asked for what can be done with a rule, at a place of the screen.
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
