#pragma once

#include <QObject>
#include <QPointer>

class QFocusFrame;

namespace tolvane::desktop {

/// Shows the focus ring when the keyboard moves the focus, and removes it when the pointer is used. One per
/// application.
class FocusRing : public QObject {
    Q_OBJECT

public:
    explicit FocusRing(QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow(QWidget* focused);
    void hide();

    QPointer<QFocusFrame> frame_;
};

}  // namespace tolvane::desktop
