#pragma once

#include <QScrollArea>

#include "app/screens/processes/SystemStrip.h"
#include "desktop/look/Look.h"
#include "desktop/machine/CPUBlock.h"
#include "desktop/machine/MemoryBlock.h"
#include "desktop/parts/LinkButton.h"

class QBoxLayout;

namespace tolvane::desktop {

/// The machine's values below the processes table: two halves side by side, stacked if the strip is too narrow,
/// scrolled if it is too low.
class SystemStripBar : public QScrollArea {
    Q_OBJECT

public:
    explicit SystemStripBar(const Look& look, QWidget* parent = nullptr);

    void show(const SystemStrip& strip);
    using QScrollArea::show;

    /// Height of the full contents at the current width.
    int wholeHeight() const;

signals:
    void historyWanted();
    /// The contents need a different height.
    void heightChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
    QWidget* content_;
    QBoxLayout* halves_;
    MemoryBlock* memory_;
    CPUBlock* cpu_;
    LinkButton* history_;
};

}  // namespace tolvane::desktop
