#pragma once

#include <QWidget>
#include <vector>

#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"

class QBoxLayout;
class QHBoxLayout;

namespace tolvane::desktop {

/// The bar above a screen: title left, controls right, a line below. Controls that do not fit beside the title go below
/// it.
class Toolbar : public QWidget {
    Q_OBJECT

public:
    explicit Toolbar(const Look& look, QWidget* parent = nullptr);

    /// Shows another screen's controls and hides those of the previous one.
    void show(const QString& title, const std::vector<QWidget*>& controls);
    using QWidget::show;
    /// A small line below the title; may be empty.
    void setSubtitle(const QString& subtitle);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange();
    int farMargin() const;

    const Look& look_;
    ElidedLabel* title_;
    ElidedLabel* subtitle_;
    QBoxLayout* whole_;
    QHBoxLayout* controlsRow_;
    std::vector<QWidget*> controls_;
};

}  // namespace tolvane::desktop
