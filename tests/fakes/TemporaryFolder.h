#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace tolvane::fakes {

/// A new empty folder, removed together with this object.
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
    /// Writes a file, creating its folders first.
    void write(std::string_view name, std::string_view text) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        // Remove it first: a file system may flush a file that is truncated and rewritten.
        std::filesystem::remove(path_ / name);
        std::ofstream(path_ / name, std::ios::binary) << text;
    }

    /// The bytes of a file; empty when the file does not exist.
    std::string read(std::string_view name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path path_;
};

}  // namespace tolvane::fakes
