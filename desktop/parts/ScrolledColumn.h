#pragma once

#include <QScrollArea>

#include "desktop/look/Look.h"

class QVBoxLayout;

namespace tolvane::desktop {

/// A vertically scrolling column of blocks with the page's margins, limited to a readable width.
class ScrolledColumn : public QScrollArea {
    Q_OBJECT

public:
    /// `topMargin` is the space above the first block, `gap` the space between two.
    ScrolledColumn(const Look& look, int topMargin, int gap);

    /// The layout to add blocks to.
    QVBoxLayout& blocks() const { return *blocks_; }

private:
    QVBoxLayout* blocks_;
};

}  // namespace tolvane::desktop
