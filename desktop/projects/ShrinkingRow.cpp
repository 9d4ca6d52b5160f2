#include "desktop/projects/ShrinkingRow.h"

#include <QEvent>
#include <QStyle>
#include <algorithm>

namespace tolvane::desktop {

void ShrinkingRow::add(QWidget* widget, int gap, int rank, int keeps) {
    widget->setParent(this);
    parts_.push_back({.widget = widget, .gap = gap, .rank = rank, .keeps = keeps});
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

std::vector<ShrinkingRow::Part> ShrinkingRow::shown() const {
    auto parts = parts_;
    std::erase_if(parts, [this](const Part& part) { return !part.widget->isVisibleTo(this); });
    return parts;
}

QSize ShrinkingRow::sizeHint() const {
    QSize size(0, 0);
    for (const auto& part : shown()) {
        const auto hint = part.widget->sizeHint();
        size = {size.width() + part.gap + hint.width(), std::max(size.height(), hint.height())};
    }
    return size;
}

QSize ShrinkingRow::minimumSizeHint() const {
    int width = 0;
    for (const auto& part : shown()) width += part.gap + part.widget->minimumSizeHint().width();
    return {width, sizeHint().height()};
}

void ShrinkingRow::resizeEvent(QResizeEvent* /*event*/) { arrange(); }

bool ShrinkingRow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        arrange();
    }
    return QWidget::event(event);
}

std::vector<int> ShrinkingRow::widths(const std::vector<Part>& parts) const {
    std::vector<int> widths;
    for (const auto& part : parts) widths.push_back(part.widget->sizeHint().width());
    std::vector<std::size_t> order(parts.size());
    for (std::size_t index = 0; index < order.size(); ++index) order[index] = index;
    std::ranges::sort(order, {}, [&parts](std::size_t index) { return parts[index].rank; });
    int missing = sizeHint().width() - width();
    for (const bool allOfIt : {false, true}) {
        for (const auto index : order) {
            const auto& part = parts[index];
            const int least = std::max(part.widget->minimumSizeHint().width(), allOfIt ? 0 : part.keeps);
            const int given = std::clamp(missing, 0, std::max(0, widths[index] - least));
            widths[index] -= given;
            missing -= given;
        }
    }
    return widths;
}

void ShrinkingRow::arrange() {
    const auto parts = shown();
    const auto widths = this->widths(parts);
    int left = 0;
    for (std::size_t index = 0; index < parts.size(); ++index) {
        left += parts[index].gap;
        const int high = parts[index].widget->sizeHint().height();
        const QRect place(left, (height() - high) / 2, widths[index], high);
        parts[index].widget->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
        left += widths[index];
    }
}

}  // namespace tolvane::desktop
