#pragma once

#include <cstdlib>
#include <memory>

namespace tolvane::linuxhost {

struct FreeReply {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply or event of the display server, freed with this object.
template <typename Reply>
using Owned = std::unique_ptr<Reply, FreeReply>;

template <typename Reply>
Owned<Reply> owned(Reply* reply) {
    return Owned<Reply>(reply);
}

}  // namespace tolvane::linuxhost
