#pragma once

#include "app/screens/rules/MatchesSection.h"
#include "desktop/parts/Card.h"

namespace tolvane::desktop {

/// What a rule applies to now, one row each, or a sentence if there is nothing.
class MatchesCard : public Card {
    Q_OBJECT

public:
    explicit MatchesCard(const Look& look, QWidget* parent = nullptr);

    void show(const MatchesSection& matches);
    using QWidget::show;

private:
    void showNote(const QString& text);

    const Look& look_;
    MatchesSection shown_;
    bool filled_ = false;
};

}  // namespace tolvane::desktop
