#pragma once

#include <QHeaderView>
#include <optional>

namespace tolvane::desktop {

/// Heads of a table whose value columns are anchored to the far edge: the user drags the near edge of a column, and the
/// first column absorbs the difference. A click sorts, a double click on an edge resets the column's width.
class ProcessTableHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit ProcessTableHeader(QWidget* parent);

    QSize sizeHint() const override;

signals:
    void widthDragged(int section, int width);
    void widthReset(int section);

protected:
    bool viewportEvent(QEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

private:
    struct Drag {
        int section = 0;
        int startX = 0;
        int startWidth = 0;
    };

    bool pressed(const QMouseEvent& event);
    bool moved(const QMouseEvent& event);
    bool released();
    /// The section whose near edge is within reach, or nullopt. The first section has no edge to drag.
    std::optional<int> edgeAt(int x) const;

    std::optional<Drag> drag_;
};

}  // namespace tolvane::desktop
