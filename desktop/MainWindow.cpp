#include "desktop/MainWindow.h"

#include <QCloseEvent>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/screens/MainView.h"
#include "desktop/Words.h"
#include "desktop/parts/HairlineSplitter.h"

namespace tolvane::desktop {

namespace {

const auto geometryKey = QStringLiteral("main/geometry");
const auto panesKey = QStringLiteral("main/panes");

}  // namespace

MainWindow::MainWindow(AppModel& model, const Look& look, WindowState& state, std::vector<Screen> screens)
    : model_(model),
      look_(look),
      state_(state),
      screens_(std::move(screens)),
      splitter_(new HairlineSplitter(Qt::Horizontal, this)),
      sidebar_(new Sidebar(look)),
      toolbar_(new Toolbar(look)),
      stack_(new QStackedWidget) {
    for (const auto& screen : screens_) present_.push_back(screen.section);
    setObjectName(QStringLiteral("main"));
    setWindowTitle(words(MainView::title));
    setMinimumSize(Sizes::windowLeastWidth, Sizes::windowLeastHeight);
    buildPanes();
    restoreLayout();
    connectModel();
    showSidebar();
    showSection(*model_.section);
}

MainWindow::~MainWindow() { saveLayout(); }

void MainWindow::buildPanes() {
    auto* screen = new QWidget;
    auto* column = new QVBoxLayout(screen);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(toolbar_);
    column->addWidget(stack_, 1);
    splitter_->setHandleWidth(0);
    splitter_->addWidget(sidebar_);
    splitter_->addWidget(screen);
    splitter_->setStretchFactor(0, 0);
    splitter_->setStretchFactor(1, 1);
    setCentralWidget(splitter_);
}

void MainWindow::connectModel() {
    connect(sidebar_, &Sidebar::chosen, this, [this](AppSection section) { model_.section.set(section); });
    notifiers_.push_back(model_.section.onChange([this] {
        showSidebar();
        showSection(*model_.section);
    }));
    notifiers_.push_back(model_.suggestions.onChange([this] { showSidebar(); }));
    notifiers_.push_back(model_.hiddenSuggestions.onChange([this] { showSidebar(); }));
    notifiers_.push_back(model_.rules.onChange([this] { showSidebar(); }));
    notifiers_.push_back(model_.windowRequest.onChange([this] { bringForward(); }));
}

void MainWindow::showSidebar() { sidebar_->show(MainView::sidebar(model_, present_), *model_.section); }

Page* MainWindow::page(AppSection section) {
    if (const auto found = pages_.find(section); found != pages_.end()) return found->second;
    const auto screen = std::ranges::find(screens_, section, &Screen::section);
    if (screen == screens_.end()) return nullptr;
    auto* made = screen->make(stack_);
    stack_->addWidget(made);
    connect(made, &Page::subtitleChanged, this, [this, made] {
        if (made == shown_) toolbar_->setSubtitle(made->subtitle());
    });
    return pages_.emplace(section, made).first->second;
}

/// A section whose screen does not exist leaves the one that is shown.
void MainWindow::showSection(AppSection section) {
    auto* shown = page(section);
    if (!shown || shown == shown_) return;
    shown_ = shown;
    stack_->setCurrentWidget(shown);
    toolbar_->show(words(traits(section).title), shown->controls());
    toolbar_->setSubtitle(shown->subtitle());
}

void MainWindow::restoreLayout() {
    resize(Sizes::windowWidth, Sizes::windowHeight);
    restoreGeometry(state_.bytes(geometryKey));
    const int side = std::min(look_.fonts().scaled(Sizes::sidebarWidth), Sizes::sidebarMost);
    if (!splitter_->restoreState(state_.bytes(panesKey))) splitter_->setSizes({side, Sizes::windowWidth - side});
    splitter_->setHandleWidth(0);
}

void MainWindow::saveLayout() {
    state_.set(geometryKey, saveGeometry());
    state_.set(panesKey, splitter_->saveState());
}

void MainWindow::bringForward() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    saveLayout();
    QMainWindow::closeEvent(event);
}

/// Selections grow paler in a window without focus, which the toolkit does not redraw by itself.
void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange) update();
}

}  // namespace tolvane::desktop
