#pragma once

#include <QLineEdit>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A read-only line of text to select and copy, such as a command. It shows the whole text while it has the focus;
/// otherwise a text that is too long is cut in the middle.
class CopyableLine : public QLineEdit {
    Q_OBJECT

public:
    explicit CopyableLine(const Look& look, QWidget* parent = nullptr);

    /// Keeps the user's selection while the text stays the same.
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
