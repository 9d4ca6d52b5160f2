#include "core/projects/Docker.h"

#include <utility>

#include "core/json/Simdjson.h"
#include "core/projects/ToolOutput.h"

namespace tolvane::Docker {

namespace {

constexpr std::string_view folderLabel = "com.docker.compose.project.working_dir=";

std::optional<std::string> folderOf(std::string_view labels) {
    while (!labels.empty()) {
        const auto end = labels.find(',');
        const auto label = labels.substr(0, end);
        if (label.starts_with(folderLabel)) return std::string(label.substr(folderLabel.size()));
        if (end == std::string_view::npos) break;
        labels.remove_prefix(end + 1);
    }
    return std::nullopt;
}

std::optional<std::string> textOf(const simdjson::dom::object& object, std::string_view key) {
    std::string_view text;
    if (object[key].get(text) != simdjson::SUCCESS) return std::nullopt;
    return std::string(text);
}

std::optional<Container> containerOf(simdjson::dom::parser& parser, std::string_view line) {
    simdjson::dom::object object;
    if (parser.parse(line.data(), line.size()).get(object) != simdjson::SUCCESS) return std::nullopt;
    const auto id = textOf(object, "ID");
    if (!id) return std::nullopt;
    return Container{.id = *id,
                     .name = textOf(object, "Names").value_or(*id),
                     .workingDir = folderOf(textOf(object, "Labels").value_or(""))};
}

}  // namespace

std::vector<Container> parse(std::string_view text) {
    std::vector<Container> containers;
    simdjson::dom::parser parser;
    while (!text.empty()) {
        const auto end = text.find('\n');
        if (auto container = containerOf(parser, text.substr(0, end))) containers.push_back(std::move(*container));
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    return containers;
}

std::vector<Container> containersIn(const std::vector<Container>& all, std::string_view root) {
    std::vector<Container> result;
    for (const auto& container : all) {
        if (!container.workingDir || !container.workingDir->starts_with(root)) continue;
        const auto rest = std::string_view(*container.workingDir).substr(root.size());
        if (rest.empty() || rest.front() == '/') result.push_back(container);
    }
    return result;
}

std::vector<std::string> candidates(const std::string& home) {
    return {"/usr/local/bin/docker", "/opt/homebrew/bin/docker", home + "/.orbstack/bin/docker",
            "/Applications/Docker.app/Contents/Resources/bin/docker"};
}

std::optional<std::string> executable(ChildProcesses& children, const std::string& home) {
    for (const auto& places : {candidates(home), children.containerClients()}) {
        for (const auto& path : places) {
            if (children.isExecutable(path)) return path;
        }
    }
    return std::nullopt;
}

std::vector<Container> running(ChildProcesses& children, const std::string& home) {
    const auto client = executable(children, home);
    if (!client) return {};
    return parse(toolOutput(children, *client, {"ps", "--format", "{{json .}}"}).value_or(""));
}

bool perform(ChildProcesses& children, const std::string& home, const std::string& verb,
             const std::vector<std::string>& ids) {
    if (ids.empty()) return true;
    const auto client = executable(children, home);
    if (!client) return false;
    std::vector<std::string> arguments = {verb};
    arguments.insert(arguments.end(), ids.begin(), ids.end());
    return toolOutput(children, *client, arguments).has_value();
}

}  // namespace tolvane::Docker
