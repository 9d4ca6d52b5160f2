#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

class QToolButton;

namespace tolvane::desktop {

class ElidedLabel;

/// One sentence across the top of a screen that something did not come off; hidden until there is one, and again when
/// the user puts it away. Screen readers are alerted.
class NoticeBar : public QWidget {
    Q_OBJECT

public:
    explicit NoticeBar(const Look& look, QWidget* parent = nullptr);

    void tell(const QString& sentence);
    QString sentence() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect iconPlace() const;

    const Look& look_;
    ElidedLabel* sentence_;
    QToolButton* close_;
};

}  // namespace tolvane::desktop
