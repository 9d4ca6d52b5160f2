#pragma once

#include <QWidget>

#include "app/screens/settings/SettingsView.h"
#include "desktop/look/Look.h"

class QHBoxLayout;
class QPushButton;

namespace tolvane::desktop {

class PopupPicker;
class Switch;

/// One row of the settings: its label and explanation left, its control right.
class SettingsRowWidget : public QWidget {
    Q_OBJECT

public:
    SettingsRowWidget(const Look& look, const SettingsRow& row, QWidget* parent = nullptr);

    /// `row` must fit this widget (see `fits`); only its state is updated.
    void show(const SettingsRow& row);
    using QWidget::show;
    /// Whether the widget was made for a row of the same kind, control and texts.
    bool fits(const SettingsRow& row) const;

    Switch* toggle() const { return switch_; }
    QPushButton* button() const { return button_; }
    PopupPicker* picker() const { return picker_; }

signals:
    void switched(bool on);
    void pressed();
    void chosen(int choice);

private:
    void addWords(QHBoxLayout& line);
    QWidget* makeControl();

    const Look& look_;
    SettingsRow row_;
    Switch* switch_ = nullptr;
    QPushButton* button_ = nullptr;
    PopupPicker* picker_ = nullptr;
};

}  // namespace tolvane::desktop
