#include "desktop/window/RuleFileDialogs.h"

#include <QFileDialog>
#include <QStandardPaths>

#include "app/screens/window/MainView.h"
#include "core/rules/RuleFile.h"
#include "core/rules/RulesDocument.h"
#include "desktop/look/QtText.h"
#include "desktop/parts/AlertDialog.h"

namespace tolvane::desktop {

namespace {

QString extension() { return qtText(RuleFile::fileExtension); }

QFileDialog* panel(QWidget& window, std::string_view title) {
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
    notifiers_.push_back(model_.importing.onChange([this] { showImportPanel(); }));
    notifiers_.push_back(model_.exporting.onChange([this] { showExportPanel(); }));
    notifiers_.push_back(model_.importMessage.onChange([this] { showMessage(); }));
    showMessage();
}

QFileDialog* RuleFileDialogs::importPanel() const { return qobject_cast<QFileDialog*>(importPanel_); }

QFileDialog* RuleFileDialogs::exportPanel() const { return qobject_cast<QFileDialog*>(exportPanel_); }

AlertDialog* RuleFileDialogs::alert() const { return qobject_cast<AlertDialog*>(alert_); }

void RuleFileDialogs::showImportPanel() {
    if (!*model_.importing || importPanel_) return;
    auto* open = panel(window_, MainView::importRules);
    importPanel_ = open;
    open->setFileMode(QFileDialog::ExistingFiles);
    connect(open, &QFileDialog::filesSelected, this, [this](const QStringList& paths) {
        for (const auto& path : paths) model_.importRules(utf8(path));
    });
    connect(open, &QDialog::finished, this, [this] {
        importPanel_ = nullptr;
        model_.endImport();
    });
    open->open();
}

QString RuleFileDialogs::fileName(const std::vector<Rule>& rules) {
    return qtText(MainView::exportName(rules)).replace(QLatin1Char('/'), QLatin1Char('-')) + QLatin1Char('.') +
           extension();
}

void RuleFileDialogs::showExportPanel() {
    if (!*model_.exporting || exportPanel_) return;
    auto* save = panel(window_, MainView::exportRules);
    exportPanel_ = save;
    save->setAcceptMode(QFileDialog::AcceptSave);
    save->setDefaultSuffix(extension());
    save->selectFile(fileName(**model_.exporting));
    connect(save, &QFileDialog::fileSelected, this, &RuleFileDialogs::saveTo);
    connect(save, &QDialog::finished, this, [this] {
        exportPanel_ = nullptr;
        model_.endExport();
    });
    save->open();
}

/// The panel itself says nothing of a disk that does not take the file.
void RuleFileDialogs::saveTo(const QString& path) {
    if (!*model_.exporting) return;
    const auto failure = RulesDocument{**model_.exporting}.write(utf8(path));
    if (failure) (new AlertDialog(look_, qtText(*failure), qtText(MainView::dismiss), &window_))->open();
}

void RuleFileDialogs::showMessage() {
    if (auto* shown = alert()) {
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
