#pragma once

#include <QAbstractButton>
#include <string>
#include <string_view>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A line icon with a muted label, which gets full contrast under the pointer.
class QuietButton : public QAbstractButton {
    Q_OBJECT

public:
    QuietButton(const Look& look, std::string_view icon, const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& look_;
    std::string icon_;
};

}  // namespace tolvane::desktop
