#include "core/advisor/AdviceWords.h"

#include <algorithm>
#include <utility>

#include "base/Paths.h"
#include "core/words/Words.h"

namespace tolvane::AdviceWords {

namespace {

constexpr Seconds shortestSpan{60};

std::string appName(const ProcRow& row) {
    return std::string(Paths::withoutExtension(Paths::lastComponent(*row.appPath)));
}

RuleTarget targetOf(const ProcRow& row) {
    if (row.appID && row.appPath) return AppTarget{row.appID->str(), appName(row)};
    return CommandTarget{{std::string(row.sample.ruleMatch())}};
}

}  // namespace

void appendKey(const ProcRow& row, std::string& text) {
    if (row.project) text += row.project->view();
    text += '|';
    text += row.sample.ruleMatch();
}

std::string key(const ProcRow& row) {
    std::string text;
    appendKey(row, text);
    return text;
}

std::string label(const ProcRow& row) {
    std::string text(row.sample.ruleMatch());
    if (row.project) text.append(" in ").append(Paths::lastComponent(*row.project));
    return text;
}

std::string name(const ProcRow& row) { return row.appPath ? appName(row) : label(row); }

std::string groupName(const ProcRow& row) { return row.appID ? row.appID->str() : key(row); }

std::vector<Pid> pids(RowSpan rows) {
    std::vector<Pid> found;
    found.reserve(rows.size());
    for (const auto* row : rows) found.push_back(row->id());
    std::ranges::sort(found);
    return found;
}

std::uint64_t footprint(RowSpan rows) {
    std::uint64_t sum = 0;
    for (const auto* row : rows) sum += row->sample.footprint;
    return sum;
}

Seconds idleTime(RowSpan rows, Date now) {
    return now -
           (*std::ranges::max_element(rows, {}, [](const ProcRow* row) { return row->unusedSince; }))->unusedSince;
}

std::string bytes(std::uint64_t count, const AdviceScene& scene) {
    return Words::bytes(count, Words::ByteStyle::sentence, scene.locale);
}

std::string duration(Seconds span, const AdviceScene& scene) {
    return Words::duration(std::max(span, shortestSpan), Words::UnitWidth::abbreviated, scene.locale);
}

std::string ports(const std::vector<int>& numbers, const AdviceScene& scene) {
    std::vector<std::string> texts;
    texts.reserve(numbers.size());
    for (const int number : numbers) texts.push_back(std::to_string(number));
    return (numbers.size() == 1 ? "port " : "ports ") + Words::list(texts, scene.locale);
}

Rule proposed(std::string name, const ProcRow& row, const Conditions& conditions) {
    return {.id = UUID::random(),
            .name = std::move(name),
            .enabled = true,
            .dryRun = true,
            .target = targetOf(row),
            .unusedMinutes = conditions.unusedMinutes,
            .memoryMB = conditions.memoryMB,
            .action = row.appID ? RuleAction::relaunch : RuleAction::terminate,
            .onlyWhenTight = std::nullopt};
}

}  // namespace tolvane::AdviceWords
