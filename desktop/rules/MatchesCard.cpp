#include "desktop/rules/MatchesCard.h"

#include <QHBoxLayout>

#include "desktop/look/QtText.h"
#include "desktop/look/TextLine.h"
#include "desktop/look/Tip.h"
#include "desktop/parts/ElidedLabel.h"
#include "desktop/rules/Tag.h"

namespace tolvane::desktop {

namespace {

constexpr int rowHeight = 34;
constexpr int leading = 12, trailing = 10;

QHBoxLayout* lineOf(QWidget* row, const Look& look) {
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(mirrored(row->layoutDirection(), {leading, 0, trailing, 0}));
    line->setSpacing(Sizes::gap + 2);
    row->setMinimumHeight(look.fonts().height(TextRole::body, rowHeight, 16));
    return line;
}

/// One process, application or session.
class MatchRow : public QWidget {
public:
    explicit MatchRow(const Look& look)
        : title_(new ElidedLabel(look, TextRole::body, &Tokens::text)),
          detail_(new ElidedLabel(look, TextRole::small, &Tokens::text2)),
          tag_(new Tag(look)) {
        title_->setFont(look.fonts().font(TextRole::body, QFont::Medium));
        title_->setElideMode(Qt::ElideMiddle);
        detail_->setFigures(true);
        auto* line = lineOf(this, look);
        line->addWidget(title_);
        line->addWidget(detail_, 1);
        line->addWidget(tag_);
    }

    void show(const MatchesSection::Row& match) {
        title_->setText(qtText(match.title));
        detail_->setText(qtText(match.detail));
        tag_->show(qtText(match.tag()), match.isDue ? TagKind::orange : TagKind::plain);
        setToolTip(tip(qtText(match.lastOutcome)));
        setAccessibleDescription(qtText(match.lastOutcome));
    }

private:
    ElidedLabel* title_;
    ElidedLabel* detail_;
    Tag* tag_;
};

}  // namespace

MatchesCard::MatchesCard(const Look& look, QWidget* parent) : Card(look, parent), look_(look) {
    setAccessibleName(qtText(MatchesSection::heading));
}

/// Rows are kept while their number stays the same, since usually only their texts change from tick to tick.
void MatchesCard::show(const MatchesSection& matches) {
    if (filled_ && matches == shown_) return;
    const bool sameRows = filled_ && matches.rows.size() == shown_.rows.size() && matches.more == shown_.more;
    shown_ = matches;
    filled_ = true;
    if (!sameRows) {
        keepRows(0);
        for (std::size_t count = 0; count < matches.rows.size(); ++count) addRow(new MatchRow(look_));
        if (matches.rows.empty()) showNote(qtText(MatchesSection::none));
        if (matches.more) showNote(qtText(*matches.more));
    }
    for (std::size_t number = 0; number < matches.rows.size(); ++number) {
        if (auto* row = dynamic_cast<MatchRow*>(rows()[number])) row->show(matches.rows[number]);
    }
    update();
}

void MatchesCard::showNote(const QString& text) {
    auto* row = new QWidget;
    auto* note = new ElidedLabel(look_, TextRole::small, &Tokens::text2);
    note->setText(text);
    lineOf(row, look_)->addWidget(note);
    addRow(row);
}

}  // namespace tolvane::desktop
