#include "core/sampling/ProcSample.h"

#include <algorithm>

#include "base/Paths.h"
#include "platform/SystemPaths.h"

namespace tolvane {

std::string ProcSample::commandLine() const { return args.empty() ? path.str() : args.joined(" "); }

bool ProcSample::isSystem() const { return hostSaysSystem.value_or(isSystemPath(path)); }

std::string_view ProcSample::ruleMatch() const {
    for (std::size_t index = 1; index < args.size(); ++index) {
        const auto argument = args[index];
        if (!argument.starts_with('-') && argument.find('/') != std::string_view::npos) {
            return Paths::lastComponent(argument);
        }
    }
    return name;
}

std::uint64_t ProcSample::inRAM(double ratio) const {
    const std::uint64_t packed = std::min(compressed, footprint);
    const double divisor = ratio > 1.0 ? ratio : 1.0;
    return footprint - packed + static_cast<std::uint64_t>(static_cast<double>(packed) / divisor);
}

}  // namespace tolvane
