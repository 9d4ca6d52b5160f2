#include "desktop/processes/InspectorPane.h"

#include <QGridLayout>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/screens/processes/ProcessesView.h"
#include "desktop/look/QtText.h"
#include "desktop/processes/SubjectHead.h"

namespace tolvane::desktop {

namespace {

constexpr int memoryHeight = 66, cpuHeight = 38;
constexpr int blockGap = 16;

/// Background of the buttons, with a line above it.
class Footer : public QWidget {
public:
    Footer(const Look& look, QWidget* parent) : QWidget(parent), look_(look) {}

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(0, 0, width(), 1, look_.tokens().hairline);
    }

private:
    const Look& look_;
};

/// Ctrl with the letter alone quits programs and finds text.
QKeySequence shortcut(char letter) { return {QStringLiteral("Ctrl+Shift+%1").arg(QLatin1Char(letter))}; }

/// A heading and the widgets below it, one gap below the previous block.
QWidget* block(std::initializer_list<QWidget*> parts) {
    auto* block = new QWidget;
    auto* column = new QVBoxLayout(block);
    column->setContentsMargins(0, blockGap - Sizes::gap - 2, 0, 0);
    column->setSpacing(Sizes::step);
    for (auto* part : parts) column->addWidget(part);
    return block;
}

/// Lowering and restoring the priority are two states of one button.
bool isSameButton(ProcessAction before, ProcessAction now) {
    const auto side = [](ProcessAction action) {
        return action == ProcessAction::restorePriority ? ProcessAction::lowerPriority : action;
    };
    return side(before) == side(now);
}

bool isDestructive(ProcessAction action) { return action == ProcessAction::forceQuit; }

}  // namespace

InspectorPane::InspectorPane(const Look& look, std::string locale, QWidget* parent)
    : QWidget(parent),
      look_(look),
      locale_(std::move(locale)),
      stack_(new QStackedWidget(this)),
      footer_(new Footer(look, this)),
      buttons_(new QGridLayout(footer_)) {
    setMinimumWidth(Sizes::inspectorLeast);
    setMaximumWidth(Sizes::inspectorMost);
    buttons_->setContentsMargins(Sizes::inspectorMargin, Sizes::wideGap + 1, Sizes::inspectorMargin,
                                 Sizes::wideGap + 2);
    buttons_->setSpacing(Sizes::gap);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(stack_, 1);
    column->addWidget(footer_);
    stack_->addWidget(new EmptyState(look, ProcessesView::noSelectionIcon, qtText(ProcessesView::noSelectionTitle),
                                     qtText(ProcessesView::noSelectionText)));
    stack_->addWidget(buildSubject());
    showNothing();
}

QWidget* InspectorPane::buildSubject() {
    const auto title = [this] { return new ElidedLabel(look_, TextRole::section, &Tokens::text); };
    head_ = new SubjectHead(look_);
    figures_ = new ValueRows(look_, Sizes::wideRowSpacing);
    memoryTitle_ = title();
    memoryChart_ = new LineChart(look_, locale_, memoryHeight);
    cpuTitle_ = title();
    cpuChart_ = new LineChart(look_, locale_, cpuHeight);
    processTitle_ = title();
    process_ = new ValueRows(look_, Sizes::wideRowSpacing);
    commandLabel_ = new ElidedLabel(look_, TextRole::small, &Tokens::text2);
    command_ = new CopyableText(look_);

    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(Sizes::inspectorMargin, Sizes::inspectorMargin - 2, Sizes::inspectorMargin,
                               Sizes::inspectorMargin);
    column->setSpacing(Sizes::gap + 2);
    column->addWidget(head_);
    column->addWidget(figures_);
    column->addSpacing(Sizes::step);
    memoryBlock_ = block({memoryTitle_, memoryChart_});
    cpuBlock_ = block({cpuTitle_, cpuChart_});
    for (auto* part : {memoryBlock_, cpuBlock_, block({processTitle_, process_, commandLabel_, command_})}) {
        column->addWidget(part);
    }
    column->addStretch();

    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(content);
    return scroll;
}

void InspectorPane::showNothing() {
    stack_->setCurrentIndex(0);
    showButtons({});
}

/// The command goes below the other rows, as selectable text.
void InspectorPane::showCommand(std::vector<ValueRow>& process) {
    const bool present = !process.empty();
    commandLabel_->setVisible(present);
    command_->setVisible(present);
    if (!present) return;
    commandLabel_->setText(qtText(process.back().label));
    command_->setText(qtText(process.back().value));
    command_->setAccessibleName(qtText(process.back().label));
    process.pop_back();
}

void InspectorPane::show(const InspectorContent& content) {
    head_->show(qtText(content.title), qtText(content.detail.value_or("")), content.appPath, true);
    figures_->show(content.figures);
    const auto showChart = [](const auto& chart, QWidget* whole, ElidedLabel* title, LineChart* widget) {
        whole->setVisible(chart.has_value());
        if (!chart) return;
        title->setText(qtText(chart->title));
        widget->show(*chart);
    };
    showChart(content.memoryChart, memoryBlock_, memoryTitle_, memoryChart_);
    showChart(content.cpuChart, cpuBlock_, cpuTitle_, cpuChart_);
    auto process = content.process;
    processTitle_->setText(qtText(content.processHeading));
    processTitle_->setVisible(!process.empty());
    process_->setVisible(!process.empty());
    showCommand(process);
    process_->show(std::move(process));
    showButtons(content.buttons);
    stack_->setCurrentIndex(1);
}

void InspectorPane::show(const SelectionInspector& selection) {
    head_->show(qtText(selection.title), {}, std::nullopt, false);
    figures_->show(selection.figures);
    for (auto* unused :
         std::initializer_list<QWidget*>{memoryBlock_, cpuBlock_, processTitle_, commandLabel_, command_}) {
        unused->hide();
    }
    process_->show(selection.lines);
    process_->setVisible(true);
    showButtons({selection.forceQuit});
    stack_->setCurrentIndex(1);
}

/// The action of the focused button, which keeps the focus when the buttons are rebuilt.
std::optional<ProcessAction> InspectorPane::focusedAction() const {
    for (int number = 0; number < buttons_->count(); ++number) {
        const auto* button = buttons_->itemAt(number)->widget();
        if (button->hasFocus()) return shownButtons_[static_cast<std::size_t>(number)].action;
    }
    return std::nullopt;
}

/// The last two buttons share a row, so that those that end a process stand together.
void InspectorPane::showButtons(const std::vector<InspectorButton>& buttons) {
    footer_->setVisible(!buttons.empty());
    if (buttons == shownButtons_) return;
    const auto held = focusedAction();
    shownButtons_ = buttons;
    while (auto* item = buttons_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const auto count = static_cast<int>(shownButtons_.size());
    for (int number = 0; number < count; ++number) {
        const auto& each = shownButtons_[static_cast<std::size_t>(number)];
        auto* button = new QPushButton(qtText(each.title));
        button->setToolTip(qtText(each.tooltip));
        button->setEnabled(each.enabled);
        button->setProperty("destructive", isDestructive(each.action));
        if (each.shortcut) button->setShortcut(shortcut(*each.shortcut));
        connect(button, &QPushButton::clicked, this, [this, action = each.action] { emit actionWanted(action); });
        const bool paired = number + 2 >= count && count > 1;
        buttons_->addWidget(button, std::min(number, std::max(0, count - 2)), paired && number + 1 == count ? 1 : 0, 1,
                            paired ? 1 : 2);
        if (held && isSameButton(*held, each.action)) button->setFocus(Qt::OtherFocusReason);
    }
}

}  // namespace tolvane::desktop
