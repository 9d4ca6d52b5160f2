#pragma once

#include <QListView>

#include "app/model/AppSection.h"
#include "desktop/look/Look.h"
#include "desktop/window/SidebarModel.h"

namespace tolvane::desktop {

/// The list of screens at the left of the main window.
class Sidebar : public QListView {
    Q_OBJECT

public:
    explicit Sidebar(const Look& look, QWidget* parent = nullptr);

    void show(const std::vector<SidebarGroup>& groups, AppSection present);
    using QListView::show;

    QSize sizeHint() const override { return {Sizes::sidebarWidth, Sizes::windowHeight}; }

signals:
    void chosen(AppSection section);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void dress();

    const Look& look_;
    SidebarModel* model_;
    bool showing_ = false;
};

}  // namespace tolvane::desktop
