#include "desktop/parts/HairlineSplitter.h"

namespace tolvane::desktop {

/// The toolkit itself widens the grab area of a one-pixel handle.
HairlineSplitter::HairlineSplitter(Qt::Orientation orientation, QWidget* parent) : QSplitter(orientation, parent) {
    setHandleWidth(1);
    setChildrenCollapsible(false);
}

}  // namespace tolvane::desktop
