#include "desktop/processes/SearchField.h"

#include <QAction>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

namespace tolvane::desktop {

namespace {

constexpr int glassMargin = 8;
constexpr int glassGap = 3;

}  // namespace

SearchField::SearchField(const Look& look, const QString& prompt, QWidget* parent) : QLineEdit(parent), look_(look) {
    setPlaceholderText(prompt);
    setAccessibleName(prompt);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const int glass = look.fonts().scaled(Sizes::icon) + glassGap;
    setTextMargins(mirrored ? 0 : glass, 0, mirrored ? glass : 0, 0);
    setMaximumWidth(look.fonts().scaled(Sizes::searchWidth));
}

QSize SearchField::sizeHint() const { return {maximumWidth(), QLineEdit::sizeHint().height()}; }

QSize SearchField::minimumSizeHint() const { return {Sizes::searchLeast, sizeHint().height()}; }

void SearchField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    const int side = look_.fonts().scaled(Sizes::icon);
    const QRect glass(glassMargin, (height() - side) / 2, side, side);
    look_.icons().paint(painter, "magnifyingglass", look_.tokens().text2,
                        QStyle::visualRect(layoutDirection(), rect(), glass));
}

void SearchField::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) return QLineEdit::keyPressEvent(event);
    if (text().isEmpty()) {
        emit left();
    } else {
        clear();
    }
}

}  // namespace tolvane::desktop
