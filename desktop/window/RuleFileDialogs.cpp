#include "desktop/window/RuleFileDialogs.h"

#include <QFileDialog>
#include <QStandardPaths>

#include "app/screens/window/MainView.h"
#include "core/rules/RuleFile.h"
#include "core/rules/RulesDocument.h"
#include "desktop/look/QtText.h"
#include "desktop/window/AlertDialog.h"

namespace tolvane::desktop {

namespace {

QString extension() { return qtText(RuleFile::fileExtension); }

QFileDialog* fileDialog(QWidget& window, std::string_view title) {
    auto* made =
        new QFileDialog(&window, qtText(title), QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                        qtText(MainView::ruleFiles) + QStringLiteral(" (*.") + extension() + QLatin1Char(')'));
    made->setAttribute(Qt::WA_DeleteOnClose);
    made->setWindowModality(Qt::WindowModal);
    return made;
}

}  // namespace

RuleFileDialogs::RuleFileDialogs(AppModel& model, const Look& look, QWidget& window)
    : model_(model), look_(look), window_(window) {
    notifiers_.push_back(model_.importing.onChange([this] { showImportDialog(); }));
    notifiers_.push_back(model_.exporting.onChange([this] { showExportDialog(); }));
    notifiers_.push_back(model_.importMessage.onChange([this] { showMessage(); }));
    showMessage();
}

void RuleFileDialogs::showImportDialog() {
    if (!*model_.importing || importDialog_) return;
    auto* open = fileDialog(window_, MainView::importRules);
    importDialog_ = open;
    open->setFileMode(QFileDialog::ExistingFiles);
    connect(open, &QFileDialog::filesSelected, this, [this](const QStringList& paths) {
        for (const auto& path : paths) model_.importRules(utf8(path));
    });
    connect(open, &QDialog::finished, this, [this] {
        importDialog_ = nullptr;
        model_.endImport();
    });
    open->open();
}

QString RuleFileDialogs::fileName(const std::vector<Rule>& rules) {
    return qtText(MainView::exportName(rules)).replace(QLatin1Char('/'), QLatin1Char('-')) + QLatin1Char('.') +
           extension();
}

void RuleFileDialogs::showExportDialog() {
    if (!*model_.exporting || exportDialog_) return;
    auto* save = fileDialog(window_, MainView::exportRules);
    exportDialog_ = save;
    save->setAcceptMode(QFileDialog::AcceptSave);
    save->setDefaultSuffix(extension());
    save->selectFile(fileName(**model_.exporting));
    connect(save, &QFileDialog::fileSelected, this, &RuleFileDialogs::saveTo);
    connect(save, &QDialog::finished, this, [this] {
        exportDialog_ = nullptr;
        model_.endExport();
    });
    save->open();
}

/// The file dialog itself does not report a failed write.
void RuleFileDialogs::saveTo(const QString& path) {
    if (!*model_.exporting) return;
    const auto failure = RulesDocument{**model_.exporting}.write(utf8(path));
    if (failure) (new AlertDialog(look_, qtText(*failure), qtText(MainView::dismiss), &window_))->open();
}

void RuleFileDialogs::showMessage() {
    if (auto* shown = qobject_cast<AlertDialog*>(alert_)) {
        shown->disconnect(this);
        shown->close();
    }
    if (!*model_.importMessage) return;
    auto* message = new AlertDialog(look_, qtText(**model_.importMessage), qtText(MainView::dismiss), &window_);
    alert_ = message;
    connect(message, &QDialog::finished, this, [this] {
        alert_ = nullptr;
        model_.dismissImportMessage();
    });
    message->open();
}

}  // namespace tolvane::desktop
