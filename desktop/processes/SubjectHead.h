#pragma once

#include <QWidget>
#include <optional>
#include <string>

#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"

namespace tolvane::desktop {

/// The head of the inspector: icon, name and second text of the selection.
class SubjectHead : public QWidget {
    Q_OBJECT

public:
    explicit SubjectHead(const Look& look, QWidget* parent = nullptr);

    void show(const QString& title, const QString& detail, const std::optional<std::string>& appPath, bool hasIcon);
    using QWidget::show;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int iconSize() const { return look_.fonts().scaled(Sizes::listIcon); }

    const Look& look_;
    ElidedLabel *title_, *detail_;
    std::optional<std::string> appPath_;
    bool hasIcon_ = true;
};

}  // namespace tolvane::desktop
