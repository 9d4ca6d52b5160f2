#include "desktop/look/AccessibleRoles.h"

#include <qaccessibleobject.h>
#include <QAccessibleWidget>
#include <QApplication>
#include <QComboBox>
#include <QVariant>
#include <algorithm>
#include <vector>

namespace tolvane::desktop {

namespace {

constexpr auto roleProperty = "spokenRole";

/// Derives the role when it is asked for, because the name may be set at any time.
class PlainWidget : public QAccessibleWidget {
public:
    explicit PlainWidget(QWidget* widget) : QAccessibleWidget(widget) {}

    QAccessible::Role role() const override {
        if (const auto given = widget()->property(roleProperty); given.isValid()) {
            return static_cast<QAccessible::Role>(given.toInt());
        }
        if (widget()->windowType() == Qt::Popup) return QAccessible::Dialog;
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

/// The toolkit's own role for it has no counterpart in the accessibility APIs.
class SplitterHandle : public QAccessibleWidget {
public:
    explicit SplitterHandle(QWidget* handle) : QAccessibleWidget(handle, QAccessible::Separator) {}
};

/// The toolkit names a picker by its choice alone; this also names what the choice is for.
class Picker : public QAccessibleWidget {
public:
    explicit Picker(QComboBox& picker) : QAccessibleWidget(&picker, QAccessible::ComboBox), picker_(picker) {}

    QString text(QAccessible::Text part) const override {
        if (part == QAccessible::Value) return picker_.currentText();
        if (part != QAccessible::Name) return QAccessibleWidget::text(part);
        const auto name = picker_.accessibleName();
        return name.isEmpty() ? picker_.currentText() : name + QStringLiteral(": ") + picker_.currentText();
    }
    QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
    /// Opening the menu blocks, so it is queued.
    void doAction(const QString& /*action*/) override {
        QMetaObject::invokeMethod(&picker_, &QComboBox::showPopup, Qt::QueuedConnection);
    }

private:
    QComboBox& picker_;
};

/// The toolkit leaves out popups, so a screen reader that browses the tree instead of following the focus would find
/// neither the panel nor an open menu.
class WholeApplication : public QAccessibleApplication {
public:
    int childCount() const override { return QAccessibleApplication::childCount() + static_cast<int>(popups().size()); }
    QAccessibleInterface* child(int index) const override {
        const int windows = QAccessibleApplication::childCount();
        if (index < windows) return QAccessibleApplication::child(index);
        const auto shown = popups();
        const auto place = static_cast<std::size_t>(index - windows);
        return place < shown.size() ? QAccessible::queryAccessibleInterface(shown[place]) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto shown = popups();
        const auto found = std::ranges::find(shown, child->object());
        if (found == shown.end()) return QAccessibleApplication::indexOfChild(child);
        return QAccessibleApplication::childCount() + static_cast<int>(found - shown.begin());
    }

private:
    static std::vector<QObject*> popups() {
        std::vector<QObject*> shown;
        for (auto* widget : QApplication::topLevelWidgets()) {
            if (widget->windowType() == Qt::Popup && widget->isVisible()) shown.push_back(widget);
        }
        return shown;
    }
};

/// The toolkit asks for each class of an object, the most derived one first, so widgets that it has an interface for
/// never reach the plain widget.
QAccessibleInterface* interfaceOf(const QString& className, QObject* object) {
    if (object == qApp) return new WholeApplication;
    auto* widget = qobject_cast<QWidget*>(object);
    if (!widget) return nullptr;
    if (className == QLatin1String("QSplitterHandle")) return new SplitterHandle(widget);
    if (auto* picker = qobject_cast<QComboBox*>(widget)) return new Picker(*picker);
    return className == QLatin1String("QWidget") ? new PlainWidget(widget) : nullptr;
}

}  // namespace

void installAccessibleRoles() { QAccessible::installFactory(&interfaceOf); }

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
    widget.setProperty(roleProperty, static_cast<int>(role));
}

}  // namespace tolvane::desktop
