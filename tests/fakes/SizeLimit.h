#pragma once

#include <sys/resource.h>

#include <csignal>

namespace tolvane::fakes {

/// While this exists, no file can grow past the size: a write is cut short there, as on a disk that fills up.
class SizeLimit {
public:
    explicit SizeLimit(rlim_t bytes) {
        ignored_ = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    SizeLimit(const SizeLimit&) = delete;
    SizeLimit& operator=(const SizeLimit&) = delete;
    ~SizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, ignored_);
    }

private:
    rlimit before_{};
    void (*ignored_)(int) = SIG_DFL;
};

}  // namespace tolvane::fakes
