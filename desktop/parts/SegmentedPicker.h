#pragma once

#include <QAbstractButton>
#include <QButtonGroup>
#include <QWidget>
#include <string_view>
#include <vector>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// One of two to four short choices, side by side in a track. Arrow keys move; screen readers hear radio buttons.
class SegmentedPicker : public QWidget {
    Q_OBJECT

public:
    SegmentedPicker(const Look& look, const QString& name, const std::vector<QString>& choices,
                    QWidget* parent = nullptr);

    int choice() const { return group_->checkedId(); }
    /// Says nothing to `chosen`: that is for what the user does.
    void setChoice(int index);
    /// The segments share all the room there is.
    void fillWidth();

signals:
    void chosen(int index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
    QButtonGroup* group_;
};

}  // namespace tolvane::desktop
