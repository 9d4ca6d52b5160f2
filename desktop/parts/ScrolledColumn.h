#pragma once

#include <QScrollArea>

#include "desktop/look/Look.h"

class QVBoxLayout;

namespace tolvane::desktop {

/// One column of blocks with the page's margins, no wider than can be read, that scrolls up and down.
class ScrolledColumn : public QScrollArea {
    Q_OBJECT

public:
    /// `topMargin` stands above the first block, `gap` between two.
    ScrolledColumn(const Look& look, int topMargin, int gap);

    /// Where the blocks go.
    QVBoxLayout& blocks() const { return *blocks_; }

private:
    QVBoxLayout* blocks_;
};

}  // namespace tolvane::desktop
