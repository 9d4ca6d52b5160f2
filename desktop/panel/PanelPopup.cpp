#include "desktop/panel/PanelPopup.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <utility>

#include "app/screens/window/MainView.h"
#include "desktop/look/QtText.h"
#include "desktop/panel/PanelPlace.h"

namespace tolvane::desktop {

namespace {

constexpr int border = 1;
/// In milliseconds: longer than the icon takes to report a press, shorter than the interval between two deliberate
/// clicks.
constexpr int sameClick = 250;

/// Wayland has no free popups, so there the panel is a plain window that closes when it loses the focus.
Qt::WindowFlags flags() {
    const bool wayland = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    return (wayland ? Qt::Tool : Qt::Popup) | Qt::FramelessWindowHint;
}

QRect availableAt(QPoint point) {
    const auto* screen = QGuiApplication::screenAt(point);
    if (!screen) screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(0, 0, Sizes::windowWidth, Sizes::windowHeight);
}

}  // namespace

PanelPopup::PanelPopup(AppModel& model, const Look& look, std::string locale)
    : QWidget(nullptr, flags()),
      model_(model),
      look_(look),
      locale_(std::move(locale)),
      view_(new PanelContents(look, this)) {
    setObjectName(QStringLiteral("panel"));
    setWindowTitle(qtText(MainView::title));
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(border, border, border, border);
    whole->setSizeConstraint(QLayout::SetFixedSize);
    whole->addWidget(view_);
    connectView();
    connectModel();
}

void PanelPopup::connectView() {
    connect(view_, &PanelContents::openWanted, this, [this] {
        hide();
        PanelView::openMainWindow(model_);
    });
    connect(view_, &PanelContents::suggestionsWanted, this, [this] {
        hide();
        PanelView::openSuggestions(model_);
    });
    connect(view_, &PanelContents::pauseWanted, this, [this](bool paused) { model_.pauseRules(paused); });
    connect(view_, &PanelContents::settingsWanted, this, [this] {
        hide();
        emit settingsWanted();
    });
    connect(view_, &PanelContents::quitWanted, this, &PanelPopup::quitWanted);
}

void PanelPopup::connectModel() {
    redraw_.follow(model_.snapshot, model_.loadHistory, model_.swapGrowth, model_.readBack, model_.suggestions,
                   model_.hiddenSuggestions, model_.activity, model_.rulesPaused);
}

void PanelPopup::toggle(QRect icon) {
    if (isVisible()) return hide();
    if (closed_.isValid() && closed_.elapsed() < sameClick) return;
    openAt(icon);
}

void PanelPopup::openAt(QRect icon) {
    icon_ = icon;
    pointer_ = QCursor::pos();
    redraw_.now();
    show();
    raise();
    activateWindow();
    view_->openButton().setFocus(Qt::OtherFocusReason);
}

void PanelPopup::draw() {
    view_->show(PanelView::of(model_, locale_));
    if (isVisible()) place();
}

void PanelPopup::place() {
    const auto available = availableAt(icon_.isValid() ? icon_.center() : pointer_);
    view_->fit(look_.fonts().scaled(PanelView::width) - 2 * border, available.height() - 2 * border - Sizes::gap);
    layout()->activate();
    const QSize whole = view_->size() + QSize(2 * border, 2 * border);
    move(panelPlace(whole, icon_, pointer_, available).topLeft());
}

void PanelPopup::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), look_.tokens().border);
    painter.fillRect(rect().adjusted(border, border, -border, -border), look_.tokens().window);
}

void PanelPopup::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            return hide();
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return view_->openButton().click();
        default:
            QWidget::keyPressEvent(event);
    }
}

void PanelPopup::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && windowType() == Qt::Tool && !isActiveWindow()) hide();
}

/// The panel is placed before the window is mapped.
void PanelPopup::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    place();
}

void PanelPopup::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    closed_.start();
}

}  // namespace tolvane::desktop
