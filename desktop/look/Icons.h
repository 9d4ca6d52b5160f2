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

/// What an icon says with its colour.
enum class IconRole { plain, quiet, accent, warning, destructive };

/// The host's own symbols where it has one of the name, else the one set of line icons from the program's resources;
/// drawn at the size, colour and pixel ratio asked for, and remembered. Strokes keep their optical weight: larger icons
/// get relatively thinner lines.
class Icons {
public:
    /// `tokens` outlives the icons and may change its values; then call `clear`. `symbols` outlives them too; null
    /// where the host has none.
    explicit Icons(const Tokens& tokens, Symbols* symbols = nullptr);
    ~Icons();
    Icons(const Icons&) = delete;
    Icons& operator=(const Icons&) = delete;

    static bool exists(std::string_view name);
    /// Sharp at every pixel ratio; grey when disabled, in accent when selected or on. Empty for an unknown name.
    QIcon get(std::string_view name, IconRole role = IconRole::plain) const;
    /// Square of `size` device-independent pixels.
    QPixmap pixmap(std::string_view name, QColor colour, int size, double ratio) const;
    void paint(QPainter& painter, std::string_view name, QColor colour, QRect rect) const;

    QColor colour(IconRole role) const;
    const Tokens& tokens() const { return tokens_; }
    /// Colours changed: icons handed out before draw themselves anew.
    void clear() { cache_.clear(); }
    std::size_t remembered() const { return static_cast<std::size_t>(cache_.size()); }

    /// Stroke in units of the 16-unit grid for an icon of that size.
    static double strokeWidth(int size);

private:
    QPixmap drawn(std::string_view name, QColor colour, int size, double ratio) const;
    /// Where the host's symbol is drawn; null when it has none.
    const QImage& stencil(std::string_view name, int pixels) const;

    const Tokens& tokens_;
    Symbols* symbols_;
    mutable QHash<QString, QPixmap> cache_;
    /// The host's answers, whatever the colour: also that it has none.
    mutable QHash<QString, QImage> stencils_;
};

}  // namespace tolvane::desktop
