#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// One line of plain text that gives way when there is too little room, and then shows the whole in its tooltip.
class ElidedLabel : public QWidget {
    Q_OBJECT

public:
    /// The colour follows the scheme.
    ElidedLabel(const Look& look, TextRole role, QColor Tokens::* colour, QWidget* parent = nullptr);

    const QString& text() const { return text_; }
    void setText(const QString& text);
    void setAlignment(Qt::Alignment alignment);
    void setElideMode(Qt::TextElideMode mode) { mode_ = mode; }
    /// Digits of one width.
    void setFigures(bool figures);
    /// Shown while the whole text fits; the text itself otherwise, with this below it.
    void setTip(const QString& tip);
    bool isElided() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    const Look& look_;
    TextRole role_;
    QColor Tokens::* colour_;
    QString text_;
    QString tip_;
    Qt::Alignment alignment_ = Qt::AlignLeft;
    Qt::TextElideMode mode_ = Qt::ElideRight;
};

}  // namespace tolvane::desktop
