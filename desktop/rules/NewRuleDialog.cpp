#include "desktop/rules/NewRuleDialog.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/screens/rules/RuleEditor.h"
#include "desktop/look/QtText.h"
#include "desktop/look/StyleControls.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/parts/ParagraphLabel.h"
#include "desktop/parts/SegmentedPicker.h"
#include "desktop/parts/Switch.h"
#include "desktop/rules/RuleSuggestionModel.h"

namespace tolvane::desktop {

namespace {

constexpr int sheetWidth = 520;
constexpr int margin = 20;
constexpr int listHeight = 230;
/// The rule's name contains the typed pattern, which may be long.
constexpr int mostLines = 3, usualLines = 2;

std::vector<QString> kindTitles() {
    std::vector<QString> titles;
    titles.reserve(targetKinds.size());
    for (const auto& each : targetKinds) titles.push_back(qtText(each.title));
    return titles;
}

/// Draws the background and edge of the list.
class ListFrame : public QWidget {
public:
    explicit ListFrame(const Look& look) : look_(look) {}

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        StyleControls::drawShape(painter, rect(), Sizes::cardRadius, look_.tokens().content, look_.tokens().border);
    }

private:
    const Look& look_;
};

}  // namespace

NewRuleDialog::NewRuleDialog(AppModel& model, const Look& look, const std::string& locale, TargetKind kind,
                             QWidget* parent)
    : QDialog(parent), model_(model), look_(look), sheet_(model, locale, kind) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setWindowTitle(qtText(NewRuleSheet::title));
    buildControls();
    buildForm();
    connectControls();
    showKind();
    ticks_ = model_.snapshot.onChange([this] { showSuggestions(); });
    list_->setFocus();
}

NewRuleDialog::~NewRuleDialog() = default;

void NewRuleDialog::buildControls() {
    kind_ = new SegmentedPicker(look_, qtText(NewRuleSheet::watchLabel), kindTitles());
    kind_->fillWidth();
    kind_->setChoice(static_cast<int>(sheet_.kind));
    list_ = new QListView;
    list_->setObjectName(QStringLiteral("suggestions"));
    suggestions_ = new RuleSuggestionModel(list_);
    list_->setModel(suggestions_);
    list_->setItemDelegate(new SuggestionDelegate(look_, *suggestions_, list_));
    list_->setFrameShape(QFrame::NoFrame);
    list_->setUniformItemSizes(true);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->viewport()->setAutoFillBackground(false);
    list_->setMouseTracking(true);
    nothing_ = new ParagraphLabel(look_, TextRole::body, &Tokens::text2);
    nothing_->setText(qtText(NewRuleSheet::noSessions));
    typed_ = new QLineEdit;
    typed_->setFont(look_.fonts().font(TextRole::body));
    typed_->setPlaceholderText(qtText(NewRuleSheet::typedPrompt));
    typed_->setAccessibleName(qtText(NewRuleSheet::typedPrompt));
    withoutPrompt_ = new Switch(look_, qtText(RuleEditor::withoutPromptLabel));
    line_ = new ParagraphLabel(look_, TextRole::small, &Tokens::text2);
    line_->setMostLines(mostLines);
    // Reserves the usual lines, so that the buttons below do not move when something is chosen.
    line_->setMinimumHeight(usualLines * look_.fonts().lineHeight(TextRole::small));
    cancel_ = new QPushButton(qtText(NewRuleSheet::cancel));
    cancel_->setAutoDefault(false);
    add_ = new QPushButton(qtText(NewRuleSheet::addRule));
    add_->setDefault(true);
}

void NewRuleDialog::buildForm() {
    const auto label = [this](std::string_view text, TextRole role) {
        auto* made = new ElidedLabel(look_, role, &Tokens::text);
        made->setText(qtText(text));
        return made;
    };
    auto* watch = new QHBoxLayout;
    watch->setSpacing(Sizes::wideGap);
    watch->addWidget(label(NewRuleSheet::watchLabel, TextRole::body));
    watch->addWidget(kind_, 1);
    auto* frame = new ListFrame(look_);
    frame->setFixedHeight(look_.fonts().scaled(listHeight));
    auto* inside = new QVBoxLayout(frame);
    inside->setContentsMargins(1, Sizes::step + 1, 1, Sizes::step + 1);
    inside->addWidget(list_);
    noteRow_ = new QWidget;
    auto* note = new QVBoxLayout(noteRow_);
    note->setContentsMargins(Sizes::wideGap, Sizes::gap, Sizes::wideGap, Sizes::gap);
    note->addWidget(nothing_);
    note->addStretch(1);
    inside->addWidget(noteRow_);
    withoutPromptRow_ = new QWidget;
    auto* only = new QHBoxLayout(withoutPromptRow_);
    only->setContentsMargins(0, 0, 0, 0);
    only->addWidget(label(RuleEditor::withoutPromptLabel, TextRole::body), 1);
    only->addWidget(withoutPrompt_);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Sizes::wideGap);
    buttons->addStretch(1);
    buttons->addWidget(cancel_);
    buttons->addWidget(add_);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(Sizes::wideGap);
    column->addWidget(label(NewRuleSheet::title, TextRole::title));
    column->addSpacing(Sizes::step);
    column->addLayout(watch);
    column->addWidget(frame);
    column->addWidget(typed_);
    column->addWidget(withoutPromptRow_);
    column->addWidget(line_);
    column->addSpacing(Sizes::step);
    column->addLayout(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
    line_->setFixedWidth(look_.fonts().scaled(sheetWidth) - 2 * margin);
}

void NewRuleDialog::connectControls() {
    connect(kind_, &SegmentedPicker::chosen, this, [this](int index) {
        sheet_.kind = targetKinds[static_cast<std::size_t>(index)].kind;
        showKind();
    });
    connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (showing_) return;
        const auto selected = list_->selectionModel()->selectedIndexes();
        sheet_.selection =
            selected.isEmpty() ? std::nullopt : std::optional(suggestions_->row(selected.first().row()).id);
        showLine();
    });
    connect(list_, &QAbstractItemView::doubleClicked, this, &NewRuleDialog::add);
    connect(typed_, &QLineEdit::textChanged, this, [this](const QString& text) {
        sheet_.typed = utf8(text);
        showLine();
    });
    connect(withoutPrompt_, &QAbstractButton::toggled, this, [this](bool on) {
        sheet_.onlyWithoutPrompt = on;
        showSuggestions();
    });
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    connect(add_, &QPushButton::clicked, this, &NewRuleDialog::add);
}

void NewRuleDialog::showKind() {
    typed_->setVisible(sheet_.kind == TargetKind::command);
    withoutPromptRow_->setVisible(sheet_.kind == TargetKind::agent && RuleEditor::offersWithoutPrompt(model_));
    list_->setAccessibleName(qtText(targetKinds[static_cast<std::size_t>(sheet_.kind)].title));
    // Sessions are shown but cannot be chosen: the rule applies to all of them.
    list_->setSelectionMode(sheet_.kind == TargetKind::agent ? QAbstractItemView::NoSelection
                                                             : QAbstractItemView::SingleSelection);
    showSuggestions();
}

void NewRuleDialog::showSuggestions() {
    showing_ = true;
    suggestions_->show(sheet_.suggestions());
    const auto wanted = sheet_.selection ? suggestions_->find(*sheet_.selection) : QModelIndex();
    if (wanted.isValid() && sheet_.kind != TargetKind::agent) {
        list_->setCurrentIndex(wanted);
    } else {
        list_->selectionModel()->clear();
    }
    showing_ = false;
    const bool nobody = sheet_.kind == TargetKind::agent && suggestions_->rowCount() == 0;
    noteRow_->setVisible(nobody);
    list_->setVisible(!nobody);
    showLine();
}

void NewRuleDialog::showLine() {
    line_->setText(qtText(sheet_.line()));
    add_->setEnabled(sheet_.rule().has_value());
}

void NewRuleDialog::add() {
    if (!sheet_.rule()) return;
    sheet_.add();
    accept();
}

}  // namespace tolvane::desktop
