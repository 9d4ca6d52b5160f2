#pragma once

#include <spawn.h>

#include <string>
#include <vector>

namespace tolvane::linuxhost {

/// The descriptors, folder, session and signals that a new program starts with. Every signal has its default effect and
/// none is blocked, whatever this program chose for itself. Descriptors that are not passed on are closed, since all of
/// ours close at exec.
class SpawnPlan {
public:
    SpawnPlan();
    ~SpawnPlan();
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    // These happen in the order of the calls.
    void open(int descriptor, const char* path, int flags, mode_t mode = 0);
    void duplicate(int from, int to);
    void changeFolder(const char* path);
    /// The program leads a session of its own.
    void newSession();

    /// Returns the program's pid, or -1 when it could not be started. `path` is not searched for. Allocates nothing.
    pid_t spawn(const char* path, char* const* arguments, char* const* environment) const;

private:
    void note(int error) { failed_ = failed_ || error != 0; }
    void setFlags(short flags);

    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
    bool failed_ = false;
};

/// Pointers to the texts in the form that exec takes, ended by a null. `texts` must outlive the result.
std::vector<char*> execVector(const std::vector<std::string>& texts);

}  // namespace tolvane::linuxhost
