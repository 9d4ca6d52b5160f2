#include "app/screens/processes/InspectorContent.h"

#include <algorithm>

#include "app/rows/Format.h"
#include "app/screens/processes/RowProcesses.h"
#include "base/Paths.h"
#include "core/words/DateWords.h"
#include "core/words/Words.h"

namespace tolvane {

namespace {

std::string percentText(double percent, std::string_view locale) {
    return Format::decimal(percent, 1, 1, locale) + " %";
}

class Writer {
public:
    Writer(const TableRow& tableRow, const InspectorFacts& facts)
        : tableRow_(tableRow), facts_(facts), row_(RowProcesses::own(tableRow, facts.snapshot.rows)) {}

    std::vector<ValueRow> figures() const;
    std::vector<ValueRow> process() const;
    std::optional<InspectorChart> memoryChart() const;
    std::optional<InspectorChart> cpuChart() const;
    std::vector<InspectorButton> buttons() const;

private:
    std::string bytes(std::uint64_t value) const { return Format::bytes(value, facts_.locale); }
    std::string parent() const;
    std::string abbreviated(std::string_view path) const { return Paths::abbreviatedWithTilde(path, facts_.home); }
    ValueRow pathRow(std::string label, std::string_view path) const;
    std::string ports() const;
    std::string accessibleText(std::string_view what) const;
    InspectorChart emptyChart(std::string title, const std::string& yLabel, std::string unit) const;
    InspectorButton priorityButton() const;

    const TableRow& tableRow_;
    const InspectorFacts& facts_;
    const ProcRow* row_;
};

std::vector<ValueRow> Writer::figures() const {
    std::vector<ValueRow> rows{{.label = "Memory",
                                .value = bytes(tableRow_.memory),
                                .tooltip = "Physical footprint, the Memory column in Activity Monitor: everything the "
                                           "process wrote to, including what is compressed or in swap."}};
    if (row_) {
        rows.push_back({.label = "Peak",
                        .value = bytes(row_->sample.peakFootprint),
                        .tooltip = "The largest footprint since the process started."});
    }
    rows.push_back({.label = "Compressed",
                    .value = bytes(tableRow_.compressed),
                    .tooltip = "The part of Memory that macOS compressed or moved to swap."});
    rows.push_back({.label = "CPU", .value = percentText(tableRow_.cpu, facts_.locale)});
    if (row_ && facts_.snapshot.cpu.efficiencyCores > 0) {
        rows.push_back({.label = "On performance cores", .value = percentText(row_->perfPercent, facts_.locale)});
    }
    rows.push_back({.label = "Unused for", .value = Format::duration(tableRow_.unusedSince, facts_.snapshot.date)});
    if (tableRow_.started) {
        rows.push_back(
            {.label = "Started", .value = DateWords::dateAndTime(*tableRow_.started, facts_.locale, facts_.zone)});
    }
    if (tableRow_.children) {
        const auto count = static_cast<double>(tableRow_.pids.size());
        rows.push_back({.label = "Processes", .value = Format::decimal(count, 0, 0, facts_.locale)});
    }
    return rows;
}

/// A parent outside the snapshot is shown by its pid alone.
std::string Writer::parent() const {
    const auto number = std::to_string(row_->sample.ppid);
    const auto* parent = RowProcesses::ofPid(row_->sample.ppid, facts_.snapshot.rows);
    return parent ? TableRow::processName(parent->sample) + " (" + number + ")" : number;
}

ValueRow Writer::pathRow(std::string label, std::string_view path) const {
    return {.label = std::move(label), .value = abbreviated(path), .tooltip = std::string(path)};
}

std::string Writer::ports() const {
    std::string text;
    for (const int port : facts_.ports) text.append(text.empty() ? "" : ", ").append(std::to_string(port));
    return text;
}

std::vector<ValueRow> Writer::process() const {
    if (!row_) return {};
    std::vector<ValueRow> rows{
        {.label = "PID", .value = std::to_string(row_->sample.pid)},
        {.label = "Parent", .value = parent()},
    };
    if (row_->claudeSession) rows.push_back({.label = "Claude session", .value = row_->claudeSession->str()});
    if (row_->project) rows.push_back(pathRow("Project", *row_->project));
    if (row_->sample.cwd) rows.push_back(pathRow("Working folder", *row_->sample.cwd));
    if (!facts_.ports.empty()) rows.push_back({.label = "Listening on", .value = ports()});
    rows.push_back({.label = "Command", .value = row_->sample.commandLine()});
    return rows;
}

std::string Writer::accessibleText(std::string_view what) const {
    const Seconds span = facts_.history.back().date - facts_.history.front().date;
    const auto inWords = Words::duration(std::max(span, Seconds{60}), Words::UnitWidth::abbreviated, facts_.locale);
    return std::string(what) + " of " + tableRow_.title + " over the last " + inWords;
}

InspectorChart Writer::emptyChart(std::string title, const std::string& yLabel, std::string unit) const {
    InspectorChart chart{.title = std::move(title),
                         .xLabel = "Time",
                         .yLabel = yLabel,
                         .unit = std::move(unit),
                         .accessibleText = accessibleText(yLabel)};
    chart.dates.reserve(facts_.history.size());
    for (const auto& point : facts_.history) chart.dates.push_back(point.date);
    return chart;
}

std::optional<InspectorChart> Writer::memoryChart() const {
    constexpr double bytesPerMB = 1024.0 * 1024.0;
    if (facts_.history.empty()) return std::nullopt;
    auto chart = emptyChart("Memory over time", "Memory", "MB");
    chart.seriesLabel = "Kind";
    chart.series = {{.name = "Memory"}, {.name = "Compressed"}};
    for (const auto& point : facts_.history) {
        chart.series[0].values.push_back(static_cast<double>(point.footprint) / bytesPerMB);
        chart.series[1].values.push_back(static_cast<double>(point.compressed) / bytesPerMB);
    }
    return chart;
}

std::optional<InspectorChart> Writer::cpuChart() const {
    if (facts_.history.empty()) return std::nullopt;
    auto chart = emptyChart("CPU over time", "CPU", "%");
    chart.series = {{.name = "CPU"}};
    for (const auto& point : facts_.history) chart.series[0].values.push_back(point.cpu);
    return chart;
}

InspectorButton Writer::priorityButton() const {
    if (facts_.lowered.contains(row_->sample.pid)) {
        return {.title = "Restore Priority", .action = ProcessAction::restorePriority};
    }
    return {.title = "Lower Priority",
            .action = ProcessAction::lowerPriority,
            .tooltip =
                "Runs it at background priority until it is used again. Pages it touches from then on are the "
                "first macOS takes back."};
}

std::vector<InspectorButton> Writer::buttons() const {
    std::vector<InspectorButton> buttons;
    if (row_) buttons.push_back(priorityButton());
    if (tableRow_.appPath) {
        buttons.push_back({.title = "Quit", .action = ProcessAction::quit, .shortcut = 'q'});
        buttons.push_back({.title = "Relaunch", .action = ProcessAction::relaunch});
    } else {
        buttons.push_back({.title = "Terminate", .action = ProcessAction::terminate});
    }
    buttons.push_back({.title = "Force Quit", .action = ProcessAction::forceQuit, .shortcut = 'f'});
    const bool enabled = facts_.actor.mayActOn(tableRow_, facts_.snapshot.rows);
    for (auto& button : buttons) button.enabled = enabled;
    return buttons;
}

}  // namespace

InspectorContent InspectorContent::of(const TableRow& tableRow, const InspectorFacts& facts) {
    const Writer writer(tableRow, facts);
    return {.title = tableRow.title,
            .detail = tableRow.detail,
            .appPath = tableRow.appPath,
            .figures = writer.figures(),
            .memoryChart = writer.memoryChart(),
            .cpuChart = writer.cpuChart(),
            .processHeading = "Process",
            .process = writer.process(),
            .buttons = writer.buttons()};
}

}  // namespace tolvane
