#include "desktop/window/SidebarDelegate.h"

#include <QPainter>
#include <algorithm>

#include "desktop/look/Palette.h"
#include "desktop/look/StyleControls.h"
#include "desktop/look/StyleViews.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

namespace {

constexpr int leading = Sizes::inspectorMargin;
constexpr int iconGap = 9;
constexpr int badgeHeight = 16;
constexpr int badgePadding = 7;
/// Moves headings closer to the rows below them.
constexpr int headingDrop = 6;

QRect placed(const QStyleOptionViewItem& option, QRect rect) {
    return QStyle::visualRect(option.direction, option.rect, rect);
}

}  // namespace

SidebarDelegate::SidebarDelegate(const Look& look, const SidebarModel& model, QObject* parent)
    : QAbstractItemDelegate(parent), look_(look), model_(model) {}

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const {
    const bool heading = !model_.row(index.row()).section;
    const auto& fonts = look_.fonts();
    return {0, heading ? fonts.height(TextRole::caption, Sizes::sidebarHeadingHeight, 24)
                       : fonts.height(TextRole::body, Sizes::sidebarRowHeight, 12)};
}

void SidebarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto& row = model_.row(index.row());
    painter->save();
    if (row.section) {
        paintSection(*painter, option, row);
    } else {
        paintHeading(*painter, option, row);
    }
    painter->restore();
}

void SidebarDelegate::paintHeading(QPainter& painter, const QStyleOptionViewItem& option,
                                   const SidebarItem& row) const {
    painter.setFont(look_.fonts().font(TextRole::caption, QFont::DemiBold));
    painter.setPen(look_.tokens().text3);
    drawLine(painter, placed(option, option.rect.adjusted(leading, headingDrop * 2, 0, 0)), row.title,
             mirrored(option.direction, Qt::AlignLeft));
}

void SidebarDelegate::paintSection(QPainter& painter, const QStyleOptionViewItem& option,
                                   const SidebarItem& row) const {
    const auto& tokens = look_.tokens();
    auto ground = option;
    ground.rect = option.rect.adjusted(Sizes::sidebarInset, 0, -Sizes::sidebarInset - 1, 0);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    /// Views report themselves inactive without the focus, but the selection's colour depends on the window.
    ground.state.setFlag(QStyle::State_Active, option.widget && option.widget->isActiveWindow());
    StyleViews::drawRow(painter, ground, ground.rect, Sizes::controlRadius, tokens);
    if (option.state.testFlag(QStyle::State_HasFocus)) StyleViews::drawFocus(painter, ground, tokens);

    const int side = look_.fonts().scaled(Sizes::icon);
    const QRect icon(option.rect.left() + leading, option.rect.center().y() - side / 2 + 1, side, side);
    look_.icons().paint(painter, row.icon, selected ? tokens.accent : tokens.text2, placed(option, icon));
    auto text = option.rect.adjusted(leading + side + iconGap, 0, -leading, 0);
    text.adjust(0, 0, -paintBadge(painter, option, text, row.badge), 0);
    painter.setFont(look_.fonts().font(TextRole::body));
    painter.setPen(tokens.text);
    drawLine(painter, placed(option, text),
             QFontMetrics(painter.font()).elidedText(row.title, Qt::ElideRight, text.width()),
             mirrored(option.direction, Qt::AlignLeft));
}

/// Returns the width that the badge takes.
int SidebarDelegate::paintBadge(QPainter& painter, const QStyleOptionViewItem& option, QRect rect,
                                const QString& badge) const {
    if (badge.isEmpty()) return 0;
    const auto font = look_.fonts().figures(TextRole::caption);
    const QFontMetrics metrics(font);
    const int width = std::max(Sizes::badgeWidth, metrics.horizontalAdvance(badge) + 2 * badgePadding);
    const int height = std::max(badgeHeight, metrics.height() + 2);
    const QRect pill(rect.right() + 1 - width, rect.center().y() - height / 2 + 1, width, height);
    const auto& tokens = look_.tokens();
    StyleControls::drawShape(painter, placed(option, pill), height / 2.0, faded(tokens.text, tokens.badgeOpacity), {});
    painter.setFont(font);
    painter.setPen(tokens.text2);
    painter.drawText(placed(option, pill), Qt::AlignCenter, badge);
    return width + Sizes::gap;
}

}  // namespace tolvane::desktop
