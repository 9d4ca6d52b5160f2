#include "desktop/window/ShortcutsDialog.h"

#include <QGridLayout>
#include <QKeySequence>
#include <QVBoxLayout>

#include "app/screens/window/Shortcuts.h"
#include "desktop/look/QtText.h"
#include "desktop/parts/ElidedLabel.h"

namespace tolvane::desktop {

namespace {

constexpr int margin = 24;
constexpr int columnGap = 24;

ElidedLabel* label(const Look& look, TextRole role, QColor Tokens::* colour, const QString& text) {
    auto* made = new ElidedLabel(look, role, colour);
    made->setText(text);
    made->setMinimumWidth(made->sizeHint().width());
    return made;
}

}  // namespace

ShortcutsDialog::ShortcutsDialog(const Look& look, QWidget* parent) : QDialog(parent) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(qtText(Shortcuts::title));
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(margin, margin, margin, margin);
    whole->setSizeConstraint(QLayout::SetFixedSize);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(columnGap);
    grid->setVerticalSpacing(Sizes::rowInset);
    whole->addLayout(grid);
    for (const auto& group : Shortcuts::groups) {
        if (grid->rowCount() > 1) grid->setRowMinimumHeight(grid->rowCount(), Sizes::gap);
        grid->addWidget(label(look, TextRole::section, &Tokens::text, qtText(group.title)), grid->rowCount(), 0, 1, 2);
        for (const auto& each : group.shortcuts) {
            if (each.keys.empty()) continue;
            const auto keys = QKeySequence(qtText(each.keys)).toString(QKeySequence::NativeText);
            const int row = grid->rowCount();
            grid->addWidget(label(look, TextRole::small, &Tokens::text2, keys), row, 0);
            grid->addWidget(label(look, TextRole::body, &Tokens::text, qtText(each.action)), row, 1);
        }
    }
}

}  // namespace tolvane::desktop
