#pragma once

#include <utility>

#include "platform/macos/kernel/KernelCalls.h"

namespace tolvane::machost {

/// One right to a port, given back when this object ends. `kernel` outlives it.
class PortRight {
public:
    PortRight(const KernelCalls& kernel, Port port) : kernel_(&kernel), port_(port) {}
    PortRight(PortRight&& other) noexcept : kernel_(other.kernel_), port_(std::exchange(other.port_, 0)) {}
    PortRight(const PortRight&) = delete;
    PortRight& operator=(const PortRight&) = delete;
    PortRight& operator=(PortRight&&) = delete;
    ~PortRight() {
        if (port_ != 0) kernel_->giveBackPort(kernel_->ownTask(), port_);
    }

    Port get() const { return port_; }
    explicit operator bool() const { return port_ != 0; }

private:
    const KernelCalls* kernel_;
    Port port_;
};

}  // namespace tolvane::machost
