#include "desktop/SettingsRowView.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/Words.h"
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
    label->setText(words(text));
    return label;
}

}  // namespace

SettingsRowView::SettingsRowView(const Look& look, const SettingsRow& row, QWidget* parent)
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

void SettingsRowView::addWords(QHBoxLayout& line) {
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

QWidget* SettingsRowView::makeControl() {
    const auto name = words(row_.label);
    switch (row_.kind) {
        case SettingsRow::Kind::toggle:
            switch_ = new Switch(look_, name);
            switch_->setAccessibleDescription(words(row_.explanation));
            connect(switch_, &QCheckBox::toggled, this, &SettingsRowView::switched);
            return switch_;
        case SettingsRow::Kind::picker:
            picker_ = new PopupPicker(look_, name);
            picker_->setAccessibleDescription(words(row_.explanation));
            connect(picker_, &QComboBox::activated, this, &SettingsRowView::chosen);
            return picker_;
        case SettingsRow::Kind::button:
        case SettingsRow::Kind::labelledButton:
            button_ = new QPushButton(words(row_.button));
            button_->setAutoDefault(false);
            connect(button_, &QPushButton::clicked, this, &SettingsRowView::pressed);
            return button_;
        case SettingsRow::Kind::error:
            break;
    }
    return nullptr;
}

bool SettingsRowView::fits(const SettingsRow& row) const {
    return row.kind == row_.kind && row.control == row_.control && row.label == row_.label && row.button == row_.button;
}

void SettingsRowView::show(const SettingsRow& row) {
    row_ = row;
    if (switch_) {
        const QSignalBlocker quiet(switch_);
        switch_->setChecked(row.isOn);
        switch_->setEnabled(row.isEnabled);
    }
    if (button_) button_->setEnabled(row.isEnabled);
    if (picker_) {
        QStringList choices;
        for (const auto& each : row.choices) choices << words(each);
        picker_->show(choices, row.choice ? static_cast<int>(*row.choice) : -1);
    }
}

}  // namespace tolvane::desktop
