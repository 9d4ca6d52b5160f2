#pragma once

#include <QLineEdit>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A field that narrows what a screen shows while the user types. Esc empties it, Esc again leaves it.
class SearchField : public QLineEdit {
    Q_OBJECT

public:
    SearchField(const Look& look, const QString& prompt, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The user is done here; the screen takes the focus back.
    void left();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    const Look& look_;
};

}  // namespace tolvane::desktop
