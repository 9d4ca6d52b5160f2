#pragma once

#include <utility>

namespace tolvane::linuxhost {

/// Owns a file descriptor and closes it. Move-only; the empty one owns nothing.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~Descriptor();

    explicit operator bool() const { return descriptor_ >= 0; }
    int get() const { return descriptor_; }

private:
    int descriptor_ = -1;
};

}  // namespace tolvane::linuxhost
