#pragma once

#include <QPointer>
#include <string>
#include <vector>

#include "app/model/AppModel.h"
#include "desktop/look/Look.h"
#include "desktop/rules/MenuButton.h"
#include "desktop/rules/RuleEditorPane.h"
#include "desktop/rules/RuleList.h"
#include "desktop/window/Page.h"
#include "desktop/window/WindowState.h"

class QPushButton;
class QSplitter;
class QStackedWidget;

namespace tolvane::desktop {

class ParagraphLabel;

/// The rules screen: the list, and the editor of the selected rule.
class RulesPage : public Page {
    Q_OBJECT

public:
    /// `model`, `look` and `state` outlive the page. `locale` is an ICU locale identifier.
    RulesPage(AppModel& model, const Look& look, WindowState& state, std::string locale, QWidget* parent = nullptr);
    ~RulesPage() override;

    std::vector<QWidget*> controls() override;
    QWidget* firstFocus() override { return list_; }

    RuleList& list() const { return *list_; }
    /// Opens the sheet for a new rule.
    void openSheet();
    /// Whether the sheet is open.
    bool addingRule() const { return !sheet_.isNull(); }

protected:
    void draw() override;

private:
    void buildControls();
    void buildPanes();
    QWidget* buildList();
    QWidget* buildDetail();
    void connectControls();
    void fillShareMenu(QMenu& menu);
    void openRowMenu(QPoint place);
    void askToDelete();

    AppModel& model_;
    const Look& look_;
    WindowState& state_;
    std::string locale_;
    QPushButton* add_;
    MenuButton* share_;
    QSplitter* panes_;
    RuleList* list_;
    ParagraphLabel* notice_;
    QStackedWidget* detail_;
    RuleEditorPane* editor_;
    QPointer<QWidget> sheet_;
};

}  // namespace tolvane::desktop
