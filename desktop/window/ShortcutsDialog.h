#pragma once

#include <QDialog>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// The list of keyboard shortcuts. Deletes itself when it closes.
class ShortcutsDialog : public QDialog {
    Q_OBJECT

public:
    /// `look` outlives it.
    ShortcutsDialog(const Look& look, QWidget* parent);
};

}  // namespace tolvane::desktop
