#pragma once

#include <QString>
#include <QWidget>
#include <vector>

#include "desktop/parts/Redraw.h"

namespace tolvane::desktop {

/// One screen of the main window, with the controls that it puts into the toolbar. Follows the model while it is
/// shown, and catches up when it comes back.
class Page : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// In order from the title to the far edge; owned by the page until the toolbar shows them.
    virtual std::vector<QWidget*> controls() = 0;
    /// What has the keyboard when the screen opens.
    virtual QWidget* firstFocus() { return this; }
    /// Under the title; empty for none.
    virtual QString subtitle() const { return {}; }
    /// Shows what the model holds now, without waiting for the next turn of the event loop.
    void refresh() { redraw_.now(); }

signals:
    void subtitleChanged();

protected:
    /// Refreshes after a change of any of these properties of the model; see Redraw.
    template <typename... Properties>
    void follow(const Properties&... properties) {
        redraw_.follow(properties...);
    }
    void refreshLater() { redraw_.later(); }
    /// One refresh.
    virtual void draw() {}

    void showEvent(QShowEvent* event) override;

private:
    Redraw redraw_{*this, [this] { draw(); }};
};

}  // namespace tolvane::desktop
