#pragma once

#include <QPlainTextEdit>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Words to be selected and copied, such as a command line: broken anywhere, as high as they need to be up to a limit,
/// scrolled beyond it.
class CopyableText : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit CopyableText(const Look& look, QWidget* parent = nullptr);

    /// Keeps what the user has selected while the text stays the same.
    void setText(const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();
};

}  // namespace tolvane::desktop
