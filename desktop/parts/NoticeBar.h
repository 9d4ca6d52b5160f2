#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

class QToolButton;

namespace tolvane::desktop {

class ElidedLabel;

/// A sentence across the top of a screen that reports a failure; hidden until there is one, and again when the user
/// dismisses it. Alerts screen readers.
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
