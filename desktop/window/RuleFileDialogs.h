#pragma once

#include <QObject>
#include <QPointer>
#include <QPropertyNotifier>
#include <vector>

#include "app/model/AppModel.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// The dialogs in which rule files are chosen, and the message of an import, over one window, whenever the model asks
/// for them. None of them blocks.
class RuleFileDialogs : public QObject {
    Q_OBJECT

public:
    /// All outlive it.
    RuleFileDialogs(AppModel& model, const Look& look, QWidget& window);

    /// The name of a file for rules, with its extension; a slash in a rule's name parts no folders.
    static QString fileName(const std::vector<Rule>& rules);

private:
    void showImportDialog();
    void showExportDialog();
    void showMessage();
    void saveTo(const QString& path);

    AppModel& model_;
    const Look& look_;
    QWidget& window_;
    QPointer<QObject> importDialog_;
    QPointer<QObject> exportDialog_;
    QPointer<QObject> alert_;
    std::vector<QPropertyNotifier> notifiers_;
};

}  // namespace tolvane::desktop
