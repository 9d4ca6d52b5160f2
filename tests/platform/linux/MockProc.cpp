#include "tests/platform/linux/MockProc.h"

#include <stdlib.h>

#include <fstream>

namespace tolvane::linuxhost::testing {

namespace {

std::string number(std::uint64_t value) { return std::to_string(value); }

std::string statLine(const MockProcess& process) {
    const std::string address = process.program ? number(0x400000 + process.program * 4096) : "0";
    const std::string code = process.program ? address : "1";
    return number(static_cast<std::uint64_t>(process.pid)) + " (" + process.comm + ") " + process.state + " " +
           std::to_string(process.ppid) + " 1 1 " + number(process.terminal) + " -1 " + number(process.flags) + " " +
           number(process.minorFaults) + " 0 0 0 " + number(process.userTicks) + " " + number(process.systemTicks) +
           " 0 0 20 0 1 0 " + number(process.startTicks) + " 1000000 " + number(process.residentPages) +
           " 18446744073709551615 " + code + " " + code + " " + address + " 0 0 0 0 0 0 0 0 0 17 0 0 0 0 0 0 0 0 0 " +
           address + " 0 0 0 0\n";
}

std::string statusText(const MockProcess& process) {
    const std::string uid = number(process.uid);
    std::string text = "Name:\ttool\nUmask:\t0022\nUid:\t" + uid + "\t" + uid + "\t" + uid + "\t" + uid + "\nNSpid:\t" +
                       std::to_string(process.pid) + (process.inOtherPidNamespace ? "\t1" : "") + "\n";
    if ((process.flags & 0x200000) != 0) return text;
    return text + "RssAnon:\t" + number(process.anonymous) + " kB\nVmSwap:\t" + number(process.swapped) + " kB\n";
}

void link(const std::filesystem::path& path, const std::string& target) {
    std::filesystem::remove(path);
    if (!target.empty()) std::filesystem::create_symlink(target, path);
}

}  // namespace

MockProc::MockProc() {
    std::string pattern = (std::filesystem::temp_directory_path() / "mock-proc.XXXXXX").string();
    root_ = ::mkdtemp(pattern.data());
    std::filesystem::create_directories(root_ / "proc/self");
    std::filesystem::create_directories(root_ / "groups");
    std::filesystem::create_directories(root_ / "home");
}

MockProc::~MockProc() {
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
}

void MockProc::write(const std::string& path, const std::string& content) {
    const auto file = root_ / "proc" / path;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

void MockProc::put(const MockProcess& process) {
    const std::string pid = std::to_string(process.pid) + "/";
    write(pid + "stat", statLine(process));
    write(pid + "status", statusText(process));
    write(pid + "cgroup", "0::" + process.group + "\n");
    write(pid + "cmdline", process.arguments);
    write(pid + "environ", process.environment);
    link(root_ / "proc" / pid / "exe", process.executable);
    link(root_ / "proc" / pid / "cwd", process.folder);
}

void MockProc::remove(Pid pid) { std::filesystem::remove_all(root_ / "proc" / std::to_string(pid)); }

void MockProc::removeFile(Pid pid, const std::string& leaf) {
    std::filesystem::remove(root_ / "proc" / std::to_string(pid) / leaf);
}

void MockProc::mountGroups() {
    write("self/mounts", "proc /proc proc rw 0 0\ncgroup2 " + (root_ / "groups").string() + " cgroup2 rw 0 0\n");
}

void MockProc::writeGroupFile(const std::string& group, const std::string& leaf, const std::string& content) {
    const auto folder = root_ / "groups" / group.substr(1);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / leaf, std::ios::binary) << content;
}

void MockProc::setUsage(const std::string& group, std::uint64_t microseconds) {
    writeGroupFile(group, "cpu.stat", "usage_usec " + number(microseconds) + "\nuser_usec 0\nsystem_usec 0\n");
}

LinuxInspectionOptions MockProc::options() {
    return {.clock = {.bootUnixSeconds = 1.7e9, .ticksPerSecond = 100},
            .uid = 1000,
            .home = home(),
            .procFolder = folder(),
            .observer = [this](std::string_view path) { ++accesses[std::string(path)]; },
            .uptime = [this] { return now; }};
}

std::unique_ptr<LinuxProcessInspection> MockProc::inspection() {
    return std::make_unique<LinuxProcessInspection>(options());
}

int MockProc::timesRead(const std::string& path) const {
    const auto found = accesses.find(path);
    return found == accesses.end() ? 0 : found->second;
}

int MockProc::timesReadBelow(Pid pid) const {
    int sum = 0;
    for (const auto& [path, times] : accesses) {
        if (path.starts_with(std::to_string(pid) + "/")) sum += times;
    }
    return sum;
}

const std::map<Pid, Reading>& Sweeper::sweep() {
    readings.clear();
    for (const Pid pid : inspection_.allPids()) {
        Reading reading{.bsd = inspection_.bsdRecord(pid)};
        if (!reading.bsd) continue;
        reading.usage = inspection_.usage(pid);
        reading.executable = inspection_.executablePath(pid);
        const std::pair life{reading.bsd->startTime, reading.bsd->programStamp};
        if (const auto found = known_.find(pid); found == known_.end() || found->second != life) {
            known_[pid] = life;
            arguments[pid] = inspection_.arguments(pid);
        }
        reading.memory = inspection_.memoryRecord(pid);
        reading.folder = inspection_.workingDirectory(pid);
        reading.system = inspection_.belongsToSystem(pid);
        readings.emplace(pid, std::move(reading));
    }
    return readings;
}

}  // namespace tolvane::linuxhost::testing
