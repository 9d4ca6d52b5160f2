#pragma once

namespace tolvane::desktop {

/// The upper end of an axis: the round number at or above `value`, which is 1, 2 or 5 times a power of ten. 1 if
/// `value` is 0 or less.
double roundTop(double value);

}  // namespace tolvane::desktop
