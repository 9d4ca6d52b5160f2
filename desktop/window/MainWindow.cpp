#include "desktop/window/MainWindow.h"

#include <QCloseEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QShortcut>
#include <QStackedWidget>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/model/RuleFileArguments.h"
#include "app/screens/window/MainView.h"
#include "desktop/look/QtText.h"
#include "desktop/parts/HairlineSplitter.h"
#include "desktop/window/ShortcutsDialog.h"
#include "desktop/window/WindowMenu.h"

namespace tolvane::desktop {

namespace {

const auto geometryKey = QStringLiteral("main/geometry");
const auto panesKey = QStringLiteral("main/panes");

/// The sidebar's background below its list.
class SidebarColumn : public QWidget {
public:
    explicit SidebarColumn(const Look& look) : look_(look) {
        setMinimumWidth(Sizes::sidebarLeast);
        setMaximumWidth(Sizes::sidebarMost);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), look_.tokens().sidebar);
        const int edge = layoutDirection() == Qt::LeftToRight ? width() - 1 : 0;
        painter.fillRect(edge, 0, 1, height(), look_.tokens().hairline);
    }

private:
    const Look& look_;
};

std::vector<std::string> pathsOf(const QMimeData& dragged) {
    std::vector<std::string> paths;
    for (const auto& url : dragged.urls()) {
        if (url.isLocalFile()) paths.push_back(utf8(url.toLocalFile()));
    }
    return paths;
}

}  // namespace

MainWindow::MainWindow(AppModel& model, const Look& look, WindowState& state, std::vector<Screen> screens)
    : model_(model),
      look_(look),
      state_(state),
      screens_(std::move(screens)),
      splitter_(new HairlineSplitter(Qt::Horizontal, this)),
      sidebar_(new Sidebar(look)),
      menu_(new WindowMenu(model, look, this)),
      toolbar_(new Toolbar(look)),
      stack_(new QStackedWidget),
      ruleFiles_(model, look, *this) {
    for (const auto& screen : screens_) present_.push_back(screen.section);
    setObjectName(QStringLiteral("main"));
    setAcceptDrops(true);
    setWindowTitle(qtText(MainView::title));
    setMinimumSize(Sizes::windowLeastWidth, Sizes::windowLeastHeight);
    buildPanes();
    addShortcuts();
    restoreLayout();
    connectModel();
    showSidebar();
    showSection(*model_.section);
}

MainWindow::~MainWindow() { saveLayout(); }

QWidget* MainWindow::buildSidebarColumn() {
    auto* whole = new SidebarColumn(look_);
    auto* column = new QVBoxLayout(whole);
    column->setContentsMargins(0, 0, 0, Sizes::gap);
    column->setSpacing(Sizes::step);
    column->addWidget(sidebar_, 1);
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(Sizes::sidebarInset, 0, Sizes::sidebarInset, 0);
    foot->addWidget(&menu_->button());
    foot->addStretch(1);
    column->addLayout(foot);
    return whole;
}

void MainWindow::buildPanes() {
    auto* screen = new QWidget;
    auto* column = new QVBoxLayout(screen);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(toolbar_);
    column->addWidget(stack_, 1);
    splitter_->setHandleWidth(0);
    splitter_->addWidget(buildSidebarColumn());
    splitter_->addWidget(screen);
    splitter_->setStretchFactor(0, 0);
    splitter_->setStretchFactor(1, 1);
    setCentralWidget(splitter_);
}

/// Each section's shortcut is its number in the sidebar.
void MainWindow::addShortcuts() {
    int number = 0;
    for (const auto& group : MainView::sidebar(model_, present_)) {
        for (const auto& row : group.rows) {
            const QKeySequence keys(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + number++));
            connect(new QShortcut(keys, this), &QShortcut::activated, this,
                    [this, section = row.section] { model_.show(section); });
        }
    }
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), this), &QShortcut::activated, this, &QWidget::close);
    connect(menu_, &WindowMenu::settingsWanted, this, &MainWindow::settingsWanted);
    connect(menu_, &WindowMenu::quitWanted, this, &MainWindow::quitWanted);
    connect(menu_, &WindowMenu::shortcutsWanted, this, &MainWindow::showShortcuts);
}

void MainWindow::showShortcuts() { (new ShortcutsDialog(look_, this))->open(); }

void MainWindow::connectModel() {
    connect(sidebar_, &Sidebar::chosen, this, [this](AppSection section) { model_.show(section); });
    notifiers_.push_back(model_.section.onChange([this] {
        showSidebar();
        showSection(*model_.section);
    }));
    notifiers_.push_back(model_.suggestions.onChange([this] { showSidebar(); }));
    notifiers_.push_back(model_.hiddenSuggestions.onChange([this] { showSidebar(); }));
    notifiers_.push_back(model_.rules.onChange([this] { showSidebar(); }));
    // Snoozes expire when a sample is taken, even if the suggestions stay the same.
    notifiers_.push_back(model_.snapshot.onChange([this] { showSidebar(); }));
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

/// A section without a screen leaves the current one in place.
void MainWindow::showSection(AppSection section) {
    auto* shown = page(section);
    if (!shown || shown == shown_) return;
    shown_ = shown;
    stack_->setCurrentWidget(shown);
    toolbar_->show(qtText(traits(section).title), shown->controls());
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
    if (event->isAccepted()) emit closed();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!pathsOf(*event->mimeData()).empty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    RuleFileArguments::open(model_, pathsOf(*event->mimeData()), [this] {
        bringForward();
        return true;
    });
    event->acceptProposedAction();
}

/// Selections are paler in an inactive window, and the toolkit does not redraw them by itself.
void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ActivationChange) update();
}

}  // namespace tolvane::desktop
