#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/screens/history/MomentDetail.h"
#include "desktop/lists/RowList.h"

namespace tolvane::desktop {

/// A short list under a heading: icon, name, and a value at the far edge. An empty list shows the reason instead.
class HolderRows : public RowList {
    Q_OBJECT

public:
    explicit HolderRows(const Look& look, QWidget* parent = nullptr);

    void show(const HolderList& list);
    /// Shows what rules did: without icons, with times in muted text as values.
    void show(const QString& title, const std::vector<RuleActRow>& rows);
    using QWidget::show;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    std::vector<Row> layOut(int width) const override;

private:
    struct Entry {
        QString title;
        std::optional<std::string> appPath;
        QString value;
    };

    void take(const QString& title, std::vector<Entry> entries, const QString& empty, bool hasIcons);
    int headHeight() const;
    int rowHeight() const;
    int valueWidth() const;
    Row rowOf(const Entry& entry, QRect place) const;
    Row emptyRow(QRect place) const;

    QString title_;
    std::vector<Entry> entries_;
    QString empty_;
    bool hasIcons_ = true;
};

}  // namespace tolvane::desktop
