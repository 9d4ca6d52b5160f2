#pragma once

#include "tests/fakes/Fixtures.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <stdlib.h>

namespace tolvane::linuxhost {

/// A folder for one test, removed with its contents.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tolvane-test-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& path() const { return path_; }
    std::string at(const std::string& name) const { return path_ + "/" + name; }

    /// Writes a file, making its folders, and returns its path.
    std::string write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(std::filesystem::path(at(name)).parent_path());
        std::ofstream(at(name), std::ios::binary) << text;
        return at(name);
    }
    std::string read(const std::string& name) const {
        std::ifstream file(at(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    bool has(const std::string& name) const { return std::filesystem::exists(at(name)); }

private:
    std::string path_;
};

/// A file of tests/fixtures, as bytes.
inline std::string fixture(const std::string& name) {
    std::ifstream file(fakes::fixtures() + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tolvane::linuxhost
