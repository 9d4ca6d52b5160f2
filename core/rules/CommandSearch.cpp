#include "core/rules/SubjectSearch.h"

#include <algorithm>
#include <string>

#include "base/LowerCase.h"
#include "core/rules/PatternSet.h"
#include "core/rules/SubjectKey.h"

namespace tolvane {

namespace {

struct Wanted {
    SubjectSearch* search = nullptr;
    /// Never empty.
    std::vector<PatternSet::Number> patterns;
};

std::vector<PatternSet::Number> usablePatterns(const CommandTarget& target, PatternSet& set) {
    std::vector<PatternSet::Number> patterns;
    for (const auto& pattern : target.patterns) {
        if (!pattern.empty()) patterns.push_back(set.add(lowerCased(pattern)));
    }
    return patterns;
}

std::vector<Wanted> wantedCommands(const std::vector<SubjectSearch*>& searches, PatternSet& set) {
    std::vector<Wanted> all;
    for (auto* search : searches) {
        auto patterns = usablePatterns(std::get<CommandTarget>(search->rule->target), set);
        if (!patterns.empty()) all.push_back({search, std::move(patterns)});
    }
    return all;
}

/// The text to search: the command line in lower case.
void assignSearchText(std::string& text, const ProcSample& sample) {
    text.clear();
    if (sample.args.empty()) return appendLowerCased(text, sample.path);
    for (std::size_t index = 0; index < sample.args.size(); ++index) {
        if (index > 0) text += ' ';
        appendLowerCased(text, sample.args[index]);
    }
}

/// Goes through the rows with one buffer for all their command lines.
class CommandPass {
public:
    CommandPass(const std::vector<Wanted>& wanted, PatternSet& patterns, const World& world)
        : wanted_(wanted), patterns_(patterns), world_(world) {}

    void take(const ProcRow& row) {
        if (!world_.mayTouch(row.sample)) return;
        row_ = &row;
        state_ = State::untested;
        for (const auto& wanted : wanted_) {
            if (!fits(*wanted.search)) continue;
            if (!prepared()) return;
            if (matches(wanted.patterns)) add(*wanted.search);
        }
    }

private:
    enum class State { untested, excluded, ready };

    bool fits(const SubjectSearch& search) const {
        return search.fits(row_->unusedSince, row_->sample.footprint) && !(search.sparesApplications && row_->appID);
    }

    bool prepared() {
        if (state_ == State::untested) {
            const bool excluded = row_->sample.isSystem() || world_.isInFront(*row_);
            state_ = excluded ? State::excluded : State::ready;
            if (!excluded) lookForPatterns();
        }
        return state_ == State::ready;
    }

    void lookForPatterns() {
        assignSearchText(text_, row_->sample);
        patterns_.search(text_);
    }

    bool matches(const std::vector<PatternSet::Number>& patterns) const {
        return std::ranges::any_of(patterns, [&](PatternSet::Number each) { return patterns_.isFound(each); });
    }

    void add(SubjectSearch& search) const {
        const auto& sample = row_->sample;
        search.found.push_back({.key = SubjectKey::process(sample),
                                .title = sample.name.str(),
                                .pids = {sample.pid},
                                .memory = sample.footprint,
                                .unusedSince = row_->unusedSince,
                                .compressed = sample.compressed});
    }

    const std::vector<Wanted>& wanted_;
    PatternSet& patterns_;
    const World& world_;
    const ProcRow* row_ = nullptr;
    State state_ = State::untested;
    std::string text_;
};

}  // namespace

void findCommands(const std::vector<SubjectSearch*>& searches, const World& world) {
    PatternSet patterns;
    const auto wanted = wantedCommands(searches, patterns);
    if (wanted.empty()) return;
    patterns.prepare();
    CommandPass pass(wanted, patterns, world);
    for (const auto& row : world.rows) pass.take(row);
}

}  // namespace tolvane
