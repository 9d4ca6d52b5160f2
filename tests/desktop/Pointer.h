#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

/// Simulated mouse and keyboard input, without a window system.
namespace tolvane::desktop {

inline void sendMouse(QWidget& widget, QEvent::Type type, QPoint position, Qt::MouseButton button,
                      Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers = {}) {
    QMouseEvent event(type, QPointF(position), QPointF(widget.mapToGlobal(position)), button, buttons, modifiers);
    QApplication::sendEvent(&widget, &event);
}

inline void press(QWidget& widget, QPoint position, Qt::KeyboardModifiers modifiers = {}) {
    sendMouse(widget, QEvent::MouseButtonPress, position, Qt::LeftButton, Qt::LeftButton, modifiers);
}

inline void release(QWidget& widget, QPoint position, Qt::KeyboardModifiers modifiers = {}) {
    sendMouse(widget, QEvent::MouseButtonRelease, position, Qt::LeftButton, Qt::NoButton, modifiers);
}

inline void click(QWidget& widget, QPoint position, Qt::KeyboardModifiers modifiers = {}) {
    press(widget, position, modifiers);
    release(widget, position, modifiers);
}

inline void drag(QWidget& widget, QPoint from, QPoint to) {
    press(widget, from);
    sendMouse(widget, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    release(widget, to);
}

inline void type(QWidget& widget, int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) {
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
    QApplication::sendEvent(&widget, &up);
}

inline void turnLoop() {
    for (int turn = 0; turn < 5; ++turn) QApplication::processEvents();
}

}  // namespace tolvane::desktop
