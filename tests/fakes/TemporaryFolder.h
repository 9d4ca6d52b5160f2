#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace tolvane::fakes {

/// A new empty folder that goes with this object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "tolvane.XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    std::string operator/(std::string_view name) const { return (path_ / name).string(); }
    /// Writes a file, its folders first.
    void write(std::string_view name, std::string_view text) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        // Anew, for a file system may flush one that is cut and filled again.
        std::filesystem::remove(path_ / name);
        std::ofstream(path_ / name, std::ios::binary) << text;
    }

    /// The bytes of a file; empty when it is not there.
    std::string read(std::string_view name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path path_;
};

}  // namespace tolvane::fakes
