#pragma once

#include <QAbstractItemDelegate>

#include "desktop/look/Look.h"
#include "desktop/rules/RuleListModel.h"

namespace tolvane::desktop {

/// Draws one rule of the list: its name, its wrapped summary, its mode and what it would match.
class RuleDelegate : public QAbstractItemDelegate {
    Q_OBJECT

public:
    /// Both outlive it.
    RuleDelegate(const Look& look, const RuleListModel& model, QObject* parent);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    void paintWords(QPainter& painter, const QStyleOptionViewItem& option, const RuleRow& row) const;
    int lastLineHeight() const;

    const Look& look_;
    const RuleListModel& model_;
};

}  // namespace tolvane::desktop
