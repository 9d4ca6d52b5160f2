#include "core/rules/ClaudeRoster.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "base/files/Files.h"
#include "core/json/Decode.h"

namespace tolvane {

namespace {

struct Seed {
    std::optional<std::string> name;
};

struct Dispatch {
    std::optional<Seed> seed;
};

struct Worker {
    Pid pid = 0;
    std::optional<Pid> replPid;
    std::optional<std::string> cwd;
    std::optional<Dispatch> dispatch;
};

struct Roster {
    std::map<std::string, Worker> workers;
};

}  // namespace

template <>
struct json::Fields<Seed> {
    static constexpr auto fields = std::tuple(Field{"name", &Seed::name});
};
template <>
struct json::Fields<Dispatch> {
    static constexpr auto fields = std::tuple(Field{"seed", &Dispatch::seed});
};
template <>
struct json::Fields<Worker> {
    static constexpr auto fields = std::tuple(Field{"pid", &Worker::pid}, Field{"replPid", &Worker::replPid},
                                              Field{"cwd", &Worker::cwd}, Field{"dispatch", &Worker::dispatch});
};
template <>
struct json::Fields<Roster> {
    static constexpr auto fields = std::tuple(Field{"workers", &Roster::workers});
};

namespace ClaudeRoster {

namespace {

std::optional<std::string> nameOf(const Worker& worker) {
    if (!worker.dispatch || !worker.dispatch->seed) return std::nullopt;
    const auto& name = worker.dispatch->seed->name;
    return name && name->empty() ? std::nullopt : name;
}

bool fileExists(const std::string& path) {
    // The system would cut a name at a zero byte and look for another file.
    if (path.find('\0') != std::string::npos) return false;
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

}  // namespace

Result<std::vector<ClaudeWorker>, json::Error> parse(std::string_view data,
                                                     const std::function<bool(const std::string&)>& hasPrompt) {
    auto roster = json::decode<Roster>(data);
    if (!roster) return roster.failure();
    std::vector<ClaudeWorker> workers;
    workers.reserve(roster->workers.size());
    for (auto& [shortID, worker] : roster->workers) {
        workers.push_back({.shortID = shortID,
                           .name = nameOf(worker),
                           .cwd = std::move(worker.cwd),
                           .hostPID = worker.pid,
                           .replPID = worker.replPid,
                           .hasPrompt = hasPrompt(shortID)});
    }
    return workers;
}

std::vector<ClaudeWorker> load(std::string_view home) {
    const std::string agent = std::string(home) + "/.claude";
    const auto data = Files::read(agent + "/daemon/roster.json");
    if (!data) return {};
    return parse(*data,
                 [&](const std::string& shortID) { return fileExists(agent + "/jobs/" + shortID + "/state.json"); })
        .valueOr({});
}

}  // namespace ClaudeRoster

}  // namespace tolvane
