#include "platform/linux/applications/LinuxApplications.h"

#include <algorithm>

#include "base/files/Files.h"
#include "platform/linux/applications/AppUnit.h"
#include "platform/linux/machine/LinuxClockFacts.h"
#include "platform/linux/processes/ProcStat.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

constexpr Seconds timeBetweenChecks{60};
constexpr std::size_t procFileLimit = 1U << 20U;
/// This program's desktop entry.
constexpr std::string_view ownIdentifier = "dev.tolvane.Tolvane";

std::vector<std::string> split(std::string_view list) {
    std::vector<std::string> parts;
    while (!list.empty()) {
        const auto end = list.find(':');
        if (end != 0) parts.emplace_back(list.substr(0, end));
        list = end == std::string_view::npos ? std::string_view() : list.substr(end + 1);
    }
    return parts;
}

/// Answers one question about one process; reads only the files that the answer needs.
class Search {
public:
    Search(const ApplicationIndex& index, const std::string& proc, Pid pid, std::string_view executable)
        : index_(index), proc_(proc), pid_(pid), executable_(executable) {}

    const DesktopEntry* application() const {
        const DesktopEntry* group = ofControlGroup();
        if (group == nullptr) group = ofSandbox();
        if (group != nullptr && startsOtherPeoplesPrograms(*group)) return isProgramOf(*group) ? group : ofProgram();
        if (group != nullptr && !isStartedByHand()) return group;
        return ofProgram();
    }

private:
    /// Like terminals, this program starts commands that stay in its control group but do not belong to it.
    static bool startsOtherPeoplesPrograms(const DesktopEntry& entry) {
        return entry.isTerminalEmulator || entry.identifier == ownIdentifier;
    }

    std::string read(Pid pid, const char* name) const {
        return Files::readKernelFile(proc_ + "/" + std::to_string(pid) + "/" + name, procFileLimit).value_or("");
    }

    const DesktopEntry* ofControlGroup() const {
        for (const std::string& identifier : appIdentifiersOfCgroup(read(pid_, "cgroup"))) {
            if (const auto* entry = index_.withIdentifier(identifier)) return entry;
        }
        return nullptr;
    }

    const DesktopEntry* ofSandbox() const {
        if (const auto package = snapOfExecutable(executable_)) return index_.ofSnap(*package);
        const auto identifier = flatpakIdentifier(read(pid_, "root/.flatpak-info"));
        return identifier ? index_.withIdentifier(*identifier) : nullptr;
    }

    const DesktopEntry* ofProgram() const {
        return executable_.empty() || isNoIdentity(Scan::lastComponent(executable_)) ? nullptr
                                                                                     : index_.ofExecutable(executable_);
    }

    /// The terminal itself, or its server: "gnome-terminal-server" of "gnome-terminal".
    bool isProgramOf(const DesktopEntry& terminal) const {
        const auto program = Scan::lastComponent(programOfCommand(terminal.command));
        return ofProgram() == &terminal || (!program.empty() && Scan::lastComponent(executable_).starts_with(program));
    }

    /// True in a session with a terminal window of its own, or below a login shell.
    bool isStartedByHand() const {
        const auto stat = readProcStat(proc_, pid_);
        if (!stat) return false;
        return stat->isOnPseudoTerminal() || (stat->session > 1 && isLoginShell(stat->session));
    }

    /// A login shell has a dash before its name.
    bool isLoginShell(Pid pid) const {
        const std::string command = read(pid, "cmdline");
        return command.starts_with('-') && isShellName(std::string_view(command).substr(1, command.find('\0') - 1));
    }

    const ApplicationIndex& index_;
    const std::string& proc_;
    Pid pid_;
    std::string_view executable_;
};

}  // namespace

LinuxApplications::LinuxApplications(Settings settings) : settings_(std::move(settings)) {
    if (!settings_.uptime) settings_.uptime = linuxhost::uptime;
}

LinuxApplications::Settings LinuxApplications::settingsFor(const LinuxFolders& folders,
                                                           const Environment& environment) {
    Settings settings;
    auto& data = settings.places.dataFolders;
    data = folders.dataFolders();
    for (const std::string& more :
         {folders.applicationSupport() + "/flatpak/exports/share", std::string("/var/lib/flatpak/exports/share"),
          std::string("/var/lib/snapd/desktop")}) {
        if (std::ranges::find(data, more) == data.end()) data.push_back(more);
    }
    settings.places.programFolders = split(environment("PATH").value_or("/usr/local/bin:/usr/bin:/bin"));
    return settings;
}

std::shared_ptr<const ApplicationIndex> LinuxApplications::index() {
    const std::scoped_lock lock(mutex_);
    const Seconds now = settings_.uptime();
    const bool isToBeChecked = !index_ || now - checkedAt_ >= timeBetweenChecks;
    if (isToBeChecked) checkedAt_ = now;
    if (!index_ || (isToBeChecked && index_->isOutdated()))
        index_ = std::make_shared<const ApplicationIndex>(settings_.places);
    return index_;
}

std::optional<Text> LinuxApplications::appPath(Pid pid, std::string_view executable) {
    const auto entries = index();
    const DesktopEntry* entry = Search(*entries, settings_.proc, pid, executable).application();
    if (entry == nullptr) return std::nullopt;
    return entry->path;
}

std::optional<Text> LinuxApplications::appID(std::string_view appPath) {
    const auto entries = index();
    const DesktopEntry* entry = entries->atPath(appPath);
    if (entry == nullptr) return std::nullopt;
    return Text(entry->identifier);
}

std::optional<Text> LinuxApplications::pathOfIdentifier(std::string_view identifier) {
    const auto entries = index();
    const DesktopEntry* entry = entries->withIdentifier(identifier);
    if (entry == nullptr) return std::nullopt;
    return entry->path;
}

std::optional<Text> LinuxApplications::pathOfWindow(std::string_view application) {
    const auto entries = index();
    const DesktopEntry* entry = entries->ofWindow(application);
    if (entry == nullptr) return std::nullopt;
    return entry->path;
}

std::optional<std::string> LinuxApplications::identifierOfWindow(std::string_view application) {
    const auto entries = index();
    const DesktopEntry* entry = entries->ofWindow(application);
    if (entry == nullptr) return std::nullopt;
    return entry->identifier;
}

std::string LinuxApplications::displayName(std::string_view appPath) {
    const auto entries = index();
    const DesktopEntry* entry = entries->atPath(appPath);
    return entry == nullptr ? std::string(Scan::lastComponent(appPath)) : entry->name;
}

std::string LinuxApplications::iconName(std::string_view appPath) {
    const auto entries = index();
    const DesktopEntry* entry = entries->atPath(appPath);
    return entry == nullptr ? std::string() : entry->icon;
}

}  // namespace tolvane::linuxhost
