#include "platform/macos/applications/AppBundlePath.h"

namespace tolvane {

std::optional<std::string_view> appBundlePath(std::string_view executable) {
    constexpr std::string_view mark = ".app/";
    const auto found = executable.find(mark);
    if (found == std::string_view::npos) return std::nullopt;
    return executable.substr(0, found + mark.size() - 1);
}

}  // namespace tolvane
