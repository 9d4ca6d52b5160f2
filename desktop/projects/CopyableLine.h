#pragma once

#include <QLineEdit>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// One line of words to be selected and copied, such as a command. While nobody is in it, a line that is too long is
/// cut in its middle; whoever enters it finds the whole. Nothing can be typed.
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
