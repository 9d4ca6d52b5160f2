#include "desktop/look/TolvaneStyle.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QFocusFrame>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTreeView>
#include <array>

#include "desktop/look/Look.h"
#include "desktop/look/StyleControls.h"
#include "desktop/look/StyleMenus.h"
#include "desktop/look/StyleScrollBar.h"
#include "desktop/look/StyleViews.h"

namespace tolvane::desktop {

namespace {

struct Metric {
    QStyle::PixelMetric metric;
    int pixels;
};

constexpr std::array<Metric, 20> metrics = {{
    {QStyle::PM_ScrollBarExtent, Sizes::scrollSpace},
    {QStyle::PM_ScrollBarSliderMin, Sizes::margin},
    /// Views extend below their scroll bars, which have no background of their own.
    {QStyle::PM_ScrollView_ScrollBarOverlap, Sizes::scrollSpace},
    {QStyle::PM_ScrollView_ScrollBarSpacing, 0},
    {QStyle::PM_DefaultFrameWidth, 0},
    {QStyle::PM_SplitterWidth, 1},
    {QStyle::PM_SmallIconSize, Sizes::icon},
    {QStyle::PM_ButtonIconSize, Sizes::icon},
    {QStyle::PM_MenuButtonIndicator, Sizes::menuPart},
    {QStyle::PM_MenuPanelWidth, 1},
    {QStyle::PM_MenuHMargin, StyleMenus::margin},
    {QStyle::PM_MenuVMargin, StyleMenus::margin},
    {QStyle::PM_ListViewIconSize, Sizes::icon},
    {QStyle::PM_TreeViewIndentation, Sizes::treeIndent},
    {QStyle::PM_CheckBoxLabelSpacing, Sizes::gap},
    {QStyle::PM_ButtonShiftHorizontal, 0},
    {QStyle::PM_ButtonShiftVertical, 0},
    {QStyle::PM_HeaderMargin, Sizes::columnGap / 2},
    {QStyle::PM_HeaderGripMargin, Sizes::step},
    {QStyle::PM_ToolTipLabelFrameWidth, Sizes::step},
}};

constexpr int buttonPadding = 14;
constexpr int leastButtonWidth = 80;

/// Controls that get a focus ring around them; views draw their focus inside.
bool isControl(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
           qobject_cast<const QComboBox*>(widget);
}

/// Set on views that scroll both ways, whose bars must not cover values.
bool keepsClearOfBars(const QWidget* bar) {
    for (const auto* each = bar; each; each = each->parentWidget()) {
        if (qobject_cast<const QAbstractScrollArea*>(each)) return each->property("clearOfBars").toBool();
    }
    return false;
}

/// Selectable text that looks like a label.
bool isBare(const QWidget* widget) { return widget && widget->property("bare").toBool(); }

bool isDestructive(const QWidget* widget) { return widget && widget->property("destructive").toBool(); }

/// The "filled" property of a button overrides the rule that the default button is the filled one.
QStyleOptionButton asItStands(const QStyleOptionButton& option, const QWidget* widget) {
    auto shown = option;
    const auto filled = widget ? widget->property("filled") : QVariant();
    if (filled.isValid()) shown.features.setFlag(QStyleOptionButton::DefaultButton, filled.toBool());
    return shown;
}

double radiusOf(const QWidget* widget) {
    const auto radius = widget ? widget->property("focusRadius") : QVariant();
    return radius.isValid() ? radius.toDouble() : Sizes::controlRadius;
}

}  // namespace

TolvaneStyle::TolvaneStyle(const Look& look)
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))), look_(look) {}

void TolvaneStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (isControl(widget) || qobject_cast<QScrollBar*>(widget)) widget->setAttribute(Qt::WA_Hover);
    if (qobject_cast<QScrollBar*>(widget)) widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
    if (auto* view = qobject_cast<QAbstractItemView*>(widget)) view->viewport()->setAttribute(Qt::WA_Hover);
}

void TolvaneStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
    const auto& tokens = look_.tokens();
    switch (element) {
        case PE_FrameFocusRect:
            if (!isControl(widget)) StyleViews::drawFocus(*painter, *option, tokens);
            return;
        case PE_PanelButtonCommand:
            if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
                StyleControls::drawButton(*painter, asItStands(*button, widget), tokens, isDestructive(widget));
            }
            return;
        case PE_PanelButtonTool:
            return StyleControls::drawToolButton(*painter, *option, tokens);
        case PE_PanelLineEdit:
            if (isBare(widget)) return;
            return StyleControls::drawField(*painter, *option, tokens);
        case PE_FrameLineEdit:
        case PE_FrameDefaultButton:
        case PE_PanelScrollAreaCorner:
            return;
        case PE_IndicatorCheckBox:
            return StyleControls::drawCheckBox(*painter, *option, look_);
        case PE_PanelTipLabel:
            return StyleControls::drawTip(*painter, *option, tokens);
        case PE_PanelMenu:
            return StyleMenus::drawPanel(*painter, option->rect, tokens);
        case PE_FrameMenu:
            return StyleMenus::drawFrame(*painter, option->rect, tokens);
        case PE_IndicatorBranch:
            return StyleViews::drawDisclosure(*painter, *option, look_);
        case PE_PanelItemViewRow:
            /// Our trees pass whole rows; the toolkit's own calls come cell by cell.
            if (const auto* row = qstyleoption_cast<const QStyleOptionViewItem*>(option);
                row && row->viewItemPosition == QStyleOptionViewItem::OnlyOne) {
                StyleViews::drawRow(*painter, *option, option->rect, Sizes::rowRadius, tokens);
            }
            return;
        case PE_PanelItemViewItem:
            if (!qobject_cast<const QTreeView*>(widget)) {
                StyleViews::drawRow(*painter, *option, option->rect, Sizes::controlRadius, tokens);
            }
            return;
        default:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void TolvaneStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    const auto& tokens = look_.tokens();
    switch (element) {
        case CE_HeaderSection:
        case CE_HeaderEmptyArea:
            return StyleViews::drawHeadGround(*painter, option->rect, tokens);
        case CE_Header:
            StyleViews::drawHeadGround(*painter, option->rect, tokens);
            if (const auto* head = qstyleoption_cast<const QStyleOptionHeader*>(option)) {
                StyleViews::drawHeadLabel(*painter, *head, look_);
            }
            return;
        case CE_PushButtonLabel: {
            const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
            if (!button) return;
            auto label = asItStands(*button, widget);
            const bool enabled = option->state.testFlag(State_Enabled);
            if (StyleControls::isFilled(label)) label.palette.setColor(QPalette::ButtonText, tokens.onAccent);
            if (enabled && !StyleControls::isFilled(label) && isDestructive(widget)) {
                label.palette.setColor(QPalette::ButtonText, tokens.redText);
            }
            return StyleControls::drawButtonLabel(*painter, label);
        }
        case CE_FocusFrame: {
            const auto* frame = qobject_cast<const QFocusFrame*>(widget);
            const int reach = 1 + tokens.focusWidth;
            return StyleControls::drawFocusRing(*painter, option->rect.adjusted(reach, reach, -reach, -reach),
                                                radiusOf(frame ? frame->widget() : nullptr), tokens);
        }
        case CE_MenuItem:
            if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
                const bool mnemonics = proxy()->styleHint(SH_UnderlineShortcut, option, widget) != 0;
                StyleMenus::drawItem(*painter, *item, mnemonics, look_);
            }
            return;
        case CE_MenuEmptyArea:
            return;
        case CE_Splitter:
            return painter->fillRect(option->rect, tokens.hairline);
        default:
            QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void TolvaneStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                      const QWidget* widget) const {
    if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option); slider && control == CC_ScrollBar) {
        return StyleScrollBar::draw(*painter, *slider, look_.tokens());
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect TolvaneStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    if (element == SE_TreeViewDisclosureItem) return StyleViews::disclosureRect(*option);
    if (element == SE_LineEditContents && isBare(widget)) return option->rect;
    if (element == SE_LineEditContents && widget) {
        return option->rect.adjusted(Sizes::gap, 0, -Sizes::gap, 0);
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect TolvaneStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                   const QWidget* widget) const {
    if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option); slider && control == CC_ScrollBar) {
        return StyleScrollBar::part(*slider, part);
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize TolvaneStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                     const QWidget* widget) const {
    const auto& fonts = look_.fonts();
    const int control = fonts.height(TextRole::body, Sizes::buttonHeight);
    switch (type) {
        case CT_PushButton:
            return {std::max(leastButtonWidth, contents.width() + 2 * buttonPadding), control};
        case CT_LineEdit:
            return {contents.width() + 2 * Sizes::gap, control};
        case CT_MenuItem: {
            const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
            return item ? StyleMenus::itemSize(*item, contents, fonts) : contents;
        }
        case CT_HeaderSection:
            return {contents.width(), fonts.height(TextRole::caption, Sizes::headHeight, 10)};
        default:
            return QProxyStyle::sizeFromContents(type, option, contents, widget);
    }
}

int TolvaneStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    if (metric == PM_FocusFrameHMargin || metric == PM_FocusFrameVMargin) return 1 + look_.tokens().focusWidth;
    if (metric == PM_ScrollView_ScrollBarOverlap && keepsClearOfBars(widget)) return 0;
    if (metric == PM_IndicatorWidth || metric == PM_IndicatorHeight) return look_.fonts().scaled(Sizes::checkBox);
    for (const auto& each : metrics) {
        if (each.metric == metric) return each.pixels;
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int TolvaneStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* answer) const {
    switch (hint) {
        case SH_ItemView_ShowDecorationSelected:
        case SH_ScrollBar_LeftClickAbsolutePosition:
            return 1;
        case SH_ItemView_ActivateItemOnSingleClick:
        case SH_FocusFrame_Mask:
        case SH_EtchDisabledText:
        case SH_DitherDisabledText:
        case SH_Widget_Animation_Duration:
            return 0;
        default:
            return QProxyStyle::styleHint(hint, option, widget, answer);
    }
}

}  // namespace tolvane::desktop
