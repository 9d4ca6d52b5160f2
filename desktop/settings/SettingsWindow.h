#pragma once

#include <QPropertyNotifier>
#include <QWidget>
#include <vector>

#include "app/screens/settings/SettingsView.h"
#include "desktop/look/Look.h"

class QScrollArea;

namespace tolvane::desktop {

class Card;
class ParagraphLabel;
class SettingsRowWidget;

/// The settings in a window of their own. Every change applies at once; Escape closes it.
class SettingsWindow : public QWidget {
    Q_OBJECT

public:
    /// Both outlive the window.
    SettingsWindow(AppModel& model, const Look& look);

    /// Opens the window, or raises it.
    void bringForward();
    /// The row of a control; null while it is not shown.
    SettingsRowWidget* row(SettingsControl control) const;
    QString footer(std::size_t section) const;

signals:
    /// The user switched the tray icon on or off.
    void trayIconWanted(bool wanted);

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Section {
        Card* card = nullptr;
        ParagraphLabel* footer = nullptr;
        /// The footer with the space above it.
        QWidget* below = nullptr;
    };

    void build();
    void connectModel();
    void refresh();
    void showSection(const Section& shown, const SettingsSection& section);
    SettingsRowWidget* makeRow(const SettingsRow& row);
    void setOn(SettingsControl control, bool on);
    void press(SettingsControl control);
    void fit();

    AppModel& model_;
    const Look& look_;
    SettingsView view_;
    QScrollArea* scroll_;
    QWidget* content_;
    std::vector<Section> sections_;
    std::vector<QPropertyNotifier> notifiers_;
};

}  // namespace tolvane::desktop
