#pragma once

#include <QDialog>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// One sentence that the user has to acknowledge. Modal to its window, does not block, and deletes itself when it
/// closes.
class AlertDialog : public QDialog {
    Q_OBJECT

public:
    /// `look` outlives it. `dismiss` is the label of its button.
    AlertDialog(const Look& look, const QString& sentence, const QString& dismiss, QWidget* parent);
};

}  // namespace tolvane::desktop
