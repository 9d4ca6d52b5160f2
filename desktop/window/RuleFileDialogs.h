#pragma once

#include <QObject>
#include <QPointer>
#include <QPropertyNotifier>
#include <vector>

#include "app/model/AppModel.h"
#include "desktop/look/Look.h"

namespace tolvane::desktop {

/// File dialogs for rule files and the message after an import, opened over one window whenever the model asks for
/// them. None of them blocks.
class RuleFileDialogs : public QObject {
    Q_OBJECT

public:
    /// All arguments outlive it.
    RuleFileDialogs(AppModel& model, const Look& look, QWidget& window);

    /// A file name for the rules, with its extension; slashes in a rule's name are replaced.
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
