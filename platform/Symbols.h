#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvane {

/// A symbol as a picture. Only its coverage counts; the caller paints it in a colour of its own.
struct SymbolPicture {
    /// The bytes of a PNG file; of more pixels than `width` by `height` where the system draws for dense screens.
    std::string png;
    /// The size to paint it at, in pixels.
    double width = 0;
    double height = 0;

    bool operator==(const SymbolPicture&) const = default;
};

/// The host's own set of symbols, by the names that the program's icons have. Main thread.
class Symbols {
public:
    virtual ~Symbols() = default;

    /// A picture whose optical size suits a square of `pixels`, and no larger. Nullopt when the host has no symbol of
    /// this name or cannot draw it.
    virtual std::optional<SymbolPicture> picture(std::string_view name, int pixels) = 0;
};

}  // namespace tolvane
