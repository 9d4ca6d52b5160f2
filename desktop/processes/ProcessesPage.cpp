#include "desktop/processes/ProcessesPage.h"

#include <QShortcut>
#include <QShowEvent>
#include <QSplitter>
#include <QVBoxLayout>
#include <set>
#include <utility>

#include "app/screens/processes/ForceQuitQuestion.h"
#include "app/screens/processes/RowProcesses.h"
#include "desktop/look/QtText.h"
#include "desktop/parts/HairlineSplitter.h"
#include "desktop/parts/QuestionDialog.h"
#include "desktop/processes/RowMenu.h"

namespace tolvane::desktop {

namespace {

const auto panesKey = QStringLiteral("processes/panes");
const auto columnsKey = QStringLiteral("processes/columns");
const auto inspectorKey = QStringLiteral("processes/inspector");

std::vector<QString> groupingLabels() {
    std::vector<QString> labels;
    labels.reserve(groupings.size());
    for (const auto& each : groupings) labels.push_back(qtText(each.label));
    return labels;
}

int columnOf(RowField field) {
    for (std::size_t number = 0; number < processColumns.size(); ++number) {
        if (processColumns[number].sortsBy == field) return static_cast<int>(number);
    }
    return -1;
}

/// These columns hold dates but show durations, whose order is the reverse.
bool showsDates(RowField field) { return field == RowField::unusedSince || field == RowField::age; }

}  // namespace

ProcessesPage::ProcessesPage(AppModel& model, const Look& look, WindowState& state, std::string locale, QWidget* parent)
    : Page(parent),
      model_(model),
      look_(look),
      state_(state),
      view_(model, std::move(locale)),
      group_(new SegmentedPicker(look, qtText(ProcessesView::groupLabel), groupingLabels(), this)),
      search_(new SearchField(look, qtText(ProcessesView::searchPrompt), this)),
      inspectorToggle_(new IconButton(look, ProcessesView::inspectorIcon, qtText(ProcessesView::inspectorLabel), this)),
      tree_(new ProcessTable(look,
                             [this](const TableRow& line, ProcessColumn column) { return view_.cell(line, column); })),
      strip_(new SystemStripBar(look)),
      panes_(new HairlineSplitter(Qt::Horizontal, this)),
      notice_(new NoticeBar(look)),
      inspector_(new InspectorPane(look, view_.locale())),
      inspected_(model, view_.locale(), [this] { showInspector(); }),
      acts_(model, [this](const Outcome& outcome) { notice_->tell(qtText(outcome.sentence())); }) {
    search_->setObjectName(QStringLiteral("search"));
    buildControls();
    buildPanes();
    restoreLayout();
    connectControls();
    connectModel();
    showSorting();
    tree_->setSelectedIds(*model_.selectedRows);
}

ProcessesPage::~ProcessesPage() {
    if (kept_) *kept_ = {.order = view_.sortOrder(), .disclosedIds = tree_->disclosedIds()};
}

void ProcessesPage::keepArrangement(std::shared_ptr<TableArrangement> kept) {
    kept_ = std::move(kept);
    if (kept_->order.empty()) return;
    view_.setSortOrder(kept_->order);
    tree_->setDisclosedIds(kept_->disclosedIds);
    showSorting();
}

std::vector<QWidget*> ProcessesPage::controls() { return {group_, search_, inspectorToggle_}; }

void ProcessesPage::buildControls() {
    group_->setChoice(static_cast<int>(view_.grouping()));
    inspectorToggle_->setCheckable(true);
    for (auto* control : controls()) control->hide();
}

void ProcessesPage::buildPanes() {
    auto* left = new QWidget;
    auto* column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(notice_);
    column->addWidget(tree_, 1);
    column->addWidget(strip_);
    panes_->addWidget(left);
    panes_->addWidget(inspector_);
    panes_->setStretchFactor(0, 1);
    panes_->setStretchFactor(1, 0);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(panes_);
}

void ProcessesPage::connectControls() {
    connect(group_, &SegmentedPicker::chosen, this, [this](int index) {
        view_.setGrouping(groupings[static_cast<std::size_t>(index)].grouping);
        refresh();
    });
    connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
        view_.setSearch(utf8(text));
        refresh();
    });
    connect(search_, &SearchField::left, tree_, [this] { tree_->setFocus(Qt::ShortcutFocusReason); });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, search_, [this] {
        search_->setFocus(Qt::ShortcutFocusReason);
        search_->selectAll();
    });
    connect(inspectorToggle_, &QToolButton::toggled, this, [this](bool on) {
        view_.showInspector = on;
        inspector_->setVisible(on);
        showInspector();
        state_.set(inspectorKey, on);
    });
    connect(panes_, &QSplitter::splitterMoved, this, [this] { state_.set(panesKey, panes_->saveState()); });
    connect(tree_, &ProcessTable::headClicked, this, &ProcessesPage::sortByColumn);
    connect(tree_, &ProcessTable::columnWidthsChanged, this, [this] { state_.set(columnsKey, tree_->columnWidths()); });
    connect(tree_, &ProcessTable::selectedIdsChanged, this, [this] { model_.selectRows(tree_->selectedIds()); });
    // The command line distinguishes processes of the same name.
    tree_->setRemark([this](const TableRow& line) {
        const auto* row = RowProcesses::own(line, model_.snapshot->rows);
        return row ? row->sample.commandLine() : std::string();
    });
    tree_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tree_, &QWidget::customContextMenuRequested, this, &ProcessesPage::openMenu);
    connect(new QShortcut(QKeySequence::Delete, tree_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, [this] { askForceQuit(shownSelection()); });
    // Few keyboards have a menu key.
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F10, tree_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, [this] { openMenu(tree_->visualRect(tree_->currentIndex()).center()); });
    connect(inspector_, &InspectorPane::actionWanted, this, &ProcessesPage::carryOut);
    connect(strip_, &SystemStripBar::heightChanged, this, &ProcessesPage::fitStrip);
    connect(strip_, &SystemStripBar::historyWanted, this, [this] { model_.show(AppSection::history); });
}

void ProcessesPage::connectModel() {
    follow(model_.snapshot, model_.loadHistory, model_.swapGrowth, model_.readBack, model_.lowered);
    selection_ = model_.selectedRows.onChange([this] {
        tree_->setSelectedIds(*model_.selectedRows);
        showInspector();
    });
}

void ProcessesPage::restoreLayout() {
    tree_->setColumnWidths(state_.text(columnsKey));
    view_.showInspector = state_.flag(inspectorKey, true);
    inspectorToggle_->setChecked(view_.showInspector);
    inspector_->setVisible(view_.showInspector);
    const int inspector = std::min(look_.fonts().scaled(Sizes::inspectorWidth), Sizes::inspectorMost);
    if (!panes_->restoreState(state_.bytes(panesKey))) {
        panes_->setSizes({Sizes::windowWidth - Sizes::sidebarWidth - inspector, inspector});
    }
    panes_->setHandleWidth(1);
}

void ProcessesPage::draw() {
    tree_->show(view_.rows());
    strip_->show(SystemStrip::of(model_, view_.locale()));
    fitStrip();
    showInspector();
}

/// The selected rows as the table shows them, even while it holds older ones.
std::vector<TableRow> ProcessesPage::shownSelection() const { return view_.selected(tree_->tableModel().lines()); }

void ProcessesPage::showInspector() {
    if (!view_.showInspector || !isVisible()) return;
    const auto selected = shownSelection();
    if (selected.empty()) {
        inspector_->showNothing();
    } else if (selected.size() > 1) {
        inspector_->show(SelectionInspector::of(selected, view_.locale()));
    } else {
        inspected_.show(selected.front());
        inspector_->show(inspected_.content());
    }
}

/// Rows are held while the menu is open, and its target is fixed when it opens.
void ProcessesPage::openMenu(QPoint position) {
    const auto clicked = shownSelection();
    const auto& rows = model_.snapshot->rows;
    const Actor actor{.pid = model_.selfPID(), .uid = model_.uid()};
    const auto items = ProcessActions::menuOf(clicked, rows, actor);
    if (items.empty()) return;
    const auto subject = ProcessActions::of(clicked.front(), rows);
    tree_->hold(true);
    const auto action = askMenu(items, tree_->viewport()->mapToGlobal(position), tree_);
    tree_->hold(false);
    if (action) chosen(*action, clicked, subject);
}

void ProcessesPage::chosen(ProcessAction action, const std::vector<TableRow>& clicked, const ProcessActions& subject) {
    switch (action) {
        case ProcessAction::copyCommand:
            model_.desktop().copyText(subject.command);
            break;
        case ProcessAction::showWorkingFolder:
            if (subject.workingFolder) model_.desktop().open(*subject.workingFolder);
            break;
        case ProcessAction::addRule:
            if (subject.rule) model_.addRule(*subject.rule);
            break;
        case ProcessAction::forceQuit:
            askForceQuit(clicked);
            break;
        case ProcessAction::quit:
        case ProcessAction::relaunch:
        case ProcessAction::terminate:
        case ProcessAction::lowerPriority:
        case ProcessAction::restorePriority:
            notice_->hide();
            acts_.perform(action, clicked.front());
            break;
    }
}

/// An action from the inspector, on the rows that it shows.
void ProcessesPage::carryOut(ProcessAction action) {
    const auto selected = shownSelection();
    if (!selected.empty()) chosen(action, selected, {});
}

/// The target is fixed when the question opens: a process that reuses a pid meanwhile is left alone.
void ProcessesPage::askForceQuit(const std::vector<TableRow>& lines) {
    std::set<std::string> ids;
    for (const auto& line : lines) ids.insert(line.id);
    view_.askForceQuit(ids, lines);
    const auto question = view_.forceQuitQuestion();
    if (!question) return;
    inspected_.confirmForceQuit = lines.size() == 1;
    auto* dialog =
        QuestionDialog::ask(look_, *question, window(), qtText(ForceQuitQuestion::extent(lines, view_.locale())));
    connect(dialog, &QDialog::finished, this, [this](int answer) {
        inspected_.confirmForceQuit = false;
        if (answer == QDialog::Accepted) {
            notice_->hide();
            acts_.forceQuit(view_.confirmForceQuit());
        } else {
            view_.cancelForceQuit();
        }
    });
}

void ProcessesPage::resizeEvent(QResizeEvent* event) {
    Page::resizeEvent(event);
    fitStrip();
}

/// The table gets at least half of the height; a strip that is too tall scrolls.
void ProcessesPage::fitStrip() { strip_->setFixedHeight(std::min(strip_->wholeHeight(), height() / 2)); }

void ProcessesPage::sortByColumn(int column) {
    view_.sortBy(*processColumns[static_cast<std::size_t>(column)].sortsBy);
    showSorting();
    refresh();
}

void ProcessesPage::showSorting() {
    const auto& order = view_.sortOrder();
    if (order.empty()) return;
    const auto& first = order.front();
    tree_->setSorting(columnOf(first.field), first.ascending != showsDates(first.field));
}

}  // namespace tolvane::desktop
