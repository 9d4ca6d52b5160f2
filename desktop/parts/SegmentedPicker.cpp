#include "desktop/parts/SegmentedPicker.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QRadioButton>

#include "desktop/look/StyleControls.h"
#include "desktop/look/TextLine.h"

namespace tolvane::desktop {

namespace {

constexpr int segmentPadding = 13;
constexpr int trackInset = 2;

/// Behaves and reads as a radio button, looks like a segment.
class Segment : public QRadioButton {
public:
    Segment(const Look& look, const QString& text, QWidget* parent) : QRadioButton(text, parent), look_(look) {
        setProperty("focusRadius", Sizes::rowRadius);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
        setMouseTracking(true);
    }

    QSize sizeHint() const override {
        const QFontMetrics metrics(wideFont());
        return {metrics.horizontalAdvance(text()) + 2 * segmentPadding, metrics.height()};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
    void paintEvent(QPaintEvent*) override {
        const auto& tokens = look_.tokens();
        QPainter painter(this);
        if (isChecked()) StyleControls::drawShape(painter, rect(), Sizes::rowRadius, tokens.control, tokens.border);
        painter.setFont(isChecked() ? wideFont() : look_.fonts().font(TextRole::small));
        painter.setPen(!isEnabled() ? tokens.disabled : isChecked() || underMouse() ? tokens.text : tokens.text2);
        drawLine(painter, rect(), text(), Qt::AlignHCenter);
    }

private:
    /// Segments are measured in the weight they have when chosen, so that none moves.
    QFont wideFont() const { return look_.fonts().font(TextRole::small, QFont::Medium); }

    const Look& look_;
};

}  // namespace

SegmentedPicker::SegmentedPicker(const Look& look, const QString& name, const std::vector<QString>& choices,
                                 QWidget* parent)
    : QWidget(parent), look_(look), group_(new QButtonGroup(this)) {
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFixedHeight(look.fonts().height(TextRole::body, Sizes::buttonHeight));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(trackInset, trackInset, trackInset, trackInset);
    row->setSpacing(0);
    for (const auto& text : choices) {
        auto* segment = new Segment(look, text, this);
        group_->addButton(segment, static_cast<int>(group_->buttons().size()));
        row->addWidget(segment);
    }
    connect(group_, &QButtonGroup::idToggled, this, [this](int index, bool on) {
        update();
        if (on) emit chosen(index);
    });
}

void SegmentedPicker::setChoice(int index) {
    const QSignalBlocker quiet(this);
    if (auto* segment = group_->button(index)) segment->setChecked(true);
}

void SegmentedPicker::fillWidth() {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    for (auto* segment : group_->buttons()) segment->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
}

void SegmentedPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    StyleControls::drawShape(painter, rect(), Sizes::trackRadius, look_.tokens().well, {});
}

}  // namespace tolvane::desktop
