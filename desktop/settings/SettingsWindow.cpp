#include "desktop/settings/SettingsWindow.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/look/QtText.h"
#include "desktop/parts/Card.h"
#include "desktop/parts/Measured.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/QuestionDialog.h"
#include "desktop/settings/SettingsRowWidget.h"

namespace tolvane::desktop {

namespace {

constexpr int margin = 20;
constexpr int sectionGap = 20;

}  // namespace

SettingsWindow::SettingsWindow(AppModel& model, const Look& look)
    : model_(model), look_(look), view_(model), scroll_(new QScrollArea), content_(new QWidget) {
    setObjectName(QStringLiteral("settings"));
    setWindowTitle(qtText(SettingsView::title));
    setWindowFlag(Qt::Dialog);
    setAttribute(Qt::WA_QuitOnClose, false);
    build();
    connectModel();
    refresh();
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), this), &QShortcut::activated, this, &QWidget::close);
}

void SettingsWindow::build() {
    auto* column = new QVBoxLayout(content_);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(0);
    const auto count = view_.sections().size();
    for (std::size_t section = 0; section < count; ++section) {
        if (section > 0) column->addSpacing(sectionGap);
        auto* footer = new ParagraphLabel(look_, TextRole::caption, &Tokens::text2);
        auto* below = new QWidget;
        auto* room = new QVBoxLayout(below);
        room->setContentsMargins(0, Sizes::gap, 0, 0);
        room->addWidget(footer);
        sections_.push_back({.card = new Card(look_), .footer = footer, .below = below});
        column->addWidget(sections_.back().card);
        column->addWidget(below);
    }
    column->addStretch(1);
    scroll_->setWidget(content_);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->viewport()->setAutoFillBackground(false);
    content_->setAutoFillBackground(false);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(scroll_);
}

void SettingsWindow::connectModel() {
    notifiers_.push_back(model_.backupToSyncFolder.onChange([this] { refresh(); }));
    notifiers_.push_back(model_.backupError.onChange([this] { refresh(); }));
}

void SettingsWindow::refresh() {
    const auto sections = view_.sections();
    for (std::size_t section = 0; section < sections_.size(); ++section) {
        showSection(sections_[section], sections[section]);
    }
    if (isVisible()) fit();
}

/// Rows seldom come or go, so everything from the first different row on is rebuilt.
void SettingsWindow::showSection(const Section& shown, const SettingsSection& section) {
    const auto& present = shown.card->rows();
    std::size_t same = 0;
    while (same < present.size() && same < section.rows.size() &&
           static_cast<SettingsRowWidget*>(present[same])->fits(section.rows[same])) {
        static_cast<SettingsRowWidget*>(present[same])->show(section.rows[same]);
        ++same;
    }
    shown.card->keepRows(same);
    for (; same < section.rows.size(); ++same) {
        auto* row = makeRow(section.rows[same]);
        shown.card->addRow(row);
        /// Shown at once, so that it can be measured before the next turn of the event loop.
        row->show();
    }
    shown.footer->setText(qtText(section.footer));
    shown.below->setVisible(!section.footer.empty());
}

SettingsRowWidget* SettingsWindow::makeRow(const SettingsRow& row) {
    auto* made = new SettingsRowWidget(look_, row);
    const auto control = row.control;
    connect(made, &SettingsRowWidget::switched, this, [this, control](bool on) { setOn(control, on); });
    /// Queued: the handler may delete the row whose button is still emitting.
    connect(made, &SettingsRowWidget::pressed, this, [this, control] { press(control); }, Qt::QueuedConnection);
    connect(made, &SettingsRowWidget::chosen, this,
            [this, control](int choice) { view_.choose(control, static_cast<std::size_t>(choice)); });
    return made;
}

void SettingsWindow::setOn(SettingsControl control, bool on) {
    view_.setOn(control, on);
    if (control == SettingsControl::showTrayIcon) emit trayIconWanted(on);
    QMetaObject::invokeMethod(this, &SettingsWindow::refresh, Qt::QueuedConnection);
}

void SettingsWindow::press(SettingsControl control) {
    view_.press(control);
    const auto question = view_.restoreQuestion();
    if (!question) return;
    auto* dialog = QuestionDialog::ask(look_, *question, this);
    connect(dialog, &QDialog::accepted, this, [this] { view_.confirmRestore(); });
    connect(dialog, &QDialog::rejected, this, [this] { view_.cancelRestore(); });
}

/// As high as its contents, limited by the screen.
void SettingsWindow::fit() {
    const int wide = look_.fonts().scaled(SettingsView::width);
    setFixedWidth(wide);
    const int needed = heightAt(*content_, wide);
    content_->setFixedSize(wide, needed);
    constexpr int frame = 60;
    const auto* screen = QWidget::screen();
    const int most = screen ? screen->availableGeometry().height() - frame : needed;
    setFixedHeight(std::min(needed, most));
}

SettingsRowWidget* SettingsWindow::row(SettingsControl control) const {
    const auto sections = view_.sections();
    for (std::size_t section = 0; section < sections_.size(); ++section) {
        const auto& rows = sections[section].rows;
        const auto found = std::ranges::find(rows, control, &SettingsRow::control);
        const auto place = static_cast<std::size_t>(found - rows.begin());
        const auto& shown = sections_[section].card->rows();
        if (found != rows.end() && place < shown.size()) return static_cast<SettingsRowWidget*>(shown[place]);
    }
    return nullptr;
}

QString SettingsWindow::footer(std::size_t section) const { return sections_[section].footer->accessibleName(); }

void SettingsWindow::bringForward() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void SettingsWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    view_.appear();
    refresh();
}

void SettingsWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace tolvane::desktop
