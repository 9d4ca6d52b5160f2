#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// One line of plain text. It is cut if space is short, and its tooltip then shows the whole.
class ElidedLabel : public QWidget {
    Q_OBJECT

public:
    /// A colour by token, so that it follows the scheme.
    ElidedLabel(const Look& look, TextRole role, QColor Tokens::* colour, QWidget* parent = nullptr);

    const QString& text() const { return text_; }
    void setText(const QString& text);
    void setAlignment(Qt::Alignment alignment);
    void setElideMode(Qt::TextElideMode mode) { mode_ = mode; }
    /// Whether to use tabular digits.
    void setFigures(bool figures);
    /// The tooltip while the text fits; if the text is cut, the tooltip is the full text followed by this.
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
