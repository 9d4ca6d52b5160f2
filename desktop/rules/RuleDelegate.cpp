#include "desktop/rules/RuleDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <algorithm>

#include "desktop/look/Paragraph.h"
#include "desktop/look/QtText.h"
#include "desktop/look/StyleViews.h"
#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"
#include "desktop/rules/Tag.h"

namespace tolvane::desktop {

namespace {

constexpr int inset = Sizes::sidebarInset;
constexpr int side = 10;
constexpr int above = 9, below = 12;
constexpr int lineGap = 2, tagGap = 6;

/// Keeps a number and its unit on one line.
QString unbroken(QString text) {
    for (qsizetype at = 1; at + 1 < text.size(); ++at) {
        if (text[at] == QLatin1Char(' ') && text[at - 1].isDigit() && text[at + 1].isUpper()) text[at] = QChar::Nbsp;
    }
    return text;
}

QRect wordsOf(const QStyleOptionViewItem& option) {
    return option.rect.adjusted(inset + side, above, -inset - side, -below);
}

}  // namespace

RuleDelegate::RuleDelegate(const Look& look, const RuleListModel& model, QObject* parent)
    : QAbstractItemDelegate(parent), look_(look), model_(model) {}

int RuleDelegate::lastLineHeight() const {
    return std::max(TagShape::size(look_.fonts(), {}).height(), look_.fonts().lineHeight(TextRole::small));
}

QSize RuleDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto& fonts = look_.fonts();
    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    const int room = (view ? view->viewport()->width() : option.rect.width()) - 2 * (inset + side);
    const Paragraph summary(unbroken(qtText(model_.row(index.row()).summary)), fonts, TextRole::small,
                            std::max(1, room));
    return {0,
            above + fonts.lineHeight(TextRole::body) + lineGap + summary.height() + tagGap + lastLineHeight() + below};
}

void RuleDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    painter->save();
    auto ground = option;
    ground.rect = option.rect.adjusted(inset, 0, -inset, -2);
    /// Views report themselves inactive without the focus, but the selection's colour depends on the window.
    ground.state.setFlag(QStyle::State_Active, option.widget && option.widget->isActiveWindow());
    StyleViews::drawRow(*painter, ground, ground.rect, Sizes::controlRadius, look_.tokens());
    if (option.state.testFlag(QStyle::State_HasFocus)) StyleViews::drawFocus(*painter, ground, look_.tokens());
    paintWords(*painter, option, model_.row(index.row()));
    painter->restore();
}

void RuleDelegate::paintWords(QPainter& painter, const QStyleOptionViewItem& option, const RuleRow& row) const {
    const auto& fonts = look_.fonts();
    const auto& tokens = look_.tokens();
    const auto align = mirrored(option.direction, Qt::AlignLeft);
    auto rest = wordsOf(option);
    const QFont name = fonts.font(TextRole::body, QFont::Medium);
    painter.setFont(name);
    painter.setPen(tokens.text);
    const QRect nameLine(rest.topLeft(), QSize(rest.width(), fonts.lineHeight(TextRole::body)));
    const auto title = oneLine(qtText(row.name));
    drawLine(painter, nameLine, QFontMetrics(name).elidedText(title, Qt::ElideRight, rest.width()), align);

    rest.setTop(nameLine.bottom() + 1 + lineGap);
    const Paragraph summary(unbroken(qtText(row.summary)), fonts, TextRole::small, rest.width());
    summary.draw(painter, rest.topLeft(), tokens.text2, align);

    rest.setTop(rest.top() + summary.height() + tagGap);
    const auto mode = qtText(row.mode);
    const auto size = TagShape::size(fonts, mode);
    const QRect tag(QPoint(rest.left(), rest.top() + (lastLineHeight() - size.height()) / 2), size);
    const auto placed = [&](QRect rect) { return QStyle::visualRect(option.direction, option.rect, rect); };
    TagShape::paint(painter, look_, placed(tag), mode, row.isOn ? TagKind::green : TagKind::plain,
                    option.state.testFlag(QStyle::State_Selected));
    if (!row.status) return;
    const QFont small = fonts.figures(TextRole::small);
    const QRect status(tag.right() + 1 + Sizes::gap, rest.top(), rest.right() - tag.right() - Sizes::gap,
                       lastLineHeight());
    painter.setFont(small);
    painter.setPen(tokens.text2);
    drawLine(painter, placed(status),
             QFontMetrics(small).elidedText(qtText(*row.status), Qt::ElideRight, status.width()), align);
}

bool RuleDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (!index.isValid() || event->type() != QEvent::ToolTip) return false;
    const auto& row = model_.row(index.row());
    const int room = wordsOf(option).width();
    QStringList lines;
    const auto add = [&](const QFont& font, const QString& text, int width) {
        if (QFontMetrics(font).horizontalAdvance(text) > width) lines.append(text);
    };
    add(look_.fonts().font(TextRole::body, QFont::Medium), qtText(row.name), room);
    const int tag = TagShape::size(look_.fonts(), qtText(row.mode)).width() + Sizes::gap;
    add(look_.fonts().figures(TextRole::small), qtText(row.status.value_or("")), room - tag);
    showTip(event->globalPos(), lines.join('\n'), view);
    return true;
}

}  // namespace tolvane::desktop
