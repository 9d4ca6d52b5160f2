#include "desktop/parts/QuestionDialog.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/look/MenuText.h"
#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"
#include "desktop/parts/ParagraphLabel.h"

namespace tolvane::desktop {

namespace {

constexpr int margin = 20;
constexpr int textWidth = 320;
constexpr int iconGap = 16;

/// The texts name the subject of the question, whose name may be of any length.
constexpr int mostTitleLines = 4, mostMessageLines = 10;

}  // namespace

QuestionDialog* QuestionDialog::ask(const Look& look, const Question& question, QWidget* parent, const QString& note) {
    auto* dialog = new QuestionDialog(look, question, note, parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
    return dialog;
}

QuestionDialog::QuestionDialog(const Look& look, const Question& question, const QString& note, QWidget* parent)
    : QDialog(parent),
      look_(look),
      cancel_(new QPushButton(tr("Cancel"), this)),
      action_(new QPushButton(menuText(qtText(question.action)), this)) {
    setWindowTitle(qtText(question.action));
    setAccessibleName(qtText(question.title));
    setAccessibleDescription(note.isEmpty() ? qtText(question.message)
                                            : qtText(question.message) + QLatin1Char(' ') + note);
    setWindowModality(Qt::WindowModal);
    auto* title = new ParagraphLabel(look, TextRole::headline, &Tokens::text, this);
    title->setText(qtText(question.title));
    title->setMostLines(mostTitleLines);
    title->setMinimumWidth(look.fonts().scaled(textWidth));
    auto* texts = new QVBoxLayout;
    texts->setSpacing(Sizes::step);
    texts->addWidget(title);
    for (const auto& text : {qtText(question.message), note}) {
        if (text.isEmpty()) continue;
        auto* message = new ParagraphLabel(look, TextRole::small, &Tokens::text2, this);
        message->setText(text);
        message->setMostLines(mostMessageLines);
        texts->addWidget(message);
    }
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Sizes::wideGap);
    buttons->addStretch(1);
    buttons->addWidget(cancel_);
    buttons->addWidget(action_);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(
        mirrored(layoutDirection(), QMargins(margin + Sizes::questionIcon + iconGap, margin, margin, margin)));
    whole->setSpacing(margin);
    whole->setSizeConstraint(QLayout::SetFixedSize);
    whole->addLayout(texts);
    whole->addLayout(buttons);
    action_->setProperty("destructive", true);
    action_->setProperty("filled", true);
    action_->setAutoDefault(false);
    cancel_->setProperty("filled", false);
    cancel_->setDefault(true);
    cancel_->setFocus(Qt::TabFocusReason);
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    connect(action_, &QPushButton::clicked, this, &QDialog::accept);
}

void QuestionDialog::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const int left = layoutDirection() == Qt::LeftToRight ? margin : width() - margin - Sizes::questionIcon;
    look_.icons().paint(painter, "exclamationmark.triangle", look_.tokens().orange,
                        QRect(left, margin, Sizes::questionIcon, Sizes::questionIcon));
}

}  // namespace tolvane::desktop
