#pragma once

#include <spawn.h>

#include <string>
#include <vector>

namespace tolvane::linuxhost {

/// What a new program is to find: descriptors, folder, session, signals. Every signal has its default effect and none
/// is blocked, whatever this program chose for itself; descriptors that are not given are closed, since all of ours
/// close at an exec.
class SpawnPlan {
public:
    SpawnPlan();
    ~SpawnPlan();
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    // In the order in which they are to happen.
    void open(int descriptor, const char* path, int flags, mode_t mode = 0);
    void duplicate(int from, int to);
    void changeFolder(const char* path);
    /// The program leads a session of its own.
    void newSession();

    /// The program's pid; -1 when it could not be started. `path` is not searched for. Allocates nothing.
    pid_t spawn(const char* path, char* const* arguments, char* const* environment) const;

private:
    void note(int error) { failed_ = failed_ || error != 0; }
    void setFlags(short flags);

    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
    bool failed_ = false;
};

/// The texts as an exec takes them, a null at the end. They outlive what this returns.
std::vector<char*> execVector(const std::vector<std::string>& texts);

}  // namespace tolvane::linuxhost
