#include "desktop/parts/QuestionDialog.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/Words.h"
#include "desktop/parts/ParagraphLabel.h"

namespace tolvane::desktop {

namespace {

constexpr int margin = 20;
constexpr int textWidth = 320;
constexpr int iconGap = 16;

/// A name may hold what would be a mnemonic.
QString label(const std::string& text) { return words(text).replace('&', QStringLiteral("&&")); }

}  // namespace

QuestionDialog* QuestionDialog::ask(const Look& look, const Question& question, QWidget* parent) {
    auto* dialog = new QuestionDialog(look, question, parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
    return dialog;
}

QuestionDialog::QuestionDialog(const Look& look, const Question& question, QWidget* parent)
    : QDialog(parent),
      look_(look),
      cancel_(new QPushButton(tr("Cancel"), this)),
      action_(new QPushButton(label(question.action), this)) {
    setWindowTitle(words(question.action));
    setAccessibleName(words(question.title));
    setAccessibleDescription(words(question.message));
    setWindowModality(Qt::WindowModal);
    auto* title = new ParagraphLabel(look, TextRole::headline, &Tokens::text, this);
    title->setText(words(question.title));
    title->setMinimumWidth(look.fonts().scaled(textWidth));
    auto* texts = new QVBoxLayout;
    texts->setSpacing(Sizes::step);
    texts->addWidget(title);
    if (!question.message.empty()) {
        auto* message = new ParagraphLabel(look, TextRole::small, &Tokens::text2, this);
        message->setText(words(question.message));
        texts->addWidget(message);
    }
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Sizes::wideGap);
    buttons->addStretch(1);
    buttons->addWidget(cancel_);
    buttons->addWidget(action_);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(margin + Sizes::questionIcon + iconGap, margin, margin, margin);
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
