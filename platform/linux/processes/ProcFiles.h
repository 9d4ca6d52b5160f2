#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Pid.h"
#include "base/files/FileDescriptor.h"

namespace tolvane::linuxhost {

/// "4312/stat" without allocating.
class PidPath {
public:
    PidPath(Pid pid, std::string_view leaf);
    /// Implicit, so that it can be passed as a path.
    // NOLINTNEXTLINE(google-explicit-constructor)
    operator const char*() const { return text_.data(); }

private:
    // Left uninitialised past the NUL: clearing it would cost on every file of a sweep.
    std::array<char, 64> text_;
};

/// The files below /proc, or below a folder that looks like it, through one open descriptor of the folder.
/// One thread at a time: results point into a buffer that the next call of the same kind reuses.
/// Paths are relative to the folder. A file that cannot be read is nullopt.
class ProcFiles {
public:
    using Observer = std::function<void(std::string_view path)>;

    /// `observer` is called with each file, link or folder that is asked for.
    explicit ProcFiles(const std::string& root, Observer observer = {});

    /// The folders whose names are numbers, ascending. False when the folder cannot be listed.
    bool listPids(std::vector<Pid>& pids);
    /// A file that the kernel returns in one read, as it does all small files about one process.
    std::optional<std::string_view> read(const char* path);
    /// A file of any size; cut at 4 MB.
    bool readWhole(const char* path, std::string& content);
    std::optional<std::string_view> readLink(const char* path);
    /// The names in a folder, except "." and "..".
    bool listNames(const char* path, std::vector<std::string>& names);
    /// A descriptor to keep and read again.
    FileDescriptor open(const char* path);
    /// A file in one read, from its start.
    std::optional<std::string_view> readAgain(const FileDescriptor& file);
    /// A file of any size, from its start; empty when it cannot be read.
    void readAgainWhole(const FileDescriptor& file, std::string& content);

private:
    /// Listing 5000 pids takes 10 calls at this size.
    static constexpr std::size_t bufferSize = 256 * 1024;
    static constexpr std::size_t wholeLimit = 4 * 1024 * 1024;

    void note(std::string_view path) const {
        if (observer_) observer_(path);
    }

    FileDescriptor folder_;
    Observer observer_;
    std::unique_ptr<char[]> buffer_;
    std::array<char, 4096> link_{};
};

/// The program that a process runs, for a single question; empty when the process is gone or shielded.
std::string executableOf(const std::string& proc, Pid pid);

}  // namespace tolvane::linuxhost
