#pragma once

#include <QHeaderView>
#include <optional>

namespace tolvane::desktop {

/// Heads of a table whose values are anchored to its far edge: the near edge of a column can be dragged, and the
/// first column takes or gives the room. A click sorts, a double click on an edge gives a column its own width back.
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
    /// The section whose near edge is within reach; the first has none to drag.
    std::optional<int> edgeAt(int x) const;

    std::optional<Drag> drag_;
};

}  // namespace tolvane::desktop
