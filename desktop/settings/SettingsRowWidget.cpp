#include "desktop/settings/SettingsRowWidget.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/look/QtText.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/PopupPicker.h"
#include "desktop/parts/Switch.h"

namespace tolvane::desktop {

namespace {

constexpr int side = 12;
constexpr int air = 10;
constexpr int leastHeight = 40;

ParagraphLabel* paragraph(const Look& look, TextRole role, QColor Tokens::* colour, const std::string& text) {
    auto* label = new ParagraphLabel(look, role, colour);
    label->setText(qtText(text));
    return label;
}

}  // namespace

SettingsRowWidget::SettingsRowWidget(const Look& look, const SettingsRow& row, QWidget* parent)
    : QWidget(parent), look_(look), row_(row) {
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(side, air, side, air);
    line->setSpacing(Sizes::wideGap * 2);
    if (!row.label.empty()) addWords(*line);
    if (auto* control = makeControl()) line->addWidget(control, 0, Qt::AlignVCenter);
    if (row.label.empty()) line->addStretch(1);
    setMinimumHeight(look.fonts().height(TextRole::body, leastHeight, 2 * air));
    show(row);
}

void SettingsRowWidget::addWords(QHBoxLayout& line) {
    auto* column = new QVBoxLayout;
    column->setSpacing(1);
    column->addStretch(1);
    const bool isError = row_.kind == SettingsRow::Kind::error;
    column->addWidget(paragraph(look_, isError ? TextRole::small : TextRole::body,
                                isError ? &Tokens::redText : &Tokens::text, row_.label));
    if (!row_.explanation.empty()) {
        column->addWidget(paragraph(look_, TextRole::caption, &Tokens::text2, row_.explanation));
    }
    column->addStretch(1);
    line.addLayout(column, 1);
}

QWidget* SettingsRowWidget::makeControl() {
    const auto name = qtText(row_.label);
    switch (row_.kind) {
        case SettingsRow::Kind::toggle:
            switch_ = new Switch(look_, name);
            switch_->setAccessibleDescription(qtText(row_.explanation));
            connect(switch_, &QCheckBox::toggled, this, &SettingsRowWidget::switched);
            return switch_;
        case SettingsRow::Kind::picker:
            picker_ = new PopupPicker(look_, name);
            picker_->setAccessibleDescription(qtText(row_.explanation));
            connect(picker_, &QComboBox::activated, this, &SettingsRowWidget::chosen);
            return picker_;
        case SettingsRow::Kind::button:
        case SettingsRow::Kind::labelledButton:
            button_ = new QPushButton(qtText(row_.button));
            button_->setAutoDefault(false);
            connect(button_, &QPushButton::clicked, this, &SettingsRowWidget::pressed);
            return button_;
        case SettingsRow::Kind::error:
            break;
    }
    return nullptr;
}

bool SettingsRowWidget::fits(const SettingsRow& row) const {
    return row.kind == row_.kind && row.control == row_.control && row.label == row_.label && row.button == row_.button;
}

void SettingsRowWidget::show(const SettingsRow& row) {
    row_ = row;
    if (switch_) {
        const QSignalBlocker quiet(switch_);
        switch_->setChecked(row.isOn);
        switch_->setEnabled(row.isEnabled);
    }
    if (button_) button_->setEnabled(row.isEnabled);
    if (picker_) {
        QStringList choices;
        for (const auto& each : row.choices) choices << qtText(each);
        picker_->show(choices, row.choice ? static_cast<int>(*row.choice) : -1);
    }
}

}  // namespace tolvane::desktop
