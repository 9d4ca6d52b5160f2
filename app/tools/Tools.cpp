#include "app/tools/Tools.h"

#include "base/UTF8.h"
#include "core/projects/Docker.h"
#include "core/projects/GitBranch.h"

namespace tolvane::Tools {

namespace {

constexpr std::string_view containerClient = "docker";

}  // namespace

std::optional<std::string> run(ChildProcesses& children, std::string_view tool,
                               const std::vector<std::string>& arguments) {
    const auto path = children.find(tool);
    if (!path) return std::nullopt;
    auto printed = children.run(*path, arguments);
    if (printed && !UTF8::isValid(*printed)) *printed = UTF8::repaired(*printed);
    return printed;
}

std::vector<Container> runningContainers(ChildProcesses& children) {
    return Docker::parse(run(children, containerClient, Docker::listArguments()).value_or(""));
}

bool performOnContainers(ChildProcesses& children, const std::string& verb, const std::vector<std::string>& ids) {
    return ids.empty() || run(children, containerClient, Docker::arguments(verb, ids)).has_value();
}

bool remoteGone(ChildProcesses& children, const std::string& root, const std::string& branch) {
    const auto printed = run(children, "git", GitBranch::upstreamArguments(root, branch));
    return printed && GitBranch::saysGone(*printed);
}

}  // namespace tolvane::Tools
