#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/screens/rules/RuleStatus.h"
#include "core/storage/ActivityEntry.h"

namespace tolvane {

/// The list below the editor: the matches of the rule now.
struct MatchesSection {
    static constexpr std::string_view heading = "Matches now";
    static constexpr std::string_view none = "Nothing running matches this rule.";
    static constexpr std::string_view pastLimit = "Past the limit";
    static constexpr std::string_view withinLimit = "Within the limit";
    static constexpr std::size_t most = 12;

    struct Row {
        std::string title;
        std::string detail;
        bool isDue = false;
        /// "Would terminate at 2:41 PM": why the rule holds back for now. Empty when it does not.
        std::string lastOutcome = {};

        std::string_view tag() const { return isDue ? pastLimit : withinLimit; }
        bool operator==(const Row&) const = default;
    };

    /// At most twelve; when empty, the section shows `none`.
    std::vector<Row> rows;
    /// "and 3 more"
    std::optional<std::string> more;

    static MatchesSection of(const RuleStatus& status, Date now, std::string_view locale);
    /// Adds to each row what the rule did to it within the cool-down. `activity` is newest first.
    void addLastOutcomes(const Rule& rule, const RuleStatus& status, const std::vector<ActivityEntry>& activity,
                         Date now, std::string_view locale);

    bool operator==(const MatchesSection&) const = default;
};

}  // namespace tolvane
