#include "core/rules/RulesDocument.h"

#include <cstddef>
#include <utility>

#include "base/Paths.h"
#include "base/UTF8.h"
#include "base/files/Files.h"
#include "base/files/Replacement.h"
#include "core/rules/RuleFile.h"

namespace tolvane {

namespace {

/// Room for more than ten thousand rules.
constexpr std::size_t largestFile = std::size_t{4} << 20U;

}  // namespace

Result<RulesDocument, std::string> RulesDocument::read(const std::string& path) {
    const auto bytes = Files::readUpTo(path, largestFile);
    if (!bytes) return bytes.failure().text();
    auto decoded = RuleFile::decode(*bytes);
    if (!decoded) return RuleFile::notARuleFile(UTF8::repaired(Paths::lastComponent(path)));
    return RulesDocument{std::move(*decoded)};
}

std::optional<std::string> RulesDocument::write(const std::string& path) const {
    if (const auto error = Files::makeFolder(std::string(Paths::parent(path)))) return error->text();
    Files::Replacement file(path, Files::Access::usual);
    if (file.write(RuleFile::encode(rules)) && file.commit()) return std::nullopt;
    return FileError{.code = file.failure(), .path = path}.text();
}

}  // namespace tolvane
