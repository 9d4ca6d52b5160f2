#pragma once

#include <ctime>

namespace tolvane::desktop {

/// What this program took of the processor since it was made or asked last: a limit on it holds on a busy machine too.
class ProcessorTime {
public:
    /// Milliseconds.
    double taken() {
        const auto since = start_;
        start_ = std::clock();
        return 1000.0 * static_cast<double>(start_ - since) / CLOCKS_PER_SEC;
    }

private:
    std::clock_t start_ = std::clock();
};

}  // namespace tolvane::desktop
