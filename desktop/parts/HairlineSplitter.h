#pragma once

#include <QSplitter>

namespace tolvane::desktop {

/// Panes separated by a one-pixel line with a wider grab area.
class HairlineSplitter : public QSplitter {
    Q_OBJECT

public:
    explicit HairlineSplitter(Qt::Orientation orientation, QWidget* parent = nullptr);
};

}  // namespace tolvane::desktop
