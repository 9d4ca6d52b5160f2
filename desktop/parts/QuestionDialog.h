#pragma once

#include <QDialog>

#include "app/screens/Question.h"
#include "desktop/look/Look.h"

class QPushButton;

namespace tolvane::desktop {

/// Asks before something that cannot be undone. Cancel is the default button and has the focus; the other button acts
/// only when it is pressed itself. Escape cancels. Deletes itself when it closes.
class QuestionDialog : public QDialog {
    Q_OBJECT

public:
    /// `look` outlives the dialog. Opens it, modal to the window of `parent`; `accepted` reports consent. `note` is
    /// shown below the message.
    static QuestionDialog* ask(const Look& look, const Question& question, QWidget* parent, const QString& note = {});

    QPushButton& action() const { return *action_; }
    QPushButton& cancel() const { return *cancel_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QuestionDialog(const Look& look, const Question& question, const QString& note, QWidget* parent);

    const Look& look_;
    QPushButton* cancel_;
    QPushButton* action_;
};

}  // namespace tolvane::desktop
