#include "desktop/look/Icons.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace tolvane::desktop {

namespace {

constexpr int grid = 16;

struct Weight {
    int size;
    /// In pixels.
    double stroke;
};
constexpr std::array<Weight, 4> weights = {{{16, 1.25}, {20, 1.4}, {24, 1.4}, {44, 1.75}}};

QString file(std::string_view name) {
    return QStringLiteral(":/icons/") + QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())) +
           QStringLiteral(".svg");
}

QByteArray source(std::string_view name) {
    QFile svg(file(name));
    return svg.open(QIODevice::ReadOnly) ? svg.readAll() : QByteArray();
}

QByteArray drawing(std::string_view name, QColor colour, int size) {
    auto svg = source(name);
    svg.replace("currentColor", colour.name().toUtf8());
    svg.replace("stroke-width=\"1.25\"",
                "stroke-width=\"" + QByteArray::number(Icons::strokeWidth(size), 'f', 3) + '"');
    return svg;
}

QPixmap rendered(const QByteArray& svg, int size, double ratio) {
    const auto pixels = static_cast<int>(std::ceil(size * ratio));
    QPixmap pixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(svg);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

/// The symbol centred in a square, at the size that the host gives it.
QImage stencilOf(const SymbolPicture& symbol, int pixels) {
    const auto image = QImage::fromData(QByteArray::fromStdString(symbol.png), "PNG");
    if (image.isNull()) return {};
    QImage square(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    QRectF place(0, 0, symbol.width, symbol.height);
    place.moveCenter(QRectF(square.rect()).center());
    QPainter painter(&square);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, image);
    return square;
}

QPixmap painted(QImage stencil, QColor colour, double ratio) {
    QPainter painter(&stencil);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(stencil.rect(), colour);
    painter.end();
    stencil.setDevicePixelRatio(ratio);
    return QPixmap::fromImage(std::move(stencil));
}

/// Lets a `QIcon` draw a line icon in the current colours. `icons` outlives it.
class LineIconEngine : public QIconEngine {
public:
    LineIconEngine(const Icons& icons, std::string name, IconRole role);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override;
    bool isNull() override { return false; }
    QIconEngine* clone() const override { return new LineIconEngine(icons_, name_, role_); }

private:
    QColor colour(QIcon::Mode mode, QIcon::State state) const;

    const Icons& icons_;
    std::string name_;
    IconRole role_;
};

LineIconEngine::LineIconEngine(const Icons& icons, std::string name, IconRole role)
    : icons_(icons), name_(std::move(name)), role_(role) {}

QColor LineIconEngine::colour(QIcon::Mode mode, QIcon::State state) const {
    if (mode == QIcon::Disabled) return icons_.tokens().disabled;
    const bool chosen = mode == QIcon::Selected || state == QIcon::On;
    return icons_.colour(chosen && role_ == IconRole::plain ? IconRole::accent : role_);
}

void LineIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) {
    icons_.paint(*painter, name_, colour(mode, state), rect);
}

QPixmap LineIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    return scaledPixmap(size, mode, state, 1);
}

/// `size` is in device pixels, but the stroke is chosen for the size in device-independent pixels.
QPixmap LineIconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) {
    const double ratio = scale > 0 ? scale : 1;
    const auto seen = static_cast<int>(std::min(size.width(), size.height()) / ratio);
    return icons_.pixmap(name_, colour(mode, state), std::max(1, seen), ratio);
}

}  // namespace

Icons::Icons(const Tokens& tokens, Symbols* symbols) : tokens_(tokens), symbols_(symbols) {}
Icons::~Icons() = default;

bool Icons::exists(std::string_view name) { return QFile::exists(file(name)); }

QIcon Icons::get(std::string_view name, IconRole role) const {
    if (!exists(name)) return {};
    return QIcon(new LineIconEngine(*this, std::string(name), role));
}

QPixmap Icons::pixmap(std::string_view name, QColor colour, int size, double ratio) const {
    const auto key = file(name) + QStringLiteral("|%1|%2|%3").arg(colour.name()).arg(size).arg(ratio);
    if (const auto found = cache_.constFind(key); found != cache_.constEnd()) return *found;
    const auto made = drawn(name, colour, size, ratio);
    if (!made.isNull()) cache_.insert(key, made);
    return made;
}

QPixmap Icons::drawn(std::string_view name, QColor colour, int size, double ratio) const {
    if (!exists(name)) return {};
    const auto& symbol = stencil(name, static_cast<int>(std::ceil(size * ratio)));
    if (!symbol.isNull()) return painted(symbol, colour, ratio);
    return rendered(drawing(name, colour, size), size, ratio);
}

const QImage& Icons::stencil(std::string_view name, int pixels) const {
    const auto key = file(name) + QStringLiteral("|%1").arg(pixels);
    if (const auto found = stencils_.constFind(key); found != stencils_.constEnd()) return *found;
    const auto symbol = symbols_ ? symbols_->picture(name, pixels) : std::nullopt;
    return *stencils_.insert(key, symbol ? stencilOf(*symbol, pixels) : QImage());
}

void Icons::paint(QPainter& painter, std::string_view name, QColor colour, QRect rect) const {
    const int size = std::min(rect.width(), rect.height());
    QRect square(0, 0, size, size);
    square.moveCenter(rect.center());
    painter.drawPixmap(square, pixmap(name, colour, size, painter.device()->devicePixelRatioF()));
}

QColor Icons::colour(IconRole role) const {
    switch (role) {
        case IconRole::plain:
            return tokens_.text2;
        case IconRole::quiet:
            return tokens_.text3;
        case IconRole::accent:
            return tokens_.accent;
        case IconRole::warning:
            return tokens_.orange;
        case IconRole::destructive:
            return tokens_.redText;
    }
    return tokens_.text2;
}

double Icons::strokeWidth(int size) {
    auto above = weights.begin();
    while (above != weights.end() - 1 && above->size < size) ++above;
    const auto& below = above == weights.begin() ? *above : *(above - 1);
    const double span = above->size - below.size;
    const double share = span > 0 ? std::clamp((size - below.size) / span, 0.0, 1.0) : 0;
    return (below.stroke + (above->stroke - below.stroke) * share) * grid / std::max(size, 1);
}

}  // namespace tolvane::desktop
