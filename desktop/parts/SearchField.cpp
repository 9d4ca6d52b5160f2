#include "desktop/parts/SearchField.h"

#include <QAction>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

namespace tolvane::desktop {

namespace {

constexpr int glassMargin = 10;
constexpr int textMargin = glassMargin + Sizes::icon - 2;

}  // namespace

SearchField::SearchField(const Look& look, const QString& prompt, QWidget* parent) : QLineEdit(parent), look_(look) {
    setPlaceholderText(prompt);
    setAccessibleName(prompt);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    setTextMargins(mirrored ? 0 : textMargin, 0, mirrored ? textMargin : 0, 0);
    setMaximumWidth(static_cast<int>(Sizes::searchWidth * look.fonts().factor()));
}

QSize SearchField::sizeHint() const { return {maximumWidth(), QLineEdit::sizeHint().height()}; }

QSize SearchField::minimumSizeHint() const { return {Sizes::searchLeast, sizeHint().height()}; }

void SearchField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    const QRect glass(glassMargin, (height() - Sizes::icon) / 2, Sizes::icon, Sizes::icon);
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
