#pragma once

#include <QScrollArea>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/screens/rules/RuleEditor.h"
#include "desktop/look/Look.h"

class QLineEdit;
class QPushButton;

namespace tolvane::desktop {

class Card;
class FormRow;
class MatchesCard;
class ParagraphLabel;
class PopupPicker;
class SegmentedPicker;
class Switch;

/// The form of one rule, with its current matches below. Changes go to the model at once.
class RuleEditorPane : public QScrollArea {
    Q_OBJECT

public:
    /// Both outlive the pane. `locale` is an ICU locale identifier.
    RuleEditorPane(AppModel& model, const Look& look, std::string locale, QWidget* parent = nullptr);
    ~RuleEditorPane() override;

    /// Opens another rule's form, after saving text that is being typed into the previous one.
    void open(const std::optional<UUID>& rule);
    /// Updates the form and the matches, except for fields that are being edited.
    void refresh();
    /// Null while no rule is open.
    RuleEditor* editor() const { return editor_.get(); }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildControls();
    void buildForm();
    QWidget* heading(std::string_view text);
    void connectControls();
    void showTarget(const Rule& rule);
    void showConditions(const Rule& rule);
    void showAction(const Rule& rule);
    void keepTyped();

    AppModel& model_;
    const Look& look_;
    std::string locale_;
    std::unique_ptr<RuleEditor> editor_;
    QWidget* form_ = nullptr;
    QLineEdit* name_ = nullptr;
    SegmentedPicker* mode_ = nullptr;
    FormRow* modeRow_ = nullptr;
    PopupPicker* kind_ = nullptr;
    PopupPicker* app_ = nullptr;
    /// The choices that the application picker shows, kept because their order changes with every tick.
    std::vector<RuleEditor::AppChoice> shownApps_;
    FormRow* appRow_ = nullptr;
    QLineEdit* command_ = nullptr;
    FormRow* commandRow_ = nullptr;
    QLineEdit* agents_ = nullptr;
    FormRow* agentsRow_ = nullptr;
    Switch* withoutPrompt_ = nullptr;
    FormRow* withoutPromptRow_ = nullptr;
    PopupPicker* unused_ = nullptr;
    PopupPicker* memory_ = nullptr;
    Switch* tight_ = nullptr;
    ParagraphLabel* footer_ = nullptr;
    PopupPicker* action_ = nullptr;
    MatchesCard* matches_ = nullptr;
    QPushButton* delete_ = nullptr;
};

}  // namespace tolvane::desktop
