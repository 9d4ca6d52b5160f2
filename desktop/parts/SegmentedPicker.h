#pragma once

#include <QAbstractButton>
#include <QButtonGroup>
#include <QWidget>
#include <string_view>
#include <vector>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A choice of two to four short texts, side by side in a track. Arrow keys change it; screen readers see radio
/// buttons.
class SegmentedPicker : public QWidget {
    Q_OBJECT

public:
    SegmentedPicker(const Look& look, const QString& name, const std::vector<QString>& choices,
                    QWidget* parent = nullptr);

    int choice() const { return group_->checkedId(); }
    /// Does not emit `chosen`, which reports the user's choices only.
    void setChoice(int index);
    /// The segments share the whole width.
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
