#include "platform/macos/kernel/Pipe.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace tolvane::machost {

Pipe::Pipe() {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return;
    output_ = ends[0];
    input_ = ends[1];
    for (const int end : ends) ::fcntl(end, F_SETFD, FD_CLOEXEC);
}

Pipe::~Pipe() {
    closeInput();
    if (output_ >= 0) ::close(output_);
}

void Pipe::closeInput() {
    if (input_ >= 0) ::close(std::exchange(input_, -1));
}

}  // namespace tolvane::machost
