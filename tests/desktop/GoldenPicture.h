#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QString>

namespace tolvane::desktop {

/// Compares a picture with the one kept under that name in tests/golden. A few pixels may differ a little, since font
/// renderers do. On a mismatch the picture and the difference are written below the build folder, and the failure says
/// where. With TOLVANE_KEEP_PICTURES set, the picture is kept as the new one instead.
::testing::AssertionResult looksLike(const QImage& picture, const QString& name);

}  // namespace tolvane::desktop
