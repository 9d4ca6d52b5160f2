#pragma once

#include <QIconEngine>
#include <string>

#include "desktop/look/Icons.h"

namespace tolvane::desktop {

/// Lets a `QIcon` draw one line icon in the colours of the moment. `icons` outlives it.
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

}  // namespace tolvane::desktop
