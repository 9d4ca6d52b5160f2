#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QString>

namespace tolvane::desktop {

/// Compares a picture with the one of that name in tests/golden. A few pixels may differ a little, since font renderers
/// do. On a mismatch the picture and the difference are written below the build folder, and the failure message names
/// the files. If TOLVANE_KEEP_PICTURES is set, the picture becomes the new golden one.
::testing::AssertionResult looksLike(const QImage& picture, const QString& name);

}  // namespace tolvane::desktop
