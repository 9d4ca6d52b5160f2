#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/history/Moment.h"
#include "core/storage/ActivityEntry.h"

namespace tolvane {

/// One who held memory, with a figure.
struct HolderRow {
    std::string title;
    /// For the icon; a terminal stands for what has none.
    std::optional<std::string> appPath;
    std::string figure;

    bool operator==(const HolderRow&) const = default;
};

struct HolderList {
    std::string title;
    std::vector<HolderRow> rows;
    /// Shown when there are no rows.
    std::string empty;

    bool operator==(const HolderList&) const = default;
};

/// What a rule did, and when.
struct RuleActRow {
    std::string text;
    std::string time;

    bool operator==(const RuleActRow&) const = default;
};

/// What stood out at one moment.
struct MomentDetail {
    static constexpr std::string_view rulesTitle = "Rules in the 15 minutes before";

    /// What the words are made of.
    struct Scene {
        const Moment& moment;
        /// Of the model, also those before the range that is shown.
        const std::vector<Moment>& all;
        const std::vector<ActivityEntry>& activity;
        bool isLatest = false;
        std::string_view locale;
        /// Of a time zone; empty is the machine's.
        std::string_view zone;
    };

    std::string heading;
    std::string sentence;
    /// Empty for the latest moment.
    std::string hint;
    HolderList largest;
    HolderList grew;
    /// Empty for no such section.
    std::vector<RuleActRow> rules;

    static MomentDetail of(const Scene& scene);

    bool operator==(const MomentDetail&) const = default;
};

}  // namespace tolvane
