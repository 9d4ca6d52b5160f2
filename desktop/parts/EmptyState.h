#pragma once

#include <QWidget>
#include <string_view>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// What a pane says while it has nothing to show: icon, title and a sentence, centred and a little lifted.
class EmptyState : public QWidget {
    Q_OBJECT

public:
    EmptyState(const Look& look, std::string_view icon, const QString& title, const QString& sentence,
               QWidget* parent = nullptr);

    /// Stands below the sentence; the state takes it over.
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
