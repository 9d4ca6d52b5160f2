#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Rows of texts, icons and shapes, drawn in one widget. A subclass lays out its rows as data for a given width;
/// drawing, mirroring, tooltips and accessibility are shared.
class RowList : public QWidget {
    Q_OBJECT

public:
    struct Text {
        /// Before mirroring, like every place in a layout.
        QRect place;
        QString text;
        QFont font;
        QColor Tokens::* colour = &Tokens::text;
        /// As seen on the screen; not mirrored.
        Qt::Alignment alignment = Qt::AlignLeft;
        Qt::TextElideMode elide = Qt::ElideRight;
        /// Shown above the row's tooltip.
        QString tip = {};
    };
    struct Icon {
        QRect place;
        /// Path of the application whose icon is drawn; if nullopt, the symbol is drawn.
        std::optional<std::string> appPath;
        std::string_view symbol;
        /// An application without an icon is shown by the first letter of this title.
        QString title;
    };
    struct Shape {
        QRect place;
        double radius = 0;
        QColor Tokens::* colour = &Tokens::text;
    };
    struct Row {
        QRect place;
        /// The row and its value, for screen readers.
        QString name, value;
        /// May be empty.
        QString tip;
        std::vector<Text> texts;
        std::optional<Icon> icon;
        std::optional<Shape> shape;
    };

    RowList(const Look& look, QWidget* parent);

    /// Laid out for the current width.
    const std::vector<Row>& rows() const { return rowsAt(width()); }
    /// In widget coordinates, after mirroring.
    QRect mirroredPlace(const Row& row) const;

protected:
    /// Rows from top to bottom, each as wide as the list.
    virtual std::vector<Row> layOut(int width) const = 0;
    /// Call after the contents changed: lays out again and repaints.
    void contentsChanged();

    const std::vector<Row>& rowsAt(int width) const;
    const Look& look() const { return look_; }
    /// The start and end of a line in the window's direction.
    Qt::Alignment leading() const;
    Qt::Alignment trailing() const;

    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    QRect mirrored(QRect place) const;
    void paintRow(QPainter& painter, const Row& row) const;
    QString tipAt(QPoint position) const;

    const Look& look_;
    /// Cached: layouts ask for heights several times at every change, and measuring texts is most of what a tick costs
    /// here.
    mutable std::vector<Row> laidOut_;
    mutable std::optional<int> laidOutWidth_;
};

}  // namespace tolvane::desktop
