#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Text wrapped to the widget's width, at the line height of the type scale.
class ParagraphLabel : public QWidget {
    Q_OBJECT

public:
    ParagraphLabel(const Look& look, TextRole role, QColor Tokens::* colour, QWidget* parent = nullptr);

    void setText(const QString& text);
    /// A text that needs more lines is cut in the middle; the tooltip shows the whole.
    void setMostLines(int lines);
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    /// The text as it is shown at that width.
    const QString& shownAt(int width) const;

    const Look& look_;
    TextRole role_;
    QColor Tokens::* colour_;
    QString text_;
    int mostLines_ = 0;
    mutable QString shown_;
    mutable int shownWidth_ = -1;
};

}  // namespace tolvane::desktop
