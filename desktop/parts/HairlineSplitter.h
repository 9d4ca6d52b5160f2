#pragma once

#include <QSplitter>

namespace tolvane::desktop {

/// Panes parted by a single line that is easier to grab than it looks.
class HairlineSplitter : public QSplitter {
    Q_OBJECT

public:
    explicit HairlineSplitter(Qt::Orientation orientation, QWidget* parent = nullptr);
};

}  // namespace tolvane::desktop
