#include "desktop/parts/EmptyState.h"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>

#include "desktop/parts/Paragraph.h"

namespace tolvane::desktop {

namespace {

constexpr int widest = 440;
constexpr int lift = 26;
constexpr int iconGap = 20;
constexpr int titleGap = 4;

}  // namespace

EmptyState::EmptyState(const Look& look, std::string_view icon, const QString& title, const QString& sentence,
                       QWidget* parent)
    : QWidget(parent), look_(look), icon_(icon), title_(title), sentence_(sentence) {
    setAccessibleName(title);
    setAccessibleDescription(sentence);
}

void EmptyState::paintEvent(QPaintEvent*) {
    const auto& fonts = look_.fonts();
    const int room = std::min(widest, width() - 2 * Sizes::inspectorMargin);
    const Paragraph title(title_, fonts, TextRole::title, room);
    const Paragraph sentence(sentence_, fonts, TextRole::body, room);
    const int left = (width() - room) / 2;
    const int whole = Sizes::emptyIcon + iconGap + title.height() + titleGap + sentence.height();
    int top = std::max(Sizes::gap, (height() - whole) / 2 - lift);

    QPainter painter(this);
    look_.icons().paint(painter, icon_, look_.tokens().text3,
                        QRect((width() - Sizes::emptyIcon) / 2, top, Sizes::emptyIcon, Sizes::emptyIcon));
    top += Sizes::emptyIcon + iconGap;
    title.draw(painter, QPoint(left, top), look_.tokens().text, Qt::AlignHCenter);
    top += title.height() + titleGap;
    sentence.draw(painter, QPoint(left, top), look_.tokens().text2, Qt::AlignHCenter);
}

}  // namespace tolvane::desktop
