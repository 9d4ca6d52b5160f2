#pragma once

#include <QWidget>
#include <vector>

namespace tolvane::desktop {

/// Widgets side by side, each as wide as it likes to be. Where room is short they give way one after the other, down
/// to the least that each can do with: first the one of the lowest rank.
class GivingRow : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Takes the widget over. `gap` stands before it while it is shown.
    void add(QWidget* widget, int gap, int rank);

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
    };

    std::vector<Part> shown() const;
    void arrange();

    std::vector<Part> parts_;
};

}  // namespace tolvane::desktop
