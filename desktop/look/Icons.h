#pragma once

#include <QHash>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QRect>
#include <memory>
#include <string_view>

#include "desktop/look/Tokens.h"
#include "platform/Symbols.h"

class QPainter;

namespace tolvane::desktop {

/// The meaning that an icon's colour conveys.
enum class IconRole { plain, quiet, accent, warning, destructive };

/// Icons by name: the host's own symbol if it has one, otherwise a line icon from the program's resources. Drawn at the
/// requested size, colour and pixel ratio, and cached. Larger icons get relatively thinner lines, so that all look
/// equally heavy.
class Icons {
public:
    /// `tokens` outlives the icons; call `clear` after changing its values. `symbols` outlives them too, and is null on
    /// hosts without symbols of their own.
    explicit Icons(const Tokens& tokens, Symbols* symbols = nullptr);
    ~Icons();
    Icons(const Icons&) = delete;
    Icons& operator=(const Icons&) = delete;

    static bool exists(std::string_view name);
    /// Sharp at every pixel ratio; grey when disabled, in the accent colour when selected or on. Empty for an unknown
    /// name.
    QIcon get(std::string_view name, IconRole role = IconRole::plain) const;
    /// A square of `size` device-independent pixels.
    QPixmap pixmap(std::string_view name, QColor colour, int size, double ratio) const;
    void paint(QPainter& painter, std::string_view name, QColor colour, QRect rect) const;

    QColor colour(IconRole role) const;
    const Tokens& tokens() const { return tokens_; }
    /// Call when colours changed; icons handed out earlier redraw themselves.
    void clear() { cache_.clear(); }
    std::size_t remembered() const { return static_cast<std::size_t>(cache_.size()); }

    /// Stroke width in units of the 16-unit grid, for an icon of that size.
    static double strokeWidth(int size);

private:
    QPixmap drawn(std::string_view name, QColor colour, int size, double ratio) const;
    /// The shape of the host's symbol; null if it has none.
    const QImage& stencil(std::string_view name, int pixels) const;

    const Tokens& tokens_;
    Symbols* symbols_;
    mutable QHash<QString, QPixmap> cache_;
    /// The host's answers, which do not depend on the colour. Also remembers that it has no symbol.
    mutable QHash<QString, QImage> stencils_;
};

}  // namespace tolvane::desktop
