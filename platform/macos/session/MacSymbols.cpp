#include "platform/macos/session/MacSymbols.h"

#include <algorithm>
#include <utility>

#include "platform/macos/objc/Foundation.h"
#include "platform/macos/session/PictureOfIcon.h"

namespace tolvane::machost {

namespace {

/// A symbol is sized like the letters beside it, which are 13 points high where an icon has 16.
constexpr double lettersInSquare = 13.0 / 16.0;
/// The system's regular weight, and the middle one of its three scales.
constexpr double regularWeight = 0;
constexpr std::int64_t mediumScale = 2;

Id symbolNamed(const Runtime& runtime, std::string_view name, int pixels) {
    const Id symbol =
        runtime.send(runtime.classNamed("NSImage"),
                     "imageWithSystemSymbolName:accessibilityDescription:", Foundation::string(runtime, name), Id{});
    if (symbol == nullptr) return nullptr;
    const Id configuration =
        runtime.send(runtime.classNamed("NSImageSymbolConfiguration"),
                     "configurationWithPointSize:weight:scale:", pixels * lettersInSquare, regularWeight, mediumScale);
    const Id sized = runtime.send(symbol, "imageWithSymbolConfiguration:", configuration);
    return sized == nullptr ? symbol : sized;
}

/// Symbols may be wide or tall; none may leave its square.
Size within(Size size, double pixels) {
    const double longest = std::max(size.width, size.height);
    if (!(longest > pixels)) return size;
    return {.width = size.width * pixels / longest, .height = size.height * pixels / longest};
}

}  // namespace

MacSymbols::MacSymbols(ObjC runtime) : runtime_(std::move(runtime)) {}

std::optional<SymbolPicture> MacSymbols::picture(std::string_view name, int pixels) {
    const Pool pool(*runtime_);
    const Id symbol = symbolNamed(*runtime_, name, pixels);
    const auto size = within(runtime_->send<Size>(symbol, "size"), pixels);
    const bool isThere = size.width > 0 && size.height > 0;
    if (!isThere) return std::nullopt;
    const Id png = pngOf(*runtime_, symbol, size);
    if (png == nullptr) return std::nullopt;
    return SymbolPicture{.png = Foundation::bytes(*runtime_, png), .width = size.width, .height = size.height};
}

}  // namespace tolvane::machost
