#pragma once

#include <QAbstractItemDelegate>

#include "app/screens/rules/RuleSuggestion.h"
#include "desktop/lists/ListModel.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// The suggestions of the new-rule sheet.
class RuleSuggestionModel : public ListModel<RuleSuggestion, &RuleSuggestion::id> {
    Q_OBJECT

public:
    using ListModel::ListModel;

protected:
    QVariant cell(const RuleSuggestion& entry, int role) const override;
};

/// Draws a suggestion: icon, title, and a second line.
class SuggestionDelegate : public QAbstractItemDelegate {
    Q_OBJECT

public:
    /// Both outlive it.
    SuggestionDelegate(const Look& look, const RuleSuggestionModel& model, QObject* parent);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const Look& look_;
    const RuleSuggestionModel& model_;
};

}  // namespace tolvane::desktop
