#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

#include "base/Date.h"

namespace tolvane::bench {

/// Milliseconds of CPU time that this process spends on `work`.
double cpuMillisecondsOf(const std::function<void()>& work);

/// CPU time of this thread since it began.
Seconds threadTime();

double medianOf(std::vector<double> values);

/// The program `population` beside this one, running; ended with this object.
class RunningPopulation {
public:
    /// Returns when all processes exist. The first of `arguments` is their number.
    explicit RunningPopulation(const std::vector<std::string>& arguments);
    ~RunningPopulation();
    RunningPopulation(const RunningPopulation&) = delete;
    RunningPopulation& operator=(const RunningPopulation&) = delete;

private:
    pid_t pid_ = -1;
};

}  // namespace tolvane::bench
