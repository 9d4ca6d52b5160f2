#pragma once

#include <QWidget>
#include <vector>

namespace tolvane::desktop {

/// Widgets side by side at their preferred widths. When space is short they shrink one after the other, lowest rank
/// first: each down to the width that it keeps, and only if that is not enough, down to its minimum.
class ShrinkingRow : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Takes ownership of the widget. `gap` is the space before it while it is shown; `keeps` is the width that it
    /// keeps at first.
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
