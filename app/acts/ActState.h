#pragma once

#include <map>
#include <vector>

#include "core/projects/Docker.h"
#include "core/projects/ParkedProject.h"
#include "core/sampling/Priority.h"
#include "core/sampling/ProcRow.h"

namespace tolvane {

/// What acts read from the latest sample, and what they change for the rest of the program to see. Main thread.
class ActState {
public:
    virtual ~ActState() = default;

    /// The processes of the latest sample.
    virtual const std::vector<ProcRow>& rows() const = 0;

    /// Processes that this program has lowered to background priority.
    virtual const std::map<Pid, Lowered>& loans() const = 0;
    virtual void setLoans(std::map<Pid, Lowered> loans) = 0;

    virtual const std::vector<Container>& containers() const = 0;
    virtual void setContainers(std::vector<Container> containers) = 0;

    /// The most recently parked first.
    virtual const std::vector<ParkedProject>& parked() const = 0;
    virtual void setParked(std::vector<ParkedProject> parked) = 0;

    /// Takes a sample now if a window is open, so that it shows the result.
    virtual void resample() = 0;
};

}  // namespace tolvane
