#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "app/screens/history/MomentDetail.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// A short list under a heading: icon, name, and a figure at the far end. Without rows it says why.
class HolderRows : public QWidget {
    Q_OBJECT

public:
    explicit HolderRows(const Look& look, QWidget* parent = nullptr);

    void show(const HolderList& list);
    /// What rules did: no icons, and quiet times for figures.
    void show(const QString& title, const std::vector<RuleActRow>& rows);
    using QWidget::show;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Row {
        QString title;
        std::optional<std::string> appPath;
        QString figure;
    };

    void take(const QString& title, std::vector<Row> rows, const QString& empty, bool hasIcons);
    int headHeight() const;
    int rowHeight() const;
    int iconSize() const { return look_.fonts().scaled(Sizes::icon); }
    int figureWidth() const;
    QRect titleRect(QRect place) const;
    void paintRow(QPainter& painter, const Row& row, QRect place) const;

    const Look& look_;
    QString title_;
    std::vector<Row> rows_;
    QString empty_;
    bool hasIcons_ = true;
};

}  // namespace tolvane::desktop
