#pragma once

#include <QWidget>

#include "desktop/look/Look.h"

class QBoxLayout;

namespace tolvane::desktop {

class ElidedLabel;
class ParagraphLabel;

/// One row of a form: label left, control right, and a hint below if there is something to explain. If both do not fit,
/// the control goes below its label.
class FormRow : public QWidget {
    Q_OBJECT

public:
    enum class Fit {
        /// The control is right-aligned at its own width.
        own,
        /// The control takes the whole width after the label column, so that fields share a left edge.
        wide,
    };

    /// Takes ownership of the control.
    FormRow(const Look& look, const QString& label, QWidget* control, Fit fit = Fit::own, QWidget* parent = nullptr);

    /// An empty hint hides it.
    void setHint(const QString& hint);

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    /// A click on the label focuses its control.
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
