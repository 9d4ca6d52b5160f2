#include "desktop/lists/RowListAccessible.h"

#include <algorithm>

#include "desktop/lists/RowList.h"

namespace tolvane::desktop {

namespace {

/// The row that is at a given place in the list now.
class Item : public QAccessibleInterface {
public:
    Item(RowList& list, std::size_t number) : list_(list), number_(number) {}

    bool isValid() const override { return number_ < list_.rows().size(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return parent()->window(); }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&list_); }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessible::Role role() const override { return QAccessible::ListItem; }

    QString text(QAccessible::Text part) const override {
        if (!isValid()) return {};
        const auto& row = list_.rows()[number_];
        if (part == QAccessible::Name) return row.name;
        if (part == QAccessible::Value) return row.value;
        return part == QAccessible::Help ? row.tip : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}

    QRect rect() const override {
        if (!isValid()) return {};
        const auto place = list_.mirroredPlace(list_.rows()[number_]) & list_.rect();
        return {list_.mapToGlobal(place.topLeft()), place.size()};
    }
    QAccessible::State state() const override {
        auto state = parent()->state();
        state.invalid = !isValid();
        state.focusable = false;
        state.readOnly = true;
        return state;
    }

private:
    RowList& list_;
    std::size_t number_;
};

QAccessibleInterface* interfaceOf(const QString& /*className*/, QObject* object) {
    auto* list = qobject_cast<RowList*>(object);
    return list ? new RowListAccessible(*list) : nullptr;
}

}  // namespace

void RowListAccessible::install() { QAccessible::installFactory(&interfaceOf); }

RowListAccessible::RowListAccessible(RowList& list) : QAccessibleWidget(&list, QAccessible::List), list_(list) {}

RowListAccessible::~RowListAccessible() {
    for (const auto id : items_) QAccessible::deleteAccessibleInterface(id);
}

int RowListAccessible::childCount() const { return static_cast<int>(list_.rows().size()); }

QAccessibleInterface* RowListAccessible::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    const auto number = static_cast<std::size_t>(index);
    while (items_.size() <= number) {
        items_.push_back(QAccessible::registerAccessibleInterface(new Item(list_, items_.size())));
    }
    return QAccessible::accessibleInterface(items_[number]);
}

int RowListAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto found = std::ranges::find(items_, child, [](QAccessible::Id id) -> const QAccessibleInterface* {
        return QAccessible::accessibleInterface(id);
    });
    return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

QAccessibleInterface* RowListAccessible::childAt(int x, int y) const {
    for (int index = 0; index < childCount(); ++index) {
        if (child(index)->rect().contains(x, y)) return child(index);
    }
    return nullptr;
}

}  // namespace tolvane::desktop
