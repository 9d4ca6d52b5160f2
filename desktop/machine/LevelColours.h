#pragma once

#include <QColor>

#include "core/sampling/SystemMemory.h"
#include "desktop/look/Tokens.h"

namespace tolvane::desktop {

/// How a level of memory pressure is coloured. A label always stands beside it.
struct LevelColours {
    QColor fill;
    /// Invalid where the fill needs none.
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
