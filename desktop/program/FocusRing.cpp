#include "desktop/program/FocusRing.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QFocusFrame>
#include <QLineEdit>
#include <QWidget>

#include "desktop/parts/LinkButton.h"

namespace tolvane::desktop {

namespace {

bool wearsRing(const QWidget* widget) {
    if (qobject_cast<const LinkButton*>(widget)) return false;
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
           qobject_cast<const QComboBox*>(widget);
}

bool byKeyboard(const QWidget* widget) { return widget->window()->testAttribute(Qt::WA_KeyboardFocusChange); }

}  // namespace

FocusRing::FocusRing(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { follow(now); });
}

void FocusRing::follow(QWidget* focused) {
    if (!focused || !wearsRing(focused) || !byKeyboard(focused)) return hide();
    if (!frame_) frame_ = new QFocusFrame;
    frame_->setWidget(focused);
}

void FocusRing::hide() {
    if (frame_) frame_->setWidget(nullptr);
}

/// The toolkit records that the keyboard moved the focus, but not that the mouse did.
bool FocusRing::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        auto* window = static_cast<QWidget*>(watched)->window();
        if (window->testAttribute(Qt::WA_KeyboardFocusChange)) {
            window->setAttribute(Qt::WA_KeyboardFocusChange, false);
            window->update();
            hide();
        }
    }
    return false;
}

}  // namespace tolvane::desktop
