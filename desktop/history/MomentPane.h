#pragma once

#include <QWidget>

#include "app/screens/history/MomentDetail.h"
#include "desktop/history/HolderRows.h"
#include "desktop/look/Look.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/ParagraphLabel.h"

class QBoxLayout;

namespace tolvane::desktop {

/// What stood out at one moment: a summary, the largest processes, those that grew most, and what rules did.
class MomentPane : public QWidget {
    Q_OBJECT

public:
    explicit MomentPane(const Look& look, QWidget* parent = nullptr);

    void show(const MomentDetail& detail);
    using QWidget::show;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    const Look& look_;
    ElidedLabel* heading_;
    ParagraphLabel* sentence_;
    ParagraphLabel* hint_;
    QBoxLayout* lists_;
    HolderRows* largest_;
    HolderRows* grew_;
    HolderRows* rules_;
};

}  // namespace tolvane::desktop
