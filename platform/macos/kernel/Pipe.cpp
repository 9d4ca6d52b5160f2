#include "platform/macos/kernel/Pipe.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>

namespace tolvane::machost {

Pipe::Pipe() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return;
    output_.reset(ends[0]);
    input_.reset(ends[1]);
    for (const int end : ends) ::fcntl(end, F_SETFD, FD_CLOEXEC);
}

}  // namespace tolvane::machost
