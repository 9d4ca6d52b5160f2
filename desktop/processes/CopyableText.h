#pragma once

#include <QPlainTextEdit>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Selectable text such as a command line: wrapped anywhere, as high as it needs up to a limit, scrolled beyond it.
class CopyableText : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit CopyableText(const Look& look, QWidget* parent = nullptr);

    /// Keeps the user's selection while the text stays the same.
    void setText(const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();
};

}  // namespace tolvane::desktop
