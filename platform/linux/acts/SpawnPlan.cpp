#include "platform/linux/acts/SpawnPlan.h"

#include <csignal>

namespace tolvane::linuxhost {

namespace {

constexpr short always = POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK;

}  // namespace

// The calls fill what they are given.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
SpawnPlan::SpawnPlan() {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawnattr_init(&attributes_);
    sigset_t signals{};
    ::sigemptyset(&signals);
    note(::posix_spawnattr_setsigmask(&attributes_, &signals));
    ::sigfillset(&signals);
    note(::posix_spawnattr_setsigdefault(&attributes_, &signals));
    setFlags(always);
}

SpawnPlan::~SpawnPlan() {
    ::posix_spawnattr_destroy(&attributes_);
    ::posix_spawn_file_actions_destroy(&actions_);
}

void SpawnPlan::open(int descriptor, const char* path, int flags, mode_t mode) {
    note(::posix_spawn_file_actions_addopen(&actions_, descriptor, path, flags, mode));
}

void SpawnPlan::duplicate(int from, int to) { note(::posix_spawn_file_actions_adddup2(&actions_, from, to)); }

void SpawnPlan::changeFolder(const char* path) { note(::posix_spawn_file_actions_addchdir_np(&actions_, path)); }

void SpawnPlan::newSession() { setFlags(always | POSIX_SPAWN_SETSID); }

void SpawnPlan::setFlags(short flags) { note(::posix_spawnattr_setflags(&attributes_, flags)); }

pid_t SpawnPlan::spawn(const char* path, char* const* arguments, char* const* environment) const {
    pid_t pid = -1;
    if (failed_ || ::posix_spawn(&pid, path, &actions_, &attributes_, arguments, environment) != 0) return -1;
    return pid;
}

std::vector<char*> execVector(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    // exec takes pointers to non-const, but changes nothing.
    for (const auto& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace tolvane::linuxhost
