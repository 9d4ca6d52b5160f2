#pragma once

#include <map>
#include <string>
#include <vector>

#include "app/screens/suggestions/SuggestionsView.h"
#include "desktop/look/Look.h"
#include "desktop/parts/NoticeBar.h"
#include "desktop/parts/ScrolledColumn.h"
#include "desktop/suggestions/SuggestionCard.h"
#include "desktop/window/Page.h"

class QPushButton;
class QStackedLayout;
class QVBoxLayout;

namespace tolvane::desktop {

/// The suggestions screen: one card for each kind. Follows the model while it is visible, except while one of its menus
/// is open.
class SuggestionsPage : public Page {
    Q_OBJECT

public:
    /// `model` and `look` outlive the page. `locale` is an ICU locale identifier.
    SuggestionsPage(AppModel& model, const Look& look, std::string locale, QWidget* parent = nullptr);

    std::vector<QWidget*> controls() override;
    QWidget* firstFocus() override;
    QString subtitle() const override { return subtitle_; }

    /// In display order.
    std::vector<SuggestionCard*> cards() const;

protected:
    void draw() override;
    void showEvent(QShowEvent* event) override;

private:
    void buildColumn();
    void showSections(const std::vector<SuggestionSection>& sections);
    SuggestionCard* card(Suggestion::Kind kind);
    void alignFigures() const;
    void hold(bool held);

    AppModel& model_;
    const Look& look_;
    NoticeBar* notice_;
    SuggestionsView view_;
    QPushButton* showHidden_;
    QStackedLayout* panes_;
    QWidget* empty_;
    ScrolledColumn* scroll_;
    QVBoxLayout* column_ = nullptr;
    std::map<Suggestion::Kind, SuggestionCard*> cards_;
    QString subtitle_;
    bool held_ = false;
};

}  // namespace tolvane::desktop
