#pragma once

namespace tolvane::desktop {

/// The round number at or above `value` that an axis ends with: 1, 2 or 5 times a power of ten; 1 for what is not
/// above 0.
double roundTop(double value);

}  // namespace tolvane::desktop
