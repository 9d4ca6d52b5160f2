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
    /// Implicit: it stands wherever a path goes.
    // NOLINTNEXTLINE(google-explicit-constructor)
    operator const char*() const { return text_.data(); }

private:
    // Filled up to its end by the constructor; clearing the rest first would cost every file of a sweep.
    std::array<char, 64> text_;
};

/// The files below /proc, or below a folder that looks like it, through one kept descriptor of the folder.
/// One thread at a time: what a call returns stands in a buffer that the next call of the same kind uses again.
/// Paths are relative to the folder. What cannot be read is none.
class ProcFiles {
public:
    using Observer = std::function<void(std::string_view path)>;

    /// `observer` hears of each file, link or folder that is asked for.
    explicit ProcFiles(const std::string& root, Observer observer = {});

    /// The folders that are numbers, ascending as the kernel lists them. False when the folder cannot be listed.
    bool listPids(std::vector<Pid>& pids);
    /// A file that the kernel hands over in one piece, as it does with all small ones about one process.
    std::optional<std::string_view> read(const char* path);
    /// A file of any size up to 4 MB, more of it is cut.
    bool readWhole(const char* path, std::string& content);
    std::optional<std::string_view> readLink(const char* path);
    /// The names in a folder, but for "." and "..".
    bool listNames(const char* path, std::vector<std::string>& names);
    /// To keep and read again.
    FileDescriptor open(const char* path);
    /// From its begin, a file in one piece.
    std::optional<std::string_view> readAgain(const FileDescriptor& file);
    /// From its begin, a file of any size; empty when it cannot be read.
    void readAgainWhole(const FileDescriptor& file, std::string& content);

private:
    /// A sweep of 5000 pids takes 10 calls with this much.
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
