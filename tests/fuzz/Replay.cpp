#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <system_error>
#include <vector>

// libFuzzer names this function.
// NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Inputs are cut at every byte up to here, as a reader would see a file that ends too early.
constexpr std::size_t longestCut = 1024;

Bytes bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The fuzzer gets a buffer of exactly this size, so that a sanitizer sees a read past its end.
void tryPrefix(const Bytes& input, std::size_t size) {
    const Bytes exact(input.begin(), input.begin() + static_cast<std::ptrdiff_t>(size));
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

void replay(const Bytes& input) {
    for (std::size_t size = 0; size < std::min(input.size(), longestCut); ++size) tryPrefix(input, size);
    tryPrefix(input, input.size());
}

}  // namespace

/// Runs a fuzzer over kept inputs: NAMEFuzz FOLDER. A finding aborts, so reaching the end is success.
int main(int argc, char** argv) {
    std::size_t replayed = 0;
    for (const char* folder : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
        std::error_code missing;
        for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
            replay(bytesOf(entry.path()));
            ++replayed;
        }
    }
    std::printf("%zu inputs replayed\n", replayed);
    return replayed == 0 ? 1 : 0;
}
