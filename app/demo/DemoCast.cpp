#include <cmath>
#include <utility>

#include "app/demo/Demo.h"

namespace tolvane::Demo {

namespace {

constexpr double gb = 1024, minute = 1.0 / 60;

/// The process started that many minutes ago.
std::function<double(double)> since(double limit) {
    return [limit](double minutesAgo) { return minutesAgo <= limit ? 1.0 : 0.0; };
}

/// A leak: grows from two fifths of the size to all of it in four and a half hours.
double leaking(double minutesAgo) { return minutesAgo >= 270 ? 0.4 : 1 - 0.6 * minutesAgo / 270; }

/// The big build around noon.
double building(double minutesAgo) {
    if (minutesAgo > 240 || minutesAgo < 150) return 1;
    return 1 + 0.55 * (1 - std::abs(minutesAgo - 195) / 45);
}

constexpr const char* device = "5B1E8A0C-3C64-4E0B-9A45-0C6F0E9D7A21";

std::string simulatorPart(const char* part) {
    return "/Library/Developer/CoreSimulator/Volumes/iOS_23B80/Library/Developer/CoreSimulator/Profiles/Runtimes/" +
           std::string(part);
}

class Cast {
public:
    explicit Cast(const Place& place) : place_(place), folders_(Roots::in(place)) {}

    std::vector<Proc> all() {
        browsers();
        offices();
        tools();
        simulator();
        system();
        servers();
        agents();
        return std::move(procs_);
    }

private:
    /// Values that most entries give.
    struct Figures {
        double mb, compressedMB, cpu, unusedMinutes, startedHours;
    };

    Proc& add(Proc proc, const Figures& figures) {
        proc.mb = figures.mb;
        proc.compressedMB = figures.compressedMB;
        proc.cpu = figures.cpu;
        proc.unusedMinutes = figures.unusedMinutes;
        proc.startedHours = figures.startedHours;
        proc.uid = place_.uid;
        return procs_.emplace_back(std::move(proc));
    }

    Proc& app(Pid pid, Pid ppid, const std::string& application, const std::string& name, const std::string& appID,
              const Figures& figures, const std::string& folder = "/Applications/") {
        const auto app = folder + application + ".app";
        const auto path = app + "/Contents/MacOS/" + name;
        return add(
            {.pid = pid, .ppid = ppid, .name = name, .path = path, .args = {path}, .appPath = app, .appID = appID},
            figures);
    }

    Proc& tool(Pid pid, Pid ppid, const std::string& path, std::vector<std::string> args,
               std::optional<std::string> project, const Figures& figures) {
        return add({.pid = pid,
                    .ppid = ppid,
                    .name = path.substr(path.rfind('/') + 1),
                    .path = path,
                    .args = std::move(args),
                    .cwd = project,
                    .project = project},
                   figures);
    }

    void browsers() {
        const std::string id = "com.google.Chrome", helper = "Google Chrome Helper";
        app(1204, 1, "Google Chrome", "Google Chrome", id, {1.9 * gb, 204, 7.1, 0.2, 52});
        app(1310, 1204, "Google Chrome", helper, id, {1.28 * gb, 310, 4.1, 0.5, 50});
        app(1311, 1204, "Google Chrome", helper, id, {0.86 * gb, 330, 1.2, 3, 50});
        app(1312, 1204, "Google Chrome", helper, id, {412, 120, 0.4, 11, 30});
        app(1313, 1204, "Google Chrome", helper, id, {268, 96, 0, 42, 26});
        app(1314, 1204, "Google Chrome", helper, id, {126, 40, 0, 64, 9});
    }

    void offices() {
        const std::string teams = "com.microsoft.teams2", slack = "com.tinyspeck.slackmacgap";
        app(2208, 1, "Microsoft Teams", "Microsoft Teams", teams, {901, 620, 0.3, 365, 52});
        app(2215, 2208, "Microsoft Teams", "Microsoft Teams WebView Helper", teams, {758, 506, 0.1, 369, 52});
        app(1890, 1, "Slack", "Slack", slack, {402, 221, 0.6, 47, 52});
        app(1911, 1890, "Slack", "Slack Helper (GPU)", slack, {228, 130, 0.2, 47, 52});
        app(1912, 1890, "Slack", "Slack Helper (Renderer)", slack, {401, 214, 0.1, 51, 52});
        app(1913, 1890, "Slack", "Slack Helper", slack, {85, 43.1, 0, 90, 52});
        app(2501, 1, "Spotify", "Spotify", "com.spotify.client", {301.2, 140, 0.2, 18, 28});
        app(2502, 2501, "Spotify", "Spotify Helper (Renderer)", "com.spotify.client", {240.4, 122, 0.1, 18, 28});
        app(2700, 1, "Mail", "Mail", "com.apple.mail", {402.7, 96, 0.3, 14, 51}, "/System/Applications/");
    }

    void tools() {
        app(48120, 1, "Xcode", "Xcode", "com.apple.dt.Xcode", {3.64 * gb, 418.2, 118.6, 4, 6.2}).shape = building;
        app(3002, 1, "Docker Desktop", "Docker Desktop", "com.docker.docker", {188, 40, 0.4, 78, 52});
        app(3010, 3002, "Docker Desktop", "com.docker.backend", "com.docker.docker", {780.2, 43.4, 138.8, 78, 52});
        app(5210, 1, "Ghostty", "ghostty", "com.mitchellh.ghostty", {164.3, 31, 0.9, 0.3, 52});
        for (const Pid pid : {5301, 5302, 5303, 5304}) {
            tool(pid, 5210, "/bin/zsh", {"-zsh"}, std::nullopt, {4.2, 1.6, 0, 2, 12});
        }
    }

    void simulator() {
        auto& root = tool(40112, 1, "/Library/Developer/PrivateFrameworks/CoreSimulator.framework/launchd_sim",
                          {"launchd_sim", place_.home + "/Library/Developer/CoreSimulator/Devices/" + device +
                                              "/data/var/run/launchd_bootstrap.plist"},
                          std::nullopt, {18, 6, 0, 214, 8.1});
        root.shape = since(486);
        Pid pid = 40120;
        for (const auto& [name, mb] : {std::pair{"SpringBoard", 612.0},
                                       {"backboardd", 188.0},
                                       {"MobileSafari", 521.0},
                                       {"mediaserverd", 96.0},
                                       {"assistantd", 143.0},
                                       {"searchd", 204.0},
                                       {"healthd", 88.0},
                                       {"mobileassetd", 64.0},
                                       {"locationd", 71.0},
                                       {"AtlasMobile", 362.0}}) {
            tool(pid++, 40112, simulatorPart(name), {name}, std::nullopt, {mb, mb * 0.4, 0, 192, 8.1}).shape =
                since(486);
        }
    }

    void system() {
        auto& server =
            tool(391, 1, "/System/Library/PrivateFrameworks/SkyLight.framework/Versions/A/Resources/WindowServer",
                 {"WindowServer", "-daemon"}, std::nullopt, {688.5, 70.8, 16.7, 0, 52});
        server.uid = 88;
        tool(702, 1, "/opt/homebrew/opt/postgresql@16/bin/postgres",
             {"/opt/homebrew/opt/postgresql@16/bin/postgres", "-D", "/opt/homebrew/var/postgresql@16"}, std::nullopt,
             {212.8, 60, 0.1, 22, 52})
            .cwd = "/opt/homebrew/var/postgresql@16";
    }

    void servers() {
        const std::string node = "/opt/homebrew/bin/node", ruby = "/opt/homebrew/opt/ruby/bin/ruby";
        const std::string vite = "node_modules/vite/bin/vite.js";
        tool(71302, 5301, node, {"node", vite, "--port", "5174"}, folders_.atlas, {612.4, 108.6, 8.6, 2, 5}).shape =
            since(300);
        tool(71333, 71302, "/opt/homebrew/bin/esbuild", {"esbuild", "--service=0.25.1", "--ping"}, folders_.atlas,
             {96.3, 4, 0, 2, 5})
            .shape = since(300);
        tool(69018, 1, node, {"node", vite}, folders_.atlas, {251.7, 124.8, 0, 192, 9.7});
        tool(61544, 5304, node, {"node", "node_modules/.bin/storybook", "dev", "-p", "6006"}, folders_.docs,
             {1.84 * gb, 968, 0.2, 340, 26})
            .shape = leaking;
        tool(71377, 5302, node, {"node", "node_modules/.bin/metro", "start"}, folders_.mobile,
             {438, 204.9, 0.4, 38, 400 * minute})
            .shape = since(400);
        const std::vector<std::string> puma = {"ruby", "bin/puma", "-C", "config/puma.rb"};
        tool(70221, 5303, ruby, puma, folders_.billing, {371.4, 30.9, 0.4, 46, 7});
        tool(70622, 5302, ruby, puma, folders_.billing, {290.2, 26, 38.2, 0.1, 280 * minute}).shape = since(280);
        tool(70623, 70622, ruby, {"puma: cluster worker 0: 70622 [billing-api]"}, folders_.billing,
             {181.3, 25, 0, 9, 280 * minute})
            .shape = since(280);
        tool(71420, 5303, node, {"node", "node_modules/.bin/webpack", "serve"}, folders_.billing,
             {168.3, 40.2, 0, 161, 7});
    }

    void agents() {
        const std::string checkout = "Checkout flow refactor";
        auto& first = tool(80110, 5301, folders_.claude, {"claude"}, folders_.atlas, {642, 96, 30.9, 0.2, 4.3});
        first.session = checkout;
        tool(80155, 80110, "/opt/homebrew/bin/mcp-server-github", {"mcp-server-github"}, std::nullopt,
             {88.1, 30, 0, 41, 4.3})
            .session = checkout;
        auto& second = tool(80440, 5303, folders_.claude, {"claude"}, std::nullopt, {284.6, 80, 0.1, 51, 55 * minute});
        second.session = "Claude 4f2a, no prompt yet";
        second.shape = since(55);
        auto& third =
            tool(80502, 5303, folders_.claude, {"claude"}, folders_.billing, {281, 38.6, 0.2, 12, 22 * minute});
        third.session = "Invoices";
        third.shape = since(22);
        for (auto& proc : procs_) {
            if (proc.path == folders_.claude) proc.name = "claude";
        }
    }

    Place place_;
    Roots folders_;
    std::vector<Proc> procs_;
};

}  // namespace

Roots Roots::in(const Place& place) {
    const auto developer = place.home + "/Developer/";
    return {.atlas = developer + "atlas-web",
            .billing = developer + "billing-api",
            .mobile = developer + "mobile-app",
            .docs = developer + "docs-site",
            .claude = place.home + "/.local/share/claude/versions/2.1.30"};
}

std::vector<Proc> processes(const Place& place) { return Cast(place).all(); }

std::optional<std::string> simulatorName(std::string_view wanted) {
    return wanted == device ? std::optional<std::string>("iPhone 17 Pro") : std::nullopt;
}

}  // namespace tolvane::Demo
