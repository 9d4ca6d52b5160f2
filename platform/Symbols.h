#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvane {

/// A symbol as a picture. Only where it is drawn counts, and how densely: the colour is for whoever paints it.
struct SymbolPicture {
    /// A file's bytes; finer than `width` by `height` where the system draws for fine screens.
    std::string png;
    /// Pixels to be painted on.
    double width = 0;
    double height = 0;

    bool operator==(const SymbolPicture&) const = default;
};

/// The host's own set of symbols, by the names that the program's icons have. Main thread.
class Symbols {
public:
    virtual ~Symbols() = default;

    /// Of an optical size that suits a square of `pixels`, and not larger than that. None when the host has no symbol
    /// of this name or cannot draw it.
    virtual std::optional<SymbolPicture> picture(std::string_view name, int pixels) = 0;
};

}  // namespace tolvane
