#include "platform/linux/Descriptor.h"

#include <unistd.h>

namespace tolvane::linuxhost {

Descriptor::~Descriptor() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

}  // namespace tolvane::linuxhost
