#pragma once

#include "app/screens/RuleMatches.h"
#include "desktop/parts/Card.h"

namespace tolvane::desktop {

/// What a rule applies to now, a row each, or a sentence when there is nothing.
class MatchesCard : public Card {
    Q_OBJECT

public:
    explicit MatchesCard(const Look& look, QWidget* parent = nullptr);

    void show(const RuleMatches& matches);
    using QWidget::show;

private:
    void showNote(const QString& text);

    const Look& look_;
    RuleMatches shown_;
    bool filled_ = false;
};

}  // namespace tolvane::desktop
