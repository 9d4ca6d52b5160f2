#pragma once

#include <QWidget>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// Rows of texts, icons and shapes, drawn in one widget. What a kind of list holds and where it stands is data that a
/// subclass lays out for a width; drawing, mirroring, tooltips and what screen readers find are the same for all.
class RowList : public QWidget {
    Q_OBJECT

public:
    struct Text {
        /// Before mirroring, as all places are.
        QRect place;
        QString text;
        QFont font;
        QColor Tokens::* colour = &Tokens::text;
        /// On the screen, whichever way the window runs.
        Qt::Alignment alignment = Qt::AlignLeft;
        Qt::TextElideMode elide = Qt::ElideRight;
        /// Goes before the row's tooltip.
        QString tip = {};
    };
    struct Icon {
        QRect place;
        /// The application's icon; the symbol where there is none.
        std::optional<std::string> appPath;
        std::string_view symbol;
        /// Gives an application without an icon its letter.
        QString title;
    };
    struct Shape {
        QRect place;
        double radius = 0;
        QColor Tokens::* colour = &Tokens::text;
    };
    struct Row {
        QRect place;
        /// What screen readers say: the whole row, and of it the value.
        QString name, value;
        /// Empty for none.
        QString tip;
        std::vector<Text> texts;
        std::optional<Icon> icon;
        std::optional<Shape> shape;
    };

    RowList(const Look& look, QWidget* parent);

    /// At the present width.
    const std::vector<Row>& rows() const { return rowsAt(width()); }
    /// In the widget, as it stands on the screen.
    QRect mirroredPlace(const Row& row) const;

protected:
    /// One below the other, over the whole width.
    virtual std::vector<Row> layOut(int width) const = 0;
    /// After other contents were taken: lays out and draws again.
    void contentsChanged();

    const std::vector<Row>& rowsAt(int width) const;
    const Look& look() const { return look_; }
    /// Where text stands that follows the window's direction.
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
    /// Layouts ask for heights several times at every change, and measuring texts is most of what a tick costs here.
    mutable std::vector<Row> laidOut_;
    mutable std::optional<int> laidOutWidth_;
};

}  // namespace tolvane::desktop
