#include "core/projects/Docker.h"

#include <optional>
#include <utility>

#include "core/json/Simdjson.h"

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

std::vector<std::string> listArguments() { return {"ps", "--format", "{{json .}}"}; }

std::vector<std::string> arguments(const std::string& verb, const std::vector<std::string>& ids) {
    std::vector<std::string> all = {verb};
    all.insert(all.end(), ids.begin(), ids.end());
    return all;
}

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

}  // namespace tolvane::Docker
