#pragma once

#include <QWidget>
#include <string_view>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Placeholder of an empty pane: icon, title and a sentence, centred slightly above the middle.
class EmptyState : public QWidget {
    Q_OBJECT

public:
    EmptyState(const Look& look, std::string_view icon, const QString& title, const QString& sentence,
               QWidget* parent = nullptr);

    /// Goes below the sentence; the placeholder takes ownership.
    void setButton(QWidget* button);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Places;
    Places places() const;

    const Look& look_;
    std::string icon_;
    QString title_, sentence_;
    QWidget* button_ = nullptr;
};

}  // namespace tolvane::desktop
