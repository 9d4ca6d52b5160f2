#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

class QBoxLayout;

namespace tolvane::desktop {

class ElidedLabel;
class ParagraphLabel;

/// One row of a form: its label left, its control right, and a sentence below where there is something to explain.
/// Where both do not fit, the control stands under its label.
class FormRow : public QWidget {
    Q_OBJECT

public:
    enum class Fit {
        /// The control stands at the right edge in its own width.
        own,
        /// The control takes all the room behind the label column, so that fields share one left edge.
        wide,
    };

    /// The row takes the control over.
    FormRow(const Look& look, const QString& label, QWidget* control, Fit fit = Fit::own, QWidget* parent = nullptr);

    /// Empty for none.
    void setHint(const QString& hint);

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    /// The label leads to its field, as a label does.
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool fitsBeside() const;

    const Look& look_;
    Fit fit_;
    ElidedLabel* label_;
    QWidget* control_;
    QBoxLayout* line_;
    ParagraphLabel* hint_;
};

}  // namespace tolvane::desktop
