#pragma once

#include <QColor>
#include <array>

namespace tolvane::desktop {

/// Takes 0xRRGGBB, the only way colours are written down.
constexpr QColor ink(unsigned rgb) {
    return {static_cast<int>(rgb >> 16U & 0xFFU), static_cast<int>(rgb >> 8U & 0xFFU), static_cast<int>(rgb & 0xFFU)};
}

/// The colours of one scheme, named by meaning. No other file contains a colour.
struct Tokens {
    QColor window, sidebar, content, card, control, well;
    QColor hairline, border, borderStrong;
    QColor hover;
    QColor text, text2, text3, disabled;
    QColor accent, accentFill, onAccent;
    QColor selection, selectionIdle;
    QColor green, yellow, orange, red;
    /// A light yellow is hard to see on white without an edge.
    QColor yellowEdge;
    /// Text in a status colour.
    QColor greenText, yellowText, orangeText, redText;
    QColor destructiveFill;
    QColor tagPlain, tagGreen, tagOrange;
    QColor switchOff;
    /// Chart series.
    QColor used, compressed, swap, efficiency, performance;
    /// Backgrounds of the times when memory was tight.
    QColor bandElevated, bandCritical;
    /// Opacities of `text` where it is used as a background.
    double badgeOpacity, thumbOpacity;
    /// Added to the opacity of chart areas.
    double areaOpacityBonus;
    /// In pixels.
    int focusWidth;
    /// Selected rows get an outline in addition to their background.
    bool outlinesSelection;
};

inline constexpr Tokens lightTokens = {
    .window = ink(0xF5F6F8),
    .sidebar = ink(0xECEEF2),
    .content = ink(0xFFFFFF),
    .card = ink(0xFFFFFF),
    .control = ink(0xFFFFFF),
    .well = ink(0xE9EBEF),
    .hairline = ink(0xE2E5E9),
    .border = ink(0xC9CED6),
    .borderStrong = ink(0x7E8590),
    .hover = ink(0xF1F3F6),
    .text = ink(0x1A1D22),
    .text2 = ink(0x545B66),
    .text3 = ink(0x646B76),
    .disabled = ink(0xA3A9B2),
    .accent = ink(0x2A62C4),
    .accentFill = ink(0x2F69CF),
    .onAccent = ink(0xFFFFFF),
    .selection = ink(0xDCE7F9),
    .selectionIdle = ink(0xDCE0E6),
    .green = ink(0x23893F),
    .yellow = ink(0xF2B200),
    .orange = ink(0xC4570A),
    .red = ink(0xC8342B),
    .yellowEdge = ink(0xA06E00),
    .greenText = ink(0x1B7334),
    .yellowText = ink(0x825A00),
    .orangeText = ink(0xA84A08),
    .redText = ink(0xB92C24),
    .destructiveFill = ink(0xC8342B),
    .tagPlain = ink(0xE9EBEF),
    .tagGreen = ink(0xDDF1E2),
    .tagOrange = ink(0xFBE6D6),
    .switchOff = ink(0x7E8590),
    .used = ink(0x2A62C4),
    .compressed = ink(0xAE4B06),
    .swap = ink(0x8645C4),
    .efficiency = ink(0x7C838E),
    .performance = ink(0x2A62C4),
    .bandElevated = ink(0xF5B800),
    .bandCritical = ink(0xE5484D),
    .badgeOpacity = 0.07,
    .thumbOpacity = 0.22,
    .areaOpacityBonus = 0,
    .focusWidth = 2,
    .outlinesSelection = false,
};

inline constexpr Tokens darkTokens = {
    .window = ink(0x1D1F23),
    .sidebar = ink(0x17191C),
    .content = ink(0x1D1F23),
    .card = ink(0x26292E),
    .control = ink(0x31353B),
    .well = ink(0x15171A),
    .hairline = ink(0x31353B),
    .border = ink(0x474C55),
    .borderStrong = ink(0x7C838E),
    .hover = ink(0x24272C),
    .text = ink(0xE9EBEE),
    .text2 = ink(0xA9AFB9),
    .text3 = ink(0x969DA8),
    .disabled = ink(0x5F656F),
    .accent = ink(0x7AA5F5),
    .accentFill = ink(0x3B70D3),
    .onAccent = ink(0xFFFFFF),
    .selection = ink(0x27385A),
    .selectionIdle = ink(0x2D3137),
    .green = ink(0x4CBF6B),
    .yellow = ink(0xE0B341),
    .orange = ink(0xF0954A),
    .red = ink(0xF2766D),
    .yellowEdge = ink(0xE0B341),
    .greenText = ink(0x5CCB7A),
    .yellowText = ink(0xE0B341),
    .orangeText = ink(0xF2A05C),
    .redText = ink(0xF58A82),
    .destructiveFill = ink(0xC2413A),
    .tagPlain = ink(0x363B42),
    .tagGreen = ink(0x1F3A29),
    .tagOrange = ink(0x45301F),
    .switchOff = ink(0x757C87),
    .used = ink(0x7AA5F5),
    .compressed = ink(0xF0954A),
    .swap = ink(0xBE8CF0),
    .efficiency = ink(0x8B929D),
    .performance = ink(0x7AA5F5),
    .bandElevated = ink(0xF5C542),
    .bandCritical = ink(0xF2555A),
    .badgeOpacity = 0.10,
    .thumbOpacity = 0.22,
    .areaOpacityBonus = 0,
    .focusWidth = 2,
    .outlinesSelection = false,
};

/// Edges and muted texts get the strongest contrast, and a selection is no longer shown by colour alone.
constexpr Tokens withHighContrast(Tokens tokens) {
    tokens.hairline = tokens.border = tokens.borderStrong;
    tokens.text2 = tokens.text3 = tokens.text;
    tokens.areaOpacityBonus = 0.2;
    tokens.focusWidth = 3;
    tokens.outlinesSelection = true;
    return tokens;
}

/// Backgrounds of the tiles for applications without an icon; their letters are white in both schemes.
inline constexpr std::array<QColor, 8> tileGrounds = {ink(0xA5552A), ink(0x2F6FB3), ink(0x5157A6), ink(0x7A4584),
                                                      ink(0x2B6F96), ink(0x2F7A4B), ink(0xA0415C), ink(0x7A6520)};
inline constexpr QColor tileLetter = ink(0xFFFFFF);

/// Device-independent pixels at 100 % text. Heights are minimums: rows grow with their font.
namespace Sizes {

inline constexpr int step = 4;
inline constexpr int gap = 8;
inline constexpr int wideGap = 12;
inline constexpr int inspectorMargin = 16;
/// Between rows of values.
inline constexpr int rowSpacing = 3, wideRowSpacing = 4;
/// Page margin, which titles, headings and the first column of tables are aligned to.
inline constexpr int margin = 28;

inline constexpr int cardRadius = 8;
inline constexpr int trackRadius = 7;
inline constexpr int controlRadius = 6;
inline constexpr int rowRadius = 5;
inline constexpr int tileRadius = 4;
inline constexpr int gaugeRadius = 3;

inline constexpr int toolbarHeight = 52;
inline constexpr int headHeight = 28;
inline constexpr int tableRowHeight = 26;
inline constexpr int sidebarRowHeight = 30;
inline constexpr int sidebarHeadingHeight = 38;
inline constexpr int buttonHeight = 28;
/// Width of the part of a split button that opens its menu.
inline constexpr int menuPart = 25;
inline constexpr int gaugeHeight = 6;
inline constexpr int checkBox = 16;
inline constexpr int tagHeight = 18;
inline constexpr int badgeWidth = 20;

inline constexpr int icon = 16;
inline constexpr int listIcon = 20;
inline constexpr int questionIcon = 28;
inline constexpr int emptyIcon = 44;

inline constexpr int sidebarWidth = 180, sidebarLeast = 160, sidebarMost = 240;
inline constexpr int inspectorWidth = 240, inspectorLeast = 220, inspectorMost = 320;
inline constexpr int searchWidth = 235, searchLeast = 140;
inline constexpr int nameLeast = 160;
inline constexpr int windowWidth = 1040, windowHeight = 640;
inline constexpr int windowLeastWidth = 900, windowLeastHeight = 480;

/// Distance of table and sidebar selections from the edges.
inline constexpr int rowInset = 6;
inline constexpr int sidebarInset = 8;
inline constexpr int treeIndent = 16;
/// Gap between neighbouring columns.
inline constexpr int columnGap = 8;
/// Space right of the last column, so that the scroll bar covers no value.
inline constexpr int tableTrailing = 17;
inline constexpr int scrollThumb = 6, scrollThumbHover = 10, scrollSpace = 14;

}  // namespace Sizes

}  // namespace tolvane::desktop
