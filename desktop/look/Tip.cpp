#include "desktop/look/Tip.h"

#include <QFontMetrics>
#include <QTextLayout>
#include <QToolTip>
#include <algorithm>

namespace tolvane::desktop {

namespace {

/// In characters of average width; longer lines are wrapped.
constexpr int mostCharacters = 80;
constexpr int mostLines = 36;

/// Removes tabs and other unprintable characters, which would be drawn as boxes.
QString printable(QString text) {
    for (auto& each : text) {
        if (each.category() == QChar::Other_Control && each != QLatin1Char('\n')) each = QLatin1Char(' ');
    }
    return text;
}

QStringList brokenLines(const QString& paragraph, const QFont& font, double width) {
    QTextLayout layout(paragraph, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (auto line = layout.createLine(); line.isValid() && lines.size() <= mostLines; line = layout.createLine()) {
        line.setLineWidth(width);
        lines << paragraph.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

}  // namespace

QString tip(const QString& text) {
    if (text.isEmpty()) return text;
    const auto font = QToolTip::font();
    const double width = QFontMetrics(font).averageCharWidth() * mostCharacters;
    // Cut before layout: laying out more than can be shown is wasted work.
    const auto shown = printable(text.left(mostCharacters * mostLines * 4));
    QStringList lines;
    for (const auto& paragraph : shown.split(QLatin1Char('\n'))) {
        lines << (paragraph.isEmpty() ? QStringList(QString()) : brokenLines(paragraph, font, width));
        if (lines.size() > mostLines) break;
    }
    if (lines.size() > mostLines) {
        lines.resize(mostLines);
        lines.last() += QChar(0x2026);
    }
    auto plain = lines.join(QLatin1Char('\n'));
    if (!Qt::mightBeRichText(plain)) return plain;
    return QStringLiteral("<p style='white-space:pre'>") + plain.toHtmlEscaped() + QStringLiteral("</p>");
}

void showTip(QPoint global, const QString& text, QWidget* widget) { QToolTip::showText(global, tip(text), widget); }

}  // namespace tolvane::desktop
