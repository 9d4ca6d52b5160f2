#include "desktop/projects/ProjectsPage.h"

#include <QMenu>
#include <QPushButton>
#include <QStackedLayout>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/look/MenuText.h"
#include "desktop/look/QtText.h"
#include "desktop/parts/EmptyState.h"
#include "desktop/parts/QuestionDialog.h"

namespace tolvane::desktop {

namespace {

constexpr int sectionGap = 24;

ParagraphLabel* paragraph(const Look& look, TextRole role, QColor Tokens::* colour, std::string_view text = {}) {
    auto* label = new ParagraphLabel(look, role, colour);
    label->setText(qtText(text));
    // The label's height depends on its width, which is not known at first.
    auto policy = label->sizePolicy();
    policy.setVerticalPolicy(QSizePolicy::Preferred);
    label->setSizePolicy(policy);
    return label;
}

/// The row's place in the present order; new projects go to the end.
std::size_t placeIn(const std::vector<ProjectRow>& rows, const std::string& root) {
    const auto found = std::ranges::find(rows, root, [](const ProjectRow& row) { return row.project.root; });
    return static_cast<std::size_t>(found - rows.begin());
}

}  // namespace

ProjectsPage::ProjectsPage(AppModel& model, const Look& look, std::string locale, std::string zone, QWidget* parent)
    : Page(parent),
      look_(look),
      view_(model, std::move(locale), std::move(zone)),
      panes_(new QStackedLayout(this)),
      empty_(new EmptyState(look, ProjectsView::empty.icon, qtText(ProjectsView::empty.title),
                            qtText(ProjectsView::empty.sentence))),
      scroll_(new ScrolledColumn(look, Sizes::margin - Sizes::gap, sectionGap)) {
    empty_->setObjectName(QStringLiteral("empty"));
    buildColumn();
    panes_->addWidget(scroll_);
    panes_->addWidget(empty_);
    follow(model.snapshot, model.servicePIDs, model.containers, model.branches, model.ports, model.parked);
}

void ProjectsPage::buildColumn() {
    auto* sections = &scroll_->blocks();
    running_ = buildSection(ProjectsView::runningTitle);
    parked_ = buildSection(ProjectsView::parkedTitle);
    parked_.footer->setText(qtText(ProjectsView::parkedFooter));
    for (auto* section : {running_.whole, parked_.whole}) sections->addWidget(section);
    sections->addStretch(1);
}

ProjectsPage::Section ProjectsPage::buildSection(std::string_view title) {
    Section section{
        .whole = new QWidget, .card = new Card(look_), .footer = paragraph(look_, TextRole::caption, &Tokens::text2)};
    auto* column = new QVBoxLayout(section.whole);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Sizes::gap);
    column->addWidget(paragraph(look_, TextRole::section, &Tokens::text, title));
    column->addWidget(section.card);
    column->addWidget(section.footer);
    section.card->setAccessibleName(qtText(title));
    return section;
}

QWidget* ProjectsPage::firstFocus() {
    if (!shown_.running.empty()) return &runningRow(0).parkButton();
    if (!shown_.parked.empty()) return &parkedRow(0).startButton();
    return this;
}

QString ProjectsPage::subtitle() const { return qtText(shown_.subtitle); }

ProjectRowPane& ProjectsPage::runningRow(std::size_t index) const {
    return dynamic_cast<ProjectRowPane&>(*running_.card->rows().at(index));
}

ParkedRowPane& ProjectsPage::parkedRow(std::size_t index) const {
    return dynamic_cast<ParkedRowPane&>(*parked_.card->rows().at(index));
}

void ProjectsPage::draw() {
    auto content = view_.content();
    keepOrder(content.running);
    const auto subtitleBefore = std::exchange(shown_, std::move(content)).subtitle;
    panes_->setCurrentWidget(shown_.isEmpty() ? static_cast<QWidget*>(empty_) : scroll_);
    showRunning();
    showParked();
    if (shown_.subtitle != subtitleBefore) emit subtitleChanged();
}

/// Keep the order while the pointer or the focus is here, so that no button moves away under a click.
void ProjectsPage::keepOrder(std::vector<ProjectRow>& rows) const {
    const auto* focused = window()->focusWidget();
    if (!running_.card->underMouse() && !(focused && running_.card->isAncestorOf(focused))) return;
    std::ranges::stable_sort(rows, {},
                             [this](const ProjectRow& row) { return placeIn(shown_.running, row.project.root); });
}

void ProjectsPage::showRunning() {
    const auto& rows = shown_.running;
    running_.whole->setVisible(!rows.empty());
    running_.card->keepRows(rows.size());
    while (running_.card->rows().size() < rows.size()) addRunningRow();
    for (std::size_t index = 0; index < rows.size(); ++index) runningRow(index).show(rows[index]);
    running_.footer->setText(qtText(shown_.runningFooter));
    running_.footer->setVisible(!shown_.runningFooter.empty());
}

void ProjectsPage::showParked() {
    const auto& rows = shown_.parked;
    parked_.whole->setVisible(!rows.empty());
    parked_.card->keepRows(rows.size());
    while (parked_.card->rows().size() < rows.size()) addParkedRow();
    for (std::size_t index = 0; index < rows.size(); ++index) parkedRow(index).show(rows[index]);
}

void ProjectsPage::addRunningRow() {
    auto* row = new ProjectRowPane(look_);
    connect(row, &ProjectRowPane::parkWanted, this, [this, row] { askToPark(row->row().project); });
    connect(row, &ProjectRowPane::menuWanted, this, [this, row](QPoint place) { openRunningMenu(row->row(), place); });
    running_.card->addRow(row);
}

void ProjectsPage::addParkedRow() {
    auto* row = new ParkedRowPane(look_);
    connect(row, &ParkedRowPane::startWanted, this, [this, row] { view_.startAgain(row->row().project); });
    connect(row, &ParkedRowPane::menuWanted, this, [this, row](QPoint place) { openParkedMenu(row->row(), place); });
    parked_.card->addRow(row);
}

void ProjectsPage::askToPark(const ProjectGroup& project) {
    view_.askPark(project);
    if (const auto question = view_.parkQuestion()) ask(*question, false);
}

void ProjectsPage::askToStop(const ProjectGroup& project) {
    view_.askStop(project);
    if (const auto question = view_.stopQuestion()) ask(*question, true);
}

void ProjectsPage::ask(const Question& question, bool destructive) {
    auto* dialog = QuestionDialog::ask(look_, question, window());
    dialog->action().setProperty("destructive", destructive);
    dialog->action().update();
    connect(dialog, &QDialog::accepted, this, [this] {
        view_.confirm();
        refreshLater();
    });
    connect(dialog, &QDialog::rejected, this, [this] { view_.cancel(); });
}

QMenu* ProjectsPage::newMenu() {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    return menu;
}

/// The menu's target is fixed when it opens.
void ProjectsPage::openRunningMenu(const ProjectRow& row, QPoint place) {
    const auto project = row.project;
    auto* menu = newMenu();
    auto* stop =
        menu->addAction(menuText(qtText(ProjectsView::stopLabel)), this, [this, project] { askToStop(project); });
    stop->setEnabled(!row.isEnding);
    menu->addAction(menuText(qtText(ProjectsView::revealLabel)), this, [this, project] { view_.showFolder(project); });
    menu->popup(place);
}

void ProjectsPage::openParkedMenu(const ParkedRow& row, QPoint place) {
    auto* menu = newMenu();
    const auto project = row.project;
    auto* log =
        menu->addAction(menuText(qtText(ProjectsView::logLabel)), this, [this, project] { view_.showLog(project); });
    log->setEnabled(row.hasLog);
    menu->addSeparator();
    menu->addAction(menuText(qtText(ProjectsView::forgetLabel)), this, [this, project] { view_.forget(project); });
    menu->popup(place);
}

void ProjectsPage::showEvent(QShowEvent* event) {
    view_.enter();
    Page::showEvent(event);
}

void ProjectsPage::hideEvent(QHideEvent* event) {
    Page::hideEvent(event);
    view_.leave();
}

}  // namespace tolvane::desktop
