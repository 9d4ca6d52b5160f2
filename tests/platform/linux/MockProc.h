#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/processes/LinuxProcessInspection.h"

namespace tolvane::linuxhost::testing {

/// What a made-up process shows in its files. Sizes in kB, times in ticks.
struct MockProcess {
    Pid pid = 0;
    Pid ppid = 1;
    std::string comm = "tool";
    char state = 'S';
    std::uint32_t uid = 1000;
    std::uint64_t terminal = 0;
    std::uint64_t flags = 0x400000;
    std::uint64_t minorFaults = 10;
    std::uint64_t userTicks = 5;
    std::uint64_t systemTicks = 2;
    std::uint64_t startTicks = 1000;
    std::uint64_t residentPages = 100;
    /// Yields the addresses that an exec sets; 0 shows them hidden.
    std::uint64_t program = 1;
    std::uint64_t anonymous = 400;
    std::uint64_t swapped = 0;
    bool inOtherPidNamespace = false;
    std::string group = "/";
    std::string executable = "/usr/bin/tool";
    std::string folder = "/home/ada";
    /// As in the file, NULs included.
    std::string arguments = std::string("tool\0", 5);
    std::string environment = {};
};

/// A folder that looks like /proc, with a unified hierarchy of control groups beside it.
class MockProc {
public:
    MockProc();
    ~MockProc();
    MockProc(const MockProc&) = delete;
    MockProc& operator=(const MockProc&) = delete;

    /// Writes all files of the process, new or changed.
    void put(const MockProcess& process);
    void remove(Pid pid);
    /// Removes one of a process's files or links.
    void removeFile(Pid pid, const std::string& leaf);
    void write(const std::string& path, const std::string& content);
    void setUsage(const std::string& group, std::uint64_t microseconds);
    void writeGroupFile(const std::string& group, const std::string& leaf, const std::string& content);
    /// Without this there is no unified hierarchy to find.
    void mountGroups();

    std::string folder() const { return (root_ / "proc").string(); }
    std::string home() const { return (root_ / "home").string(); }

    LinuxInspectionOptions options();
    std::unique_ptr<LinuxProcessInspection> inspection();

    /// How often each file was read since the last `forgetAccesses`.
    std::map<std::string, int> accesses;
    int timesRead(const std::string& path) const;
    int timesReadBelow(Pid pid) const;
    /// The time on the options' clock.
    Seconds now{1000};

private:
    std::filesystem::path root_;
};

/// The facts of one process as a reader would take them in a sweep.
struct Reading {
    std::optional<BSDRecord> bsd = std::nullopt;
    std::optional<UsageRecord> usage = std::nullopt;
    std::optional<Text> executable = std::nullopt;
    std::optional<MemoryRecord> memory = std::nullopt;
    std::optional<Text> folder = std::nullopt;
    std::optional<bool> system = std::nullopt;

    bool operator==(const Reading&) const = default;
};

/// One sweep over everything, in listing order, as a reader does it; reads arguments whenever start or program changed.
class Sweeper {
public:
    explicit Sweeper(ProcessInspection& inspection) : inspection_(inspection) {}

    const std::map<Pid, Reading>& sweep();
    std::map<Pid, Reading> readings;
    std::map<Pid, std::optional<TextList>> arguments;

private:
    ProcessInspection& inspection_;
    std::map<Pid, std::pair<Date, std::uint64_t>> known_;
};

}  // namespace tolvane::linuxhost::testing
