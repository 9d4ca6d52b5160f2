#include "desktop/look/MenuText.h"

#include <QGuiApplication>

#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

namespace {

constexpr qsizetype mostCharacters = 80;
constexpr QChar ellipsis(0x2026), leftToRightIsolate(0x2066), endOfIsolate(0x2069);

/// Does not split surrogate pairs.
QString shortened(const QString& text) {
    if (text.size() <= mostCharacters) return text;
    auto head = text.left(mostCharacters * 2 / 3), tail = text.right(mostCharacters / 3);
    if (head.back().isHighSurrogate()) head.chop(1);
    if (tail.front().isLowSurrogate()) tail.remove(0, 1);
    return head + ellipsis + tail;
}

}  // namespace

QString asItReads(const QString& text) {
    if (QGuiApplication::layoutDirection() == Qt::LeftToRight || text.isRightToLeft()) return text;
    return leftToRightIsolate + text + endOfIsolate;
}

QString menuText(const QString& text) {
    return asItReads(shortened(oneLine(text)).replace(QLatin1Char('&'), QStringLiteral("&&")));
}

}  // namespace tolvane::desktop
