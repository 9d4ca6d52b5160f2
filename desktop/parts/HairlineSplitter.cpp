#include "desktop/parts/HairlineSplitter.h"

namespace tolvane::desktop {

/// The toolkit itself widens the grabbing area of a handle of one pixel.
HairlineSplitter::HairlineSplitter(Qt::Orientation orientation, QWidget* parent) : QSplitter(orientation, parent) {
    setHandleWidth(1);
    setChildrenCollapsible(false);
}

}  // namespace tolvane::desktop
