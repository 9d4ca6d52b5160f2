#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "core/projects/GitBranch.h"

namespace {

/// Three files of a repository, separated by zero bytes: HEAD, packed refs, and the folder that worktrees share.
class Repository {
public:
    Repository() {
        std::string pattern = (std::filesystem::temp_directory_path() / "repository.XXXXXX").string();
        root = ::mkdtemp(pattern.data());
        std::filesystem::create_directory(root + "/.git");
    }
    Repository(const Repository&) = delete;
    Repository& operator=(const Repository&) = delete;
    ~Repository() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    void write(const char* name, std::string_view bytes) const {
        std::ofstream(root + "/.git/" + name, std::ios::binary | std::ios::trunc) << bytes;
    }

    std::string root;
};

std::string_view take(std::string_view& rest) {
    const auto end = rest.find('\0');
    const auto part = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    return part;
}

}  // namespace

/// A repository of any bytes is read, and only a branch with a name can be deleted.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Repository repository;
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    for (const char* name : {"HEAD", "packed-refs", "commondir"}) repository.write(name, take(rest));
    const auto state = tolvane::GitBranch::read(repository.root);
    if (state.deleted && !state.branch) std::abort();
    return 0;
}
