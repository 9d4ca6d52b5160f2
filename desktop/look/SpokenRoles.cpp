#include "desktop/look/SpokenRoles.h"

#include <QAccessibleWidget>
#include <QVariant>

namespace tolvane::desktop {

namespace {

constexpr auto roleProperty = "spokenRole";

/// The name may come at any time, so the role is told when it is asked for.
class PlainWidget : public QAccessibleWidget {
public:
    explicit PlainWidget(QWidget* widget) : QAccessibleWidget(widget) {}

    QAccessible::Role role() const override {
        if (const auto given = widget()->property(roleProperty); given.isValid()) {
            return static_cast<QAccessible::Role>(given.toInt());
        }
        if (widget()->isWindow()) return QAccessible::Window;
        if (widget()->accessibleName().isEmpty()) return QAccessibleWidget::role();
        return childCount() == 0 ? QAccessible::StaticText : QAccessible::Grouping;
    }
    int childCount() const override { return isWhole() ? 0 : QAccessibleWidget::childCount(); }
    QAccessibleInterface* child(int index) const override {
        return isWhole() ? nullptr : QAccessibleWidget::child(index);
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return isWhole() ? -1 : QAccessibleWidget::indexOfChild(child);
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        return isWhole() ? nullptr : QAccessibleWidget::childAt(x, y);
    }

private:
    bool isWhole() const { return widget()->property(roleProperty).isValid(); }
};

/// The toolkit's own role for it has no counterpart outside.
class SplitterHandle : public QAccessibleWidget {
public:
    explicit SplitterHandle(QWidget* handle) : QAccessibleWidget(handle, QAccessible::Separator) {}
};

/// Asked for each class of an object, the most special one first; what the toolkit knows better never gets as far as
/// the plain widget.
QAccessibleInterface* interfaceOf(const QString& className, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (!widget) return nullptr;
    if (className == QLatin1String("QSplitterHandle")) return new SplitterHandle(widget);
    return className == QLatin1String("QWidget") ? new PlainWidget(widget) : nullptr;
}

}  // namespace

void installSpokenRoles() { QAccessible::installFactory(&interfaceOf); }

void speakAs(QWidget& widget, QAccessible::Role role) { widget.setProperty(roleProperty, static_cast<int>(role)); }

}  // namespace tolvane::desktop
