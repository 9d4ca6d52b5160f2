#include "desktop/rules/RulesPage.h"

#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QShowEvent>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

#include "app/screens/rules/RulesView.h"
#include "app/screens/window/MainView.h"
#include "desktop/look/MenuText.h"
#include "desktop/look/QtText.h"
#include "desktop/parts/EmptyState.h"
#include "desktop/parts/HairlineSplitter.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/QuestionDialog.h"
#include "desktop/rules/NewRuleDialog.h"

namespace tolvane::desktop {

namespace {

const auto panesKey = QStringLiteral("rules/panes");
constexpr int listWidth = 308;
constexpr int detailLeast = 400;

/// The background behind the list and the sentence below it.
class ListGround : public QWidget {
public:
    explicit ListGround(const Look& look) : look_(look) {}

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), look_.tokens().content); }

private:
    const Look& look_;
};

}  // namespace

RulesPage::RulesPage(AppModel& model, const Look& look, WindowState& state, std::string locale, QWidget* parent)
    : Page(parent),
      model_(model),
      look_(look),
      state_(state),
      locale_(std::move(locale)),
      add_(new QPushButton(qtText(RulesView::addRule), this)),
      share_(new MenuButton(look, RulesView::shareIcon, qtText(RulesView::shareRules), this)),
      panes_(new HairlineSplitter(Qt::Horizontal, this)),
      list_(new RuleList(look)),
      notice_(new ParagraphLabel(look, TextRole::caption, &Tokens::text2)),
      detail_(new QStackedWidget),
      editor_(new RuleEditorPane(model, look, locale_)) {
    editor_->setObjectName(QStringLiteral("editor"));
    buildControls();
    buildPanes();
    connectControls();
    follow(model_.snapshot, model_.rules, model_.selectedRule, model_.memoryTight);
}

RulesPage::~RulesPage() = default;

std::vector<QWidget*> RulesPage::controls() { return {add_, share_}; }

void RulesPage::buildControls() {
    add_->setIcon(look_.icons().get(RulesView::addIcon));
    const int icon = look_.fonts().scaled(Sizes::icon);
    add_->setIconSize({icon, icon});
    add_->setAutoDefault(false);
    add_->setToolTip(QKeySequence(QKeySequence::New).toString(QKeySequence::NativeText));
    for (auto* control : controls()) control->hide();
}

QWidget* RulesPage::buildList() {
    auto* pane = new ListGround(look_);
    pane->setMinimumWidth(list_->minimumWidth());
    pane->setMaximumWidth(list_->maximumWidth());
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(list_, 1);
    auto* margins = new QVBoxLayout;
    margins->setContentsMargins(Sizes::inspectorMargin, 0, Sizes::inspectorMargin, Sizes::wideGap);
    margins->addWidget(notice_);
    column->addLayout(margins);
    return pane;
}

QWidget* RulesPage::buildDetail() {
    auto* nothing = new EmptyState(look_, RulesView::noSelectionIcon, qtText(RulesView::noSelectionTitle),
                                   qtText(RulesView::noSelectionText));
    auto* add = new QPushButton(qtText(RulesView::addRule));
    add->setAutoDefault(false);
    nothing->setButton(add);
    connect(add, &QPushButton::clicked, this, &RulesPage::openSheet);
    detail_->addWidget(nothing);
    detail_->addWidget(editor_);
    detail_->setMinimumWidth(detailLeast);
    return detail_;
}

void RulesPage::buildPanes() {
    panes_->addWidget(buildList());
    panes_->addWidget(buildDetail());
    panes_->setStretchFactor(0, 0);
    panes_->setStretchFactor(1, 1);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(panes_);
    const int side = look_.fonts().scaled(listWidth);
    if (!panes_->restoreState(state_.bytes(panesKey))) {
        panes_->setSizes({side, Sizes::windowWidth - Sizes::sidebarWidth - side});
    }
    panes_->setHandleWidth(1);
}

void RulesPage::connectControls() {
    connect(add_, &QPushButton::clicked, this, &RulesPage::openSheet);
    connect(new QShortcut(QKeySequence::New, this), &QShortcut::activated, this, &RulesPage::openSheet);
    connect(share_, &MenuButton::opening, this, [this](QMenu* menu) { fillShareMenu(*menu); });
    connect(list_, &RuleList::chosen, this, [this] { model_.selectRule(list_->current()); });
    connect(list_, &RuleList::menuWanted, this, &RulesPage::openRowMenu);
    connect(list_, &RuleList::deleteWanted, this, &RulesPage::askToDelete);
    connect(panes_, &QSplitter::splitterMoved, this, [this] { state_.set(panesKey, panes_->saveState()); });
}

void RulesPage::draw() {
    const auto* rule = RulesView::selected(model_);
    const auto selected = rule ? std::optional(rule->id) : std::nullopt;
    editor_->open(selected);
    editor_->refresh();
    list_->show(RulesView::rows(model_, locale_), selected);
    detail_->setCurrentIndex(selected ? 1 : 0);
    const auto notice = RulesView::notice(model_);
    notice_->setVisible(notice.has_value());
    notice_->setText(qtText(notice.value_or("")));
}

void RulesPage::openSheet() {
    if (addingRule()) return;
    auto* dialog = new NewRuleDialog(model_, look_, locale_, TargetKind::app, window());
    sheet_ = dialog;
    dialog->open();
}

void RulesPage::fillShareMenu(QMenu& menu) {
    auto* import = menu.addAction(menuText(qtText(MainView::importRules)), this, [this] { model_.askImport(); });
    import->setShortcut(QKeySequence::Open);
    auto* all =
        menu.addAction(menuText(qtText(MainView::exportRules)), this, [this] { model_.askExport(*model_.rules); });
    all->setShortcut(QKeySequence::Save);
    all->setEnabled(MainView::canExport(*model_.rules));
}

/// The menu's target is fixed when it opens.
void RulesPage::openRowMenu(QPoint place) {
    const auto rule = list_->current();
    if (!rule) return;
    QMenu menu(this);
    const auto* exportIt = menu.addAction(menuText(qtText(RulesView::exportRow)));
    const auto* deleteIt = menu.addAction(menuText(qtText(RulesView::deleteRow)));
    const auto* chosen = menu.exec(place);
    if (chosen == exportIt) model_.askExport(RulesView::rulesOf(model_, {*rule}));
    if (chosen == deleteIt) model_.deleteRules({*rule});
}

/// Asks first: unlike a menu entry, a key is easily hit by accident.
void RulesPage::askToDelete() {
    const auto* rule = RulesView::selected(model_);
    if (!rule) return;
    const auto* question = QuestionDialog::ask(look_, RulesView::deleteQuestion(*rule), this);
    connect(question, &QDialog::accepted, this, [this, id = rule->id] { model_.deleteRules({id}); });
}

}  // namespace tolvane::desktop
