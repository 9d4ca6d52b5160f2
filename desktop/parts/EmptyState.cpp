#include "desktop/parts/EmptyState.h"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>

#include "desktop/look/Paragraph.h"

namespace tolvane::desktop {

namespace {

constexpr int widest = 440;
constexpr int lift = 26;
constexpr int iconGap = 20;
constexpr int titleGap = 4;
constexpr int buttonGap = 16;

}  // namespace

EmptyState::EmptyState(const Look& look, std::string_view icon, const QString& title, const QString& sentence,
                       QWidget* parent)
    : QWidget(parent), look_(look), icon_(icon), title_(title), sentence_(sentence) {
    setAccessibleName(title);
    setAccessibleDescription(sentence);
}

/// The y coordinate of each part, and the width for the texts.
struct EmptyState::Places {
    int room, icon, title, sentence, button;
};

EmptyState::Places EmptyState::places() const {
    const auto& fonts = look_.fonts();
    Places places{};
    places.room = std::min(widest, width() - 2 * Sizes::inspectorMargin);
    places.title = Sizes::emptyIcon + iconGap;
    places.sentence = places.title + Paragraph(title_, fonts, TextRole::title, places.room).height() + titleGap;
    int whole = places.sentence + Paragraph(sentence_, fonts, TextRole::body, places.room).height();
    places.button = whole + buttonGap;
    if (button_) whole = places.button + button_->sizeHint().height();
    places.icon = std::max(Sizes::gap, (height() - whole) / 2 - lift);
    for (auto* place : {&places.title, &places.sentence, &places.button}) *place += places.icon;
    return places;
}

void EmptyState::setButton(QWidget* button) {
    button_ = button;
    button_->setParent(this);
}

void EmptyState::resizeEvent(QResizeEvent*) {
    if (!button_) return;
    const auto size = button_->sizeHint();
    button_->setGeometry((width() - size.width()) / 2, places().button, size.width(), size.height());
}

void EmptyState::paintEvent(QPaintEvent*) {
    const auto at = places();
    const auto& fonts = look_.fonts();
    const int left = (width() - at.room) / 2;
    QPainter painter(this);
    look_.icons().paint(painter, icon_, look_.tokens().text3,
                        QRect((width() - Sizes::emptyIcon) / 2, at.icon, Sizes::emptyIcon, Sizes::emptyIcon));
    Paragraph(title_, fonts, TextRole::title, at.room)
        .draw(painter, QPoint(left, at.title), look_.tokens().text, Qt::AlignHCenter);
    Paragraph(sentence_, fonts, TextRole::body, at.room)
        .draw(painter, QPoint(left, at.sentence), look_.tokens().text2, Qt::AlignHCenter);
}

}  // namespace tolvane::desktop
