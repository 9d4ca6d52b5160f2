#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/history/Moment.h"
#include "core/storage/ActivityEntry.h"

namespace tolvane {

/// An app or process that held memory, with a value.
struct HolderRow {
    std::string title;
    /// For the icon; a row without one shows a terminal.
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

/// An act of a rule, and when it happened.
struct RuleActRow {
    std::string text;
    std::string time;

    bool operator==(const RuleActRow&) const = default;
};

/// The details of one moment.
struct MomentDetail {
    static constexpr std::string_view rulesTitle = "Rules in the 15 minutes before";

    /// What the texts are made of.
    struct Scene {
        const Moment& moment;
        /// All moments of the model, including those before the shown range.
        const std::vector<Moment>& all;
        const std::vector<ActivityEntry>& activity;
        bool isLatest = false;
        std::string_view locale;
        /// Identifier of a time zone; empty is the machine's.
        std::string_view zone;
    };

    std::string heading;
    std::string sentence;
    /// Empty for the latest moment.
    std::string hint;
    HolderList largest;
    HolderList grew;
    /// Empty to leave the section out.
    std::vector<RuleActRow> rules;

    static MomentDetail of(const Scene& scene);

    bool operator==(const MomentDetail&) const = default;
};

}  // namespace tolvane
