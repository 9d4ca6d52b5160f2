#include "desktop/look/Palette.h"

#include <utility>

namespace tolvane::desktop {

namespace {

using Role = QPalette::ColorRole;

void setEverywhere(QPalette& palette, std::initializer_list<std::pair<Role, QColor>> colours) {
    for (const auto& [role, colour] : colours) palette.setColor(role, colour);
}

void setDisabled(QPalette& palette, QColor colour) {
    for (const auto role : {Role::WindowText, Role::Text, Role::ButtonText, Role::HighlightedText}) {
        palette.setColor(QPalette::Disabled, role, colour);
    }
}

float mixed(float from, float to, double share) { return from + (to - from) * static_cast<float>(share); }

}  // namespace

QPalette palette(const Tokens& tokens) {
    QPalette palette;
    setEverywhere(palette, {{Role::Window, tokens.window},
                            {Role::WindowText, tokens.text},
                            {Role::Base, tokens.content},
                            {Role::AlternateBase, tokens.content},
                            {Role::Text, tokens.text},
                            {Role::PlaceholderText, tokens.text3},
                            {Role::Button, tokens.control},
                            {Role::ButtonText, tokens.text},
                            {Role::BrightText, tokens.onAccent},
                            {Role::Highlight, tokens.selection},
                            {Role::HighlightedText, tokens.text},
                            {Role::Link, tokens.accent},
                            {Role::LinkVisited, tokens.accent},
                            {Role::ToolTipBase, tokens.card},
                            {Role::ToolTipText, tokens.text},
                            {Role::Light, tokens.content},
                            {Role::Midlight, tokens.hover},
                            {Role::Mid, tokens.border},
                            {Role::Dark, tokens.borderStrong},
                            {Role::Shadow, tokens.hairline}});
    palette.setColor(QPalette::Inactive, Role::Highlight, tokens.selectionIdle);
    setDisabled(palette, tokens.disabled);
    return palette;
}

QColor faded(QColor colour, double opacity) {
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

QColor laidOver(QColor ground, QColor colour, double opacity) {
    return QColor::fromRgbF(mixed(ground.redF(), colour.redF(), opacity),
                            mixed(ground.greenF(), colour.greenF(), opacity),
                            mixed(ground.blueF(), colour.blueF(), opacity));
}

}  // namespace tolvane::desktop
