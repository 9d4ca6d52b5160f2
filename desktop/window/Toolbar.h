#pragma once

#include <QWidget>
#include <vector>

#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"

class QBoxLayout;
class QHBoxLayout;

namespace tolvane::desktop {

/// The row over a screen: its title left, its controls right, a line below. Controls that do not fit beside the title
/// stand under it.
class Toolbar : public QWidget {
    Q_OBJECT

public:
    explicit Toolbar(const Look& look, QWidget* parent = nullptr);

    /// Takes the controls of another screen; those of the one before are hidden.
    void show(const QString& title, const std::vector<QWidget*>& controls);
    using QWidget::show;
    /// A small line under the title; empty for none.
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
