#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Text that breaks into as many lines as its width asks for, at the line height of the type scale.
class ParagraphLabel : public QWidget {
    Q_OBJECT

public:
    ParagraphLabel(const Look& look, TextRole role, QColor Tokens::* colour, QWidget* parent = nullptr);

    void setText(const QString& text);
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
    TextRole role_;
    QColor Tokens::* colour_;
    QString text_;
};

}  // namespace tolvane::desktop
