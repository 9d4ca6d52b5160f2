#include "core/UUID.h"

#include <uuid/uuid.h>

namespace tolvane {

namespace {
constexpr std::size_t textLength = 36;
}

UUID UUID::random() {
    UUID result;
    uuid_generate_random(result.bytes.data());
    return result;
}

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != textLength) return std::nullopt;
    UUID result;
    if (uuid_parse(std::string(text).c_str(), result.bytes.data()) != 0) return std::nullopt;
    return result;
}

std::string UUID::text() const {
    std::array<char, textLength + 1> buffer{};
    uuid_unparse_upper(bytes.data(), buffer.data());
    return buffer.data();
}

}  // namespace tolvane
