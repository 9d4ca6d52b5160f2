#pragma once

#include <QLineEdit>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A field that filters a screen while the user types. Escape clears it; a second Escape leaves it.
class SearchField : public QLineEdit {
    Q_OBJECT

public:
    SearchField(const Look& look, const QString& prompt, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The user left the field; the screen takes the focus.
    void left();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    const Look& look_;
};

}  // namespace tolvane::desktop
