#include "base/files/TextFile.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/Simdjson.h"

namespace tolvane {

std::optional<std::string> readTextFile(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (file.bad() || !simdjson::validate_utf8(text.data(), text.size())) return std::nullopt;
    return text;
}

}  // namespace tolvane
