#pragma once

#include <QColor>

#include "core/sampling/SystemMemory.h"
#include "desktop/look/Tokens.h"

namespace tolvane::desktop {

/// The colours of a memory pressure level. A text label always accompanies them.
struct LevelColours {
    QColor fill;
    /// Invalid if the fill needs no edge.
    QColor edge;

    static LevelColours of(Pressure level, const Tokens& tokens) {
        switch (level) {
            case Pressure::normal:
                return {tokens.green, {}};
            case Pressure::warning:
                return {tokens.yellow, tokens.yellowEdge};
            case Pressure::critical:
                return {tokens.red, {}};
        }
        return {tokens.green, {}};
    }
};

}  // namespace tolvane::desktop
