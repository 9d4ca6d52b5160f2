#include "platform/linux/processes/ProcCgroup.h"

#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

ProcCgroup parseProcCgroup(std::string_view text) {
    ProcCgroup groups;
    while (!text.empty()) {
        auto line = Scan::take(text, '\n');
        const auto number = Scan::take(line, ':');
        const auto controllers = Scan::take(line, ':');
        if (number == "0" && controllers.empty()) groups.unified = line;
        if (controllers == "name=systemd") groups.systemd = line;
    }
    return groups;
}

std::string_view cgroupMount(std::string_view mounts) {
    while (!mounts.empty()) {
        auto line = Scan::take(mounts, '\n');
        Scan::take(line, ' ');
        const auto folder = Scan::take(line, ' ');
        if (Scan::take(line, ' ') == "cgroup2") return folder;
    }
    return {};
}

namespace {

bool isUserManager(std::string_view component) {
    return component.starts_with("user@") && component.ends_with(".service");
}

void noteBelowUserManager(std::string_view component, UnitFacts& facts) {
    if (component == "init.scope") {
        facts.userManager = true;
    } else if (component.starts_with("app-") || component.starts_with("snap.")) {
        facts.application = true;
    } else if (component.ends_with(".service")) {
        facts.managedService = true;
    } else if (component.ends_with(".scope")) {
        facts.userScope = true;
    }
}

}  // namespace

UnitFacts unitFacts(std::string_view path) {
    UnitFacts facts;
    while (!path.empty()) {
        const auto component = Scan::take(path, '/');
        if (component == "system.slice" || component == "init.scope") facts.system = true;
        if (component == "session.slice") facts.session = true;
        if (facts.inUserManager) noteBelowUserManager(component, facts);
        if (isUserManager(component)) facts.inUserManager = true;
    }
    if (facts.application) facts.managedService = false;
    return facts;
}

}  // namespace tolvane::linuxhost
