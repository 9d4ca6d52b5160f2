#pragma once

#include <QObject>
#include <QPointer>
#include <QPropertyNotifier>
#include <vector>

#include "app/model/AppModel.h"
#include "desktop/look/Look.h"

class QFileDialog;

namespace tolvane::desktop {

class AlertDialog;

/// The panels in which rule files are chosen, and the message of an import, over one window, whenever the model asks
/// for them. None of them blocks.
class RuleFileDialogs : public QObject {
    Q_OBJECT

public:
    /// All outlive it.
    RuleFileDialogs(AppModel& model, const Look& look, QWidget& window);

    /// Null while it is not open.
    QFileDialog* importPanel() const;
    QFileDialog* exportPanel() const;
    AlertDialog* alert() const;

    /// The name of a file for rules, with its extension; a slash in a rule's name parts no folders.
    static QString fileName(const std::vector<Rule>& rules);

private:
    void showImportPanel();
    void showExportPanel();
    void showMessage();
    void saveTo(const QString& path);

    AppModel& model_;
    const Look& look_;
    QWidget& window_;
    QPointer<QObject> importPanel_;
    QPointer<QObject> exportPanel_;
    QPointer<QObject> alert_;
    std::vector<QPropertyNotifier> notifiers_;
};

}  // namespace tolvane::desktop
