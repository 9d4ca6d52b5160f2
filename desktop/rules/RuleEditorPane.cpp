#include "desktop/rules/RuleEditorPane.h"

#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/screens/rules/MatchesSection.h"
#include "app/screens/rules/RuleModeTraits.h"
#include "app/screens/rules/RuleStatus.h"
#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"
#include "desktop/parts/Card.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/PopupPicker.h"
#include "desktop/parts/SegmentedPicker.h"
#include "desktop/parts/Switch.h"
#include "desktop/rules/FormRow.h"
#include "desktop/rules/MatchesCard.h"

namespace tolvane::desktop {

namespace {

constexpr int widest = 900;
constexpr int leading = 21;
constexpr int above = 17;
constexpr int cardGap = 13;
constexpr int headingGap = 22;

std::vector<QString> modeTitles() {
    std::vector<QString> titles;
    titles.reserve(ruleModes.size());
    for (const auto& each : ruleModes) titles.push_back(qtText(each.title));
    return titles;
}

QStringList kindTitles() {
    QStringList titles;
    for (const auto& each : targetKinds) titles.append(qtText(each.title));
    return titles;
}

/// Shows the text unless the user is editing the field.
void showText(QLineEdit& field, std::string_view text) {
    if (field.hasFocus() || field.text() == qtText(text)) return;
    field.setText(qtText(text));
    field.setCursorPosition(0);
}

void showChoices(PopupPicker& picker, const std::vector<RuleConditions::Choice>& choices,
                 std::optional<std::int64_t> value) {
    QStringList titles;
    for (const auto& each : choices) titles.append(qtText(each.title));
    const auto chosen = std::ranges::find(choices, value, &RuleConditions::Choice::value);
    picker.show(titles, static_cast<int>(chosen - choices.begin()));
}

void showSwitch(Switch& button, bool on) {
    const QSignalBlocker quiet(&button);
    button.setChecked(on);
}

QLineEdit* field(const Look& look, std::string_view name) {
    auto* made = new QLineEdit;
    made->setFont(look.fonts().font(TextRole::body));
    made->setAccessibleName(qtText(name));
    return made;
}

}  // namespace

RuleEditorPane::RuleEditorPane(AppModel& model, const Look& look, std::string locale, QWidget* parent)
    : QScrollArea(parent), model_(model), look_(look), locale_(std::move(locale)), form_(new QWidget) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    form_->setAutoFillBackground(false);
    buildControls();
    buildForm();
    setWidget(form_);
    connectControls();
}

RuleEditorPane::~RuleEditorPane() = default;

void RuleEditorPane::buildControls() {
    const auto picker = [this](std::string_view name) { return new PopupPicker(look_, qtText(name)); };
    name_ = field(look_, RuleEditor::nameLabel);
    mode_ = new SegmentedPicker(look_, qtText(RuleEditor::modeLabel), modeTitles());
    kind_ = picker(RuleEditor::targetLabel);
    app_ = picker(RuleEditor::appLabel);
    command_ = field(look_, RuleEditor::commandLabel);
    command_->setPlaceholderText(qtText(RuleEditor::commandPrompt));
    agents_ = field(look_, RuleEditor::agentLabel);
    withoutPrompt_ = new Switch(look_, qtText(RuleEditor::withoutPromptLabel));
    unused_ = picker(RuleEditor::unusedLabel);
    memory_ = picker(RuleEditor::memoryLabel);
    tight_ = new Switch(look_, qtText(RuleEditor::tightLabel));
    footer_ = new ParagraphLabel(look_, TextRole::caption, &Tokens::text2);
    action_ = picker(RuleEditor::actionLabel);
    matches_ = new MatchesCard(look_);
    delete_ = new QPushButton(qtText(RuleEditor::deleteRule));
    delete_->setProperty("destructive", true);
    delete_->setAutoDefault(false);
}

QWidget* RuleEditorPane::heading(std::string_view text) {
    auto* label = new ElidedLabel(look_, TextRole::section, &Tokens::text);
    label->setText(qtText(text));
    return label;
}

void RuleEditorPane::buildForm() {
    const auto row = [this](std::string_view label, QWidget* control, FormRow::Fit fit = FormRow::Fit::own) {
        return new FormRow(look_, qtText(label), control, fit);
    };
    const auto card = [this](std::initializer_list<FormRow*> rows) {
        auto* made = new Card(look_);
        for (auto* each : rows) made->addRow(each);
        return made;
    };
    modeRow_ = row(RuleEditor::modeLabel, mode_);
    appRow_ = row(RuleEditor::appLabel, app_);
    commandRow_ = row(RuleEditor::commandLabel, command_, FormRow::Fit::wide);
    agentsRow_ = row(RuleEditor::agentLabel, agents_, FormRow::Fit::wide);
    withoutPromptRow_ = row(RuleEditor::withoutPromptLabel, withoutPrompt_);
    appRow_->setHint(qtText(RuleEditor::appHint));
    commandRow_->setHint(qtText(RuleEditor::commandHint));
    agentsRow_->setHint(qtText(RuleEditor::agentHint));

    auto* column = new QVBoxLayout(form_);
    column->setContentsMargins(mirrored(layoutDirection(), {leading, above, Sizes::margin, Sizes::margin}));
    column->setSpacing(0);
    const auto add = [column](QWidget* part, int before) {
        column->addSpacing(before);
        column->addWidget(part);
    };
    add(card({row(RuleEditor::nameLabel, name_, FormRow::Fit::wide), modeRow_}), 0);
    add(card({row(RuleEditor::targetLabel, kind_), appRow_, commandRow_, agentsRow_, withoutPromptRow_}), cardGap);
    add(heading(RuleEditor::conditionsHeading), headingGap - Sizes::step);
    add(card({row(RuleEditor::unusedLabel, unused_), row(RuleEditor::memoryLabel, memory_),
              row(RuleEditor::tightLabel, tight_)}),
        Sizes::gap);
    add(footer_, Sizes::gap);
    add(card({row(RuleEditor::actionLabel, action_)}), cardGap);
    add(heading(MatchesSection::heading), headingGap);
    add(matches_, Sizes::gap);
    column->addSpacing(headingGap);
    column->addWidget(delete_, 0, Qt::AlignLeft);
    column->addStretch(1);
}

void RuleEditorPane::connectControls() {
    connect(name_, &QLineEdit::textEdited, this, [this](const QString& text) { editor_->setName(utf8(text)); });
    connect(mode_, &SegmentedPicker::chosen, this, [this](int index) {
        if (editor_) editor_->setMode(ruleModes[static_cast<std::size_t>(index)].mode);
    });
    connect(kind_, &QComboBox::activated, this,
            [this](int index) { editor_->setKind(targetKinds[static_cast<std::size_t>(index)].kind); });
    connect(app_, &QComboBox::activated, this, [this](int index) {
        if (std::cmp_less(index, shownApps_.size())) editor_->setApp(shownApps_[static_cast<std::size_t>(index)].appID);
    });
    for (auto* each : {command_, agents_}) {
        connect(each, &QLineEdit::textEdited, this, [this](const QString& text) { editor_->setPatterns(utf8(text)); });
        connect(each, &QLineEdit::editingFinished, this, &RuleEditorPane::keepTyped);
    }
    connect(withoutPrompt_, &QAbstractButton::toggled, this, [this](bool on) { editor_->setOnlyWithoutPrompt(on); });
    connect(unused_, &QComboBox::activated, this, [this](int index) {
        editor_->setUnusedMinutes(editor_->unusedChoices()[static_cast<std::size_t>(index)].value);
    });
    connect(memory_, &QComboBox::activated, this, [this](int index) {
        editor_->setMemoryMB(editor_->memoryChoices()[static_cast<std::size_t>(index)].value);
    });
    connect(tight_, &QAbstractButton::toggled, this, [this](bool on) { editor_->setOnlyWhenTight(on); });
    connect(action_, &QComboBox::activated, this,
            [this](int index) { editor_->setAction(actionsFor(editor_->kind())[static_cast<std::size_t>(index)]); });
    connect(delete_, &QPushButton::clicked, this, [this] { editor_->deleteIt(); });
}

void RuleEditorPane::open(const std::optional<UUID>& rule) {
    const bool same = rule && editor_ && editor_->id() == *rule;
    if (same || (!rule && !editor_)) return;
    keepTyped();
    // An open menu belongs to the previous rule.
    for (auto* each : {kind_, app_, unused_, memory_, action_}) each->hidePopup();
    editor_ = rule ? std::make_unique<RuleEditor>(model_, *rule, locale_) : nullptr;
    for (auto* each : {name_, command_, agents_}) each->clearFocus();
    verticalScrollBar()->setValue(0);
    refresh();
}

/// Saves typed text when the user leaves a field, also by choosing another rule.
void RuleEditorPane::keepTyped() {
    if (!editor_) return;
    editor_->savePatterns();
    refresh();
}

void RuleEditorPane::refresh() {
    const auto* rule = editor_ ? editor_->rule() : nullptr;
    if (!rule) return;
    showText(*name_, rule->name);
    mode_->setChoice(static_cast<int>(rule->mode()));
    modeRow_->setHint(qtText(traits(rule->mode()).explanation));
    showTarget(*rule);
    showConditions(*rule);
    showAction(*rule);
    const auto now = model_.snapshot->date;
    const auto status = RuleStatus::of(*rule, model_.world(), now);
    auto matches = MatchesSection::of(status, now, locale_);
    matches.addLastOutcomes(*rule, status, *model_.activity, now, locale_);
    matches_->show(matches);
}

void RuleEditorPane::showTarget(const Rule& rule) {
    const auto kind = kindOf(rule.target);
    kind_->show(kindTitles(), static_cast<int>(kind));
    appRow_->setVisible(kind == TargetKind::app);
    commandRow_->setVisible(kind == TargetKind::command);
    agentsRow_->setVisible(kind == TargetKind::agent);
    withoutPromptRow_->setVisible(kind == TargetKind::agent && RuleEditor::offersWithoutPrompt(model_));
    showText(*command_, editor_->patterns());
    showText(*agents_, editor_->patterns());
    showSwitch(*withoutPrompt_, editor_->onlyWithoutPrompt());
    const auto* target = std::get_if<AppTarget>(&rule.target);
    if (!target || app_->isOpen()) return;
    shownApps_ = editor_->appChoices();
    QStringList titles;
    for (const auto& each : shownApps_) titles.append(qtText(each.title));
    const auto chosen = std::ranges::find(shownApps_, target->appID, &RuleEditor::AppChoice::appID);
    app_->show(titles, static_cast<int>(chosen - shownApps_.begin()));
}

void RuleEditorPane::showConditions(const Rule& rule) {
    showChoices(*unused_, editor_->unusedChoices(), rule.unusedMinutes);
    showChoices(*memory_, editor_->memoryChoices(), rule.memoryMB);
    showSwitch(*tight_, rule.onlyWhenTight.value_or(false));
    footer_->setText(qtText(editor_->footer()));
}

void RuleEditorPane::showAction(const Rule& rule) {
    const auto offered = actionsFor(kindOf(rule.target));
    QStringList titles;
    for (const auto action : offered) titles.append(qtText(RuleActions::title(action)));
    const auto chosen = std::ranges::find(offered, rule.action);
    action_->show(titles, chosen == offered.end() ? -1 : static_cast<int>(chosen - offered.begin()));
}

/// On a wide window the form is limited to a readable width.
void RuleEditorPane::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    const int spare = std::max(0, viewport()->width() - look_.fonts().scaled(widest));
    form_->layout()->setContentsMargins(
        mirrored(layoutDirection(), {leading, above, std::max(Sizes::margin, spare), Sizes::margin}));
}

}  // namespace tolvane::desktop
