#include "desktop/window/AlertDialog.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/parts/ParagraphLabel.h"

namespace tolvane::desktop {

namespace {

constexpr int margin = 20;
constexpr int widest = 420;
constexpr int mostLines = 12;

}  // namespace

AlertDialog::AlertDialog(const Look& look, const QString& sentence, const QString& dismiss, QWidget* parent)
    : QDialog(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setWindowTitle(parent ? parent->window()->windowTitle() : QString());
    setAccessibleName(sentence);
    auto* words = new ParagraphLabel(look, TextRole::headline, &Tokens::text);
    words->setText(sentence);
    words->setMostLines(mostLines);
    words->setMinimumWidth(look.fonts().scaled(widest) - 2 * margin);
    auto* button = new QPushButton(dismiss);
    button->setDefault(true);
    connect(button, &QPushButton::clicked, this, &QDialog::reject);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(button);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(margin);
    column->addWidget(words);
    column->addLayout(row);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace tolvane::desktop
