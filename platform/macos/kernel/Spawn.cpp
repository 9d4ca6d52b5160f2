#include "platform/macos/kernel/Spawn.h"

#include <spawn.h>
#include <sys/types.h>
#include <unistd.h>

// The system's own table, which no Darwin header declares.
extern char** environ;  // NOLINT(readability-identifier-naming)

namespace tolvane::machost {

namespace {

/// What the child does first. Of several errors the first one stays.
class Actions {
public:
    Actions() : error_(::posix_spawn_file_actions_init(&actions_)), begun_(error_ == 0) {}
    Actions(const Actions&) = delete;
    Actions& operator=(const Actions&) = delete;
    ~Actions() {
        if (begun_) ::posix_spawn_file_actions_destroy(&actions_);
    }

    void operator()(const OpenFile& open) {
        note(::posix_spawn_file_actions_addopen(&actions_, open.descriptor, open.path.c_str(), open.flags,
                                                static_cast<mode_t>(open.mode)));
    }
    void operator()(const Duplicate& pair) {
        note(::posix_spawn_file_actions_adddup2(&actions_, pair.source, pair.descriptor));
    }
    void operator()(const ChangeFolder& folder) {
        note(::posix_spawn_file_actions_addchdir_np(&actions_, folder.path.c_str()));
    }

    int error() const { return error_; }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    void note(int error) {
        if (error_ == 0) error_ = error;
    }

    posix_spawn_file_actions_t actions_{};
    int error_;
    bool begun_;
};

class Attributes {
public:
    explicit Attributes(short flags) : error_(::posix_spawnattr_init(&attributes_)), begun_(error_ == 0) {
        if (begun_) error_ = ::posix_spawnattr_setflags(&attributes_, flags);
    }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() {
        if (begun_) ::posix_spawnattr_destroy(&attributes_);
    }

    int error() const { return error_; }
    const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
    int error_;
    bool begun_;
};

/// A list that ends with a null pointer; it points into `texts`.
std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> list;
    list.reserve(texts.size() + 1);
    for (std::string& text : texts) list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

}  // namespace

int spawn(const SpawnRequest& request, Pid* pid) {
    Actions actions;
    for (const SpawnAction& action : request.actions) {
        if (actions.error() == 0) std::visit(actions, action);
    }
    if (actions.error() != 0) return actions.error();
    const Attributes attributes(request.flags);
    if (attributes.error() != 0) return attributes.error();
    auto arguments = request.arguments;
    auto environment = request.environment;
    return ::posix_spawn(pid, request.path.c_str(), actions.get(), attributes.get(), pointers(arguments).data(),
                         pointers(environment).data());
}

std::vector<std::string> ownEnvironment() {
    std::vector<std::string> entries;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) entries.emplace_back(*entry);
    return entries;
}

}  // namespace tolvane::machost
