#pragma once

#include <QString>
#include <QWidget>
#include <vector>

namespace tolvane::desktop {

/// One screen of the main window, with the controls that it puts into the toolbar.
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

signals:
    void subtitleChanged();
};

}  // namespace tolvane::desktop
