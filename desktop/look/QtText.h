#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace tolvane::desktop {

/// Texts of the lower floors are UTF-8; invalid bytes become replacement characters.
inline QString qtText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string utf8(const QString& text) { return text.toStdString(); }

}  // namespace tolvane::desktop
