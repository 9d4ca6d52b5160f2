#pragma once

#include <QString>
#include <QWidget>
#include <vector>

#include "desktop/parts/Redraw.h"

namespace tolvane::desktop {

/// One screen of the main window, with its controls for the toolbar. Follows the model while it is shown, and catches
/// up when it is shown again.
class Page : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// From the title to the far edge; owned by the page until the toolbar shows them.
    virtual std::vector<QWidget*> controls() = 0;
    /// The widget that gets the focus when the screen opens.
    virtual QWidget* firstFocus() { return this; }
    /// The line below the title; may be empty.
    virtual QString subtitle() const { return {}; }
    /// Shows the model's current state without waiting for the next turn of the event loop.
    void refresh() { redraw_.now(); }

signals:
    void subtitleChanged();

protected:
    /// Refreshes when any of these properties of the model changes; see Redraw.
    template <typename... Properties>
    void follow(const Properties&... properties) {
        redraw_.follow(properties...);
    }
    void refreshLater() { redraw_.later(); }
    /// Called once per refresh.
    virtual void draw() {}

    void showEvent(QShowEvent* event) override;

private:
    Redraw redraw_{*this, [this] { draw(); }};
};

}  // namespace tolvane::desktop
