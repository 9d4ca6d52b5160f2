#include "desktop/parts/AlertDialog.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/parts/ParagraphLabel.h"

namespace tolvane::desktop {

namespace {

constexpr int margin = 20;
constexpr int widest = 420;

}  // namespace

AlertDialog::AlertDialog(const Look& look, const QString& sentence, const QString& dismiss, QWidget* parent)
    : QDialog(parent), buttons_(new QHBoxLayout), dismiss_(new QPushButton(dismiss)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setWindowTitle(parent ? parent->window()->windowTitle() : QString());
    setAccessibleName(sentence);
    auto* words = new ParagraphLabel(look, TextRole::headline, &Tokens::text);
    words->setText(sentence);
    words->setMinimumWidth(look.fonts().scaled(widest) - 2 * margin);
    dismiss_->setDefault(true);
    connect(dismiss_, &QPushButton::clicked, this, &QDialog::reject);
    buttons_->setSpacing(Sizes::wideGap);
    buttons_->addStretch(1);
    buttons_->addWidget(dismiss_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(margin);
    column->addWidget(words);
    column->addLayout(buttons_);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

void AlertDialog::ask(const QString& action) {
    auto* button = new QPushButton(action);
    button->setProperty("destructive", true);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, &QDialog::accept);
    buttons_->addWidget(button);
}

}  // namespace tolvane::desktop
