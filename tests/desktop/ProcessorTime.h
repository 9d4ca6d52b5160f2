#pragma once

#include <ctime>

namespace tolvane::desktop {

/// CPU time that this process used since construction or the last call: unlike wall time, it can be limited on a busy
/// machine too.
class ProcessorTime {
public:
    /// In milliseconds.
    double taken() {
        const auto since = start_;
        start_ = std::clock();
        return 1000.0 * static_cast<double>(start_ - since) / CLOCKS_PER_SEC;
    }

private:
    std::clock_t start_ = std::clock();
};

}  // namespace tolvane::desktop
