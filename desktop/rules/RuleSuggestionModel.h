#pragma once

#include <QAbstractItemDelegate>
#include <QAbstractListModel>
#include <vector>

#include "app/screens/rules/RuleSuggestion.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// What the new-rule sheet offers.
class RuleSuggestionModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void show(std::vector<RuleSuggestion> entries);
    const RuleSuggestion& entry(int row) const { return entries_[static_cast<std::size_t>(row)]; }
    QModelIndex find(const std::string& id) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<RuleSuggestion> entries_;
};

/// Draws one of them: icon, title, and a second line.
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
