#include "desktop/processes/SystemStripBar.h"

#include <QBoxLayout>
#include <QPainter>
#include <QResizeEvent>

#include "desktop/look/QtText.h"

namespace tolvane::desktop {

namespace {

constexpr int stackedBelow = 560;
constexpr int halvesGap = 32;
constexpr int top = 13, bottom = 14;

}  // namespace

SystemStripBar::SystemStripBar(const Look& look, QWidget* parent)
    : QScrollArea(parent),
      look_(look),
      content_(new QWidget),
      memory_(new MemoryBlock(look)),
      cpu_(new CPUBlock(look)),
      history_(new LinkButton(look, {})) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);

    auto* left = new QVBoxLayout;
    left->setSpacing(Sizes::gap);
    left->addWidget(memory_, 1);
    left->addWidget(history_);
    halves_ = new QBoxLayout(QBoxLayout::LeftToRight, content_);
    halves_->setContentsMargins(Sizes::margin, top, Sizes::margin, bottom);
    halves_->setSpacing(halvesGap);
    halves_->addLayout(left, 1);
    halves_->addWidget(cpu_, 1);
    setWidget(content_);
    content_->setAutoFillBackground(false);
    content_->installEventFilter(this);
    connect(history_, &QAbstractButton::clicked, this, &SystemStripBar::historyWanted);
}

void SystemStripBar::show(const SystemStrip& strip) {
    memory_->show(strip.memory);
    cpu_->show(strip.cpu);
    history_->setText(qtText(strip.showHistory));
    history_->setToolTip(qtText(strip.showHistoryTooltip));
    history_->setAccessibleName(qtText(strip.showHistory));
}

int SystemStripBar::wholeHeight() const {
    const int width = viewport()->width();
    return halves_->hasHeightForWidth() ? halves_->totalHeightForWidth(width) : halves_->totalSizeHint().height();
}

/// Layouts report a change before they apply it.
bool SystemStripBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == content_ && event->type() == QEvent::LayoutRequest) {
        QMetaObject::invokeMethod(this, &SystemStripBar::heightChanged, Qt::QueuedConnection);
    }
    return QScrollArea::eventFilter(watched, event);
}

void SystemStripBar::resizeEvent(QResizeEvent* event) {
    const bool stacked = event->size().width() < stackedBelow;
    halves_->setDirection(stacked ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    halves_->setSpacing(stacked ? Sizes::inspectorMargin : halvesGap);
    QScrollArea::resizeEvent(event);
}

void SystemStripBar::paintEvent(QPaintEvent* event) {
    QScrollArea::paintEvent(event);
    QPainter painter(viewport());
    painter.fillRect(0, 0, viewport()->width(), 1, look_.tokens().hairline);
}

}  // namespace tolvane::desktop
