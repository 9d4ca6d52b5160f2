#pragma once

#include <QWidget>

#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"

namespace tolvane::desktop {

/// The head of a block: its name, and at the far edge its value, with a coloured dot if the value is a level.
class Headline : public QWidget {
    Q_OBJECT

public:
    explicit Headline(const Look& look, QWidget* parent = nullptr);

    void show(const QString& title, const QString& remark, const QString& tooltip = {});
    using QWidget::show;
    void setDot(QColor fill, QColor edge);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
    ElidedLabel* title_;
    ElidedLabel* remark_;
    QColor fill_, edge_;
};

}  // namespace tolvane::desktop
