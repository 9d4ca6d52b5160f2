#pragma once

#include <QToolButton>
#include <string_view>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A square button with a line icon and no border until it is hovered. Its name is its tooltip and its accessible name.
class IconButton : public QToolButton {
    Q_OBJECT

public:
    IconButton(const Look& look, std::string_view icon, const QString& name, QWidget* parent = nullptr);
};

}  // namespace tolvane::desktop
