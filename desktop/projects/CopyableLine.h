#pragma once

#include <QLineEdit>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// One read-only line of text to select and copy, such as a command. Without the focus, a line that is too long is cut
/// in its middle; with the focus it is whole.
class CopyableLine : public QLineEdit {
    Q_OBJECT

public:
    explicit CopyableLine(const Look& look, QWidget* parent = nullptr);

    /// Keeps what the user has selected while the text stays the same.
    void setWhole(const QString& whole);
    const QString& whole() const { return whole_; }

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    QString whole_;
};

}  // namespace tolvane::desktop
