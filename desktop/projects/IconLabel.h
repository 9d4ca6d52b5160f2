#pragma once

#include <QWidget>
#include <string_view>

#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/projects/LineIcon.h"

namespace tolvane::desktop {

/// A few words behind a small icon, both in one colour; gives way in the middle where room is short.
class IconLabel : public QWidget {
    Q_OBJECT

public:
    IconLabel(const Look& look, QColor Tokens::* colour, QWidget* parent = nullptr);

    /// Hides itself when there are no words.
    void show(std::string_view icon, const QString& text);
    using QWidget::show;
    const QString& text() const { return label_->text(); }

private:
    LineIcon* icon_;
    ElidedLabel* label_;
};

}  // namespace tolvane::desktop
