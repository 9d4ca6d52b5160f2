#pragma once

#include <QWidget>
#include <vector>

#include "desktop/look/Look.h"

class QVBoxLayout;

namespace tolvane::desktop {

/// Rows on one background with an edge around them and a hairline between neighbours. Hidden rows leave no gap.
class Card : public QWidget {
    Q_OBJECT

public:
    explicit Card(const Look& look, QWidget* parent = nullptr);

    /// The card takes ownership of the row.
    void addRow(QWidget* row);
    /// Deletes all rows after the first `count`.
    void keepRows(std::size_t count);
    const std::vector<QWidget*>& rows() const { return rows_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
    QVBoxLayout* column_;
    std::vector<QWidget*> rows_;
};

}  // namespace tolvane::desktop
