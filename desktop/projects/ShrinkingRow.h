#pragma once

#include <QWidget>
#include <vector>

namespace tolvane::desktop {

/// Widgets side by side, each as wide as it likes to be. Where room is short they give way one after the other, first
/// the one of the lowest rank: each down to the room that it keeps, and only when that is not enough down to the least
/// that it can do with.
class ShrinkingRow : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Takes the widget over. `gap` stands before it while it is shown; of its own width it `keeps` that much.
    void add(QWidget* widget, int gap, int rank, int keeps = 0);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Part {
        QWidget* widget = nullptr;
        int gap = 0;
        int rank = 0;
        int keeps = 0;
    };

    std::vector<Part> shown() const;
    std::vector<int> widths(const std::vector<Part>& parts) const;
    void arrange();

    std::vector<Part> parts_;
};

}  // namespace tolvane::desktop
