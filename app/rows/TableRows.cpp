#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <unordered_map>
#include <utility>

#include "app/rows/TableRow.h"
#include "base/Paths.h"

namespace tolvane {

namespace {

struct NameByPath {
    std::string_view beginning;
    std::string_view name;
};

constexpr std::array<NameByPath, 4> namesByPath = {{
    {"com.apple.WebKit.WebContent", "Web pages (WebKit)"},
    {"com.apple.WebKit.Networking", "Web networking (WebKit)"},
    {"com.apple.WebKit.GPU", "Web graphics (WebKit)"},
    {"com.apple.SafariPlatformSupport", "Safari helpers"},
}};

std::string_view nameOf(const ProcSample& sample) {
    const std::string_view path = sample.path;
    if (path.find("/.local/share/claude/versions/") != std::string_view::npos) return "claude";
    const auto program = Paths::lastComponent(path);
    for (const auto& each : namesByPath) {
        if (program.starts_with(each.beginning)) return each.name;
    }
    return sample.name;
}

std::string nameOfApplication(std::string_view appPath, const RowNames& names) {
    return names.application ? names.application(appPath) : std::string(Paths::lastComponent(appPath));
}

/// The key that a row is folded under, before any text is made: its kind and the text that identifies it.
struct Key {
    enum class Kind { application, command, session, project, other };
    Kind kind = Kind::other;
    std::string_view text;

    bool operator==(const Key&) const = default;
};

struct KeyHash {
    std::size_t operator()(const Key& key) const {
        return std::hash<std::string_view>{}(key.text) * 5 + static_cast<std::size_t>(key.kind);
    }
};

Key keyByApp(const ProcRow& row) {
    if (row.appPath) return {Key::Kind::application, *row.appPath};
    return {Key::Kind::command, nameOf(row.sample)};
}

Key keyByProject(const ProcRow& row) {
    if (row.claudeSession) return {Key::Kind::session, *row.claudeSession};
    if (row.project) return {Key::Kind::project, *row.project};
    if (row.appPath) return {Key::Kind::application, *row.appPath};
    return {};
}

/// The texts of a key, as a group shows them.
struct Heading {
    std::string id;
    std::string title;
    std::optional<std::string> detail = std::nullopt;
    std::optional<std::string> appPath = std::nullopt;
};

Heading headingOf(const Key& key, const RowNames& names) {
    const std::string text(key.text);
    switch (key.kind) {
        case Key::Kind::application:
            return {.id = text, .title = nameOfApplication(text, names), .appPath = text};
        case Key::Kind::command:
            return {.id = "cmd:" + text, .title = text};
        case Key::Kind::session:
            return {.id = "claude:" + text, .title = text, .detail = "Claude session"};
        case Key::Kind::project:
            break;
        case Key::Kind::other:
            return {.id = "other", .title = "Other processes"};
    }
    return {.id = "project:" + text,
            .title = std::string(Paths::lastComponent(text)),
            .detail = Paths::abbreviatedWithTilde(text, names.home)};
}

std::optional<std::string> detailOf(const ProcRow& row, Grouping grouping, const RowNames& names) {
    if (grouping == Grouping::all) return TableRow::owner(row, names);
    if (grouping == Grouping::projects) return std::nullopt;
    if (row.claudeSession) return row.claudeSession->str();
    if (row.project) return Paths::abbreviatedWithTilde(*row.project, names.home);
    return std::nullopt;
}

std::optional<std::string> strOf(const std::optional<Text>& text) {
    return text ? std::optional(text->str()) : std::nullopt;
}

TableRow processRow(const ProcRow& row, Grouping grouping, double ratio, const RowNames& names) {
    const auto& sample = row.sample;
    return {.id = "pid:" + std::to_string(sample.pid),
            .title = std::string(nameOf(sample)),
            .detail = detailOf(row, grouping, names),
            .appPath = strOf(row.appPath),
            .pids = {sample.pid},
            .memory = sample.footprint,
            .inRAM = sample.inRAM(ratio),
            .compressed = sample.compressed,
            .swapIns = sample.swapIns,
            .cpu = row.cpuPercent,
            .unusedSince = row.unusedSince,
            .started = sample.startTime,
            .children = std::nullopt};
}

/// The rows of one key, as indices into the list of all rows.
struct Fold {
    Key key;
    std::vector<std::size_t> rows;
};

std::vector<Fold> folded(const std::vector<ProcRow>& rows, Key (*keyOf)(const ProcRow&)) {
    std::vector<Fold> folds;
    std::unordered_map<Key, std::size_t, KeyHash> places;
    places.reserve(rows.size());
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const auto key = keyOf(rows[index]);
        const auto [place, isNew] = places.try_emplace(key, folds.size());
        if (isNew) folds.push_back({key, {}});
        folds[place->second].rows.push_back(index);
    }
    return folds;
}

/// The only process under a key; takes the application's name and icon from it.
TableRow loneRow(TableRow tableRow, Heading heading) {
    if (!heading.appPath) return tableRow;
    tableRow.title = std::move(heading.title);
    tableRow.appPath = std::move(heading.appPath);
    return tableRow;
}

TableRow groupRow(std::vector<TableRow> children, Heading heading) {
    if (!heading.detail) heading.detail = std::to_string(children.size()) + " processes";
    return TableRow::group(std::move(heading.id), std::move(heading.title), std::move(heading.detail),
                           std::move(heading.appPath), std::move(children));
}

}  // namespace

std::vector<TableRow> TableRow::build(const std::vector<ProcRow>& rows, Grouping grouping, double ratio,
                                      const RowNames& names) {
    std::vector<TableRow> tableRows;
    const auto tableRowOf = [&](const ProcRow& row) { return processRow(row, grouping, ratio, names); };
    if (grouping == Grouping::all) {
        tableRows.reserve(rows.size());
        std::ranges::transform(rows, std::back_inserter(tableRows), tableRowOf);
        return tableRows;
    }
    const auto folds = folded(rows, grouping == Grouping::apps ? keyByApp : keyByProject);
    tableRows.reserve(folds.size());
    for (const auto& fold : folds) {
        auto heading = headingOf(fold.key, names);
        if (fold.rows.size() == 1 && !heading.detail) {
            tableRows.push_back(loneRow(tableRowOf(rows[fold.rows.front()]), std::move(heading)));
            continue;
        }
        std::vector<TableRow> children;
        children.reserve(fold.rows.size());
        for (const auto row : fold.rows) children.push_back(tableRowOf(rows[row]));
        tableRows.push_back(groupRow(std::move(children), std::move(heading)));
    }
    return tableRows;
}

std::string TableRow::processName(const ProcSample& sample) { return std::string(nameOf(sample)); }

std::optional<std::string> TableRow::owner(const ProcRow& row, const RowNames& names) {
    if (row.claudeSession) return row.claudeSession->str();
    if (row.project) return Paths::abbreviatedWithTilde(*row.project, names.home);
    if (row.appPath) return nameOfApplication(*row.appPath, names);
    return std::nullopt;
}

}  // namespace tolvane
