#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/advisor/AdviceScene.h"
#include "core/advisor/RowGroups.h"
#include "core/advisor/Suggestion.h"
#include "core/rules/Rule.h"

/// Names, sums and sentences that several detectors use. `rows` must not be empty.
namespace tolvane::AdviceWords {

/// "{project or empty}|{program}"
void appendKey(const ProcRow& row, std::string& text);
std::string key(const ProcRow& row);
/// "vite in shop", or the program alone outside projects.
std::string label(const ProcRow& row);
/// The name of the row's application, otherwise its label.
std::string name(const ProcRow& row);
/// Identifies the row's group: its application's identifier, otherwise its key.
std::string groupName(const ProcRow& row);

/// Sorted ascending.
std::vector<Pid> pids(RowSpan rows);
/// Sum in bytes.
std::uint64_t footprint(RowSpan rows);
/// Time since the latest use of any of them.
Seconds idleTime(RowSpan rows, Date now);

/// A byte count as written within a sentence.
std::string bytes(std::uint64_t count, const AdviceScene& scene);
/// Spans below a minute read as one minute.
std::string duration(Seconds span, const AdviceScene& scene);
/// "port 3000", "ports 3000 and 3001"
std::string ports(const std::vector<int>& numbers, const AdviceScene& scene);

/// When the proposed rule acts.
struct Conditions {
    std::optional<std::int64_t> unusedMinutes = std::nullopt;
    std::optional<std::int64_t> memoryMB = std::nullopt;
};
/// A rule that only logs, for the row's application or program.
Rule proposed(std::string name, const ProcRow& row, const Conditions& conditions);

}  // namespace tolvane::AdviceWords
