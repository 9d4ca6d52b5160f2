#pragma once

#include <QDialog>

#include "desktop/look/Look.h"

class QHBoxLayout;
class QPushButton;

namespace tolvane::desktop {

/// One sentence that the user is to have read. Modal to its window, does not block, and deletes itself when closed.
class AlertDialog : public QDialog {
    Q_OBJECT

public:
    /// `look` outlives it. `dismiss` is the word on its button.
    AlertDialog(const Look& look, const QString& sentence, const QString& dismiss, QWidget* parent);

    /// Makes a question of it: a button that does what cannot be undone, and that answers only to itself. The other
    /// one stays the default. `accepted` tells that it was chosen.
    void ask(const QString& action);

private:
    QHBoxLayout* buttons_;
    QPushButton* dismiss_;
};

}  // namespace tolvane::desktop
