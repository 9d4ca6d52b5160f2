#pragma once

#include <QObject>
#include <QPointer>

class QFocusFrame;

namespace tolvane::desktop {

/// Puts the ring around the control that the keyboard came to, and takes it away when the pointer is used.
/// One for the application.
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
