#pragma once

#include <QDialog>
#include <QPropertyNotifier>
#include <memory>
#include <string>
#include <vector>

#include "app/screens/rules/NewRuleSheet.h"
#include "desktop/look/Look.h"

class QLineEdit;
class QListView;
class QPushButton;

namespace tolvane::desktop {

class ParagraphLabel;
class SegmentedPicker;
class RuleSuggestionModel;
class Switch;

/// The sheet that makes a rule from what runs now. Modal to its window, does not block, and deletes itself when it
/// closes.
class NewRuleDialog : public QDialog {
    Q_OBJECT

public:
    /// `model` and `look` outlive the dialog. `locale` is an ICU locale identifier.
    NewRuleDialog(AppModel& model, const Look& look, const std::string& locale, TargetKind kind, QWidget* parent);
    ~NewRuleDialog() override;

    NewRuleSheet& sheet() { return sheet_; }

private:
    void buildControls();
    void buildForm();
    void connectControls();
    void showKind();
    /// The processes change while the sheet is open; the selection is kept.
    void showSuggestions();
    void showLine();
    void add();

    AppModel& model_;
    const Look& look_;
    NewRuleSheet sheet_;
    SegmentedPicker* kind_ = nullptr;
    QListView* list_ = nullptr;
    RuleSuggestionModel* suggestions_ = nullptr;
    QWidget* noteRow_ = nullptr;
    ParagraphLabel* nothing_ = nullptr;
    QLineEdit* typed_ = nullptr;
    QWidget* withoutPromptRow_ = nullptr;
    Switch* withoutPrompt_ = nullptr;
    ParagraphLabel* line_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QPushButton* add_ = nullptr;
    bool showing_ = false;
    QPropertyNotifier ticks_;
};

}  // namespace tolvane::desktop
