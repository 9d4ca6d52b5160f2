#include "desktop/rules/RuleSuggestionModel.h"

#include <QPainter>
#include <algorithm>

#include "desktop/look/QtText.h"
#include "desktop/look/StyleViews.h"
#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"

namespace tolvane::desktop {

namespace {

constexpr int rowHeight = 44;
constexpr int inset = Sizes::step;
constexpr int leading = 12;
constexpr int iconSide = 20;
constexpr int iconGap = 10;

}  // namespace

QVariant RuleSuggestionModel::cell(const RuleSuggestion& entry, int role) const {
    if (role == Qt::DisplayRole) return qtText(entry.title);
    if (role == Qt::AccessibleTextRole) return qtText(entry.title + ", " + entry.detail);
    if (role == Qt::ToolTipRole) return tip(qtText(entry.title + "\n" + entry.detail));
    return {};
}

SuggestionDelegate::SuggestionDelegate(const Look& look, const RuleSuggestionModel& model, QObject* parent)
    : QAbstractItemDelegate(parent), look_(look), model_(model) {}

QSize SuggestionDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    const auto& fonts = look_.fonts();
    const int lines = fonts.lineHeight(TextRole::body) + fonts.lineHeight(TextRole::small);
    return {0, std::max(rowHeight, lines + Sizes::gap)};
}

void SuggestionDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto& entry = model_.row(index.row());
    const auto& tokens = look_.tokens();
    const auto& fonts = look_.fonts();
    painter->save();
    auto ground = option;
    const QRect reading = option.rect.adjusted(inset, 0, -Sizes::scrollSpace, 0);
    ground.rect = QStyle::visualRect(option.direction, option.rect, reading);
    ground.state.setFlag(QStyle::State_Active, option.widget && option.widget->isActiveWindow());
    StyleViews::drawRow(*painter, ground, ground.rect, Sizes::controlRadius, tokens);
    if (option.state.testFlag(QStyle::State_HasFocus)) StyleViews::drawFocus(*painter, ground, tokens);

    const auto placed = [&](QRect rect) { return QStyle::visualRect(option.direction, option.rect, rect); };
    const int side = fonts.scaled(iconSide);
    const QRect icon(reading.left() + leading, option.rect.center().y() - side / 2, side, side);
    if (entry.appPath) {
        look_.appIcons().paint(*painter, *entry.appPath, qtText(entry.title), placed(icon));
    } else {
        look_.icons().paint(*painter, "terminal", tokens.text2, placed(icon));
    }
    const int body = fonts.lineHeight(TextRole::body);
    const int small = fonts.lineHeight(TextRole::small);
    QRect line(icon.right() + 1 + iconGap, option.rect.top() + (option.rect.height() - body - small) / 2, 0, body);
    line.setRight(reading.right() - leading);
    const auto draw = [&](const QFont& font, QColor colour, const std::string& text) {
        painter->setFont(font);
        painter->setPen(colour);
        drawLine(*painter, placed(line),
                 QFontMetrics(font).elidedText(oneLine(qtText(text)), Qt::ElideMiddle, line.width()),
                 mirrored(option.direction, Qt::AlignLeft));
    };
    draw(fonts.font(TextRole::body), tokens.text, entry.title);
    line = QRect(line.left(), line.bottom() + 1, line.width(), small);
    draw(fonts.figures(TextRole::small), tokens.text2, entry.detail);
    painter->restore();
}

}  // namespace tolvane::desktop
