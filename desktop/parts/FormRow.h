#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

namespace tolvane::desktop {

class ParagraphLabel;

/// One row of a form: its label left, its control right, and a sentence below where there is something to explain.
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

protected:
    /// The label works the control, as a label does.
    void mousePressEvent(QMouseEvent* event) override;

private:
    ParagraphLabel* hint_;
    QWidget* control_;
};

}  // namespace tolvane::desktop
