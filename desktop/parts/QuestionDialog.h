#pragma once

#include <QDialog>

#include "app/screens/Question.h"
#include "desktop/look/Look.h"

class QPushButton;

namespace tolvane::desktop {

/// Asks before something that cannot be undone. Cancel is the default and holds the focus; the other button answers
/// only to itself. Escape cancels. Deletes itself when it closes.
class QuestionDialog : public QDialog {
    Q_OBJECT

public:
    /// `look` outlives the dialog. Shows itself, modal to the window of `parent`; `accepted` reports a yes.
    /// `note` stands below the message.
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
