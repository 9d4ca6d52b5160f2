#include "platform/linux/machine/PressureReading.h"

#include "platform/linux/text/KernelText.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

/// The number of "avg10=12.57".
std::optional<double> average(std::string_view word, std::string_view key) {
    if (!word.starts_with(key)) return std::nullopt;
    return wholeNumber<double>(word.substr(key.size()));
}

bool readAverages(std::string_view line, double& ten, double& sixty) {
    const auto averageOf10 = average(Scan::word(line), "avg10=");
    const auto averageOf60 = average(Scan::word(line), "avg60=");
    if (!averageOf10 || !averageOf60) return false;
    ten = *averageOf10;
    sixty = *averageOf60;
    return true;
}

double availableShare(const MemInfo& memory) {
    if (memory.total == 0) return 1;
    return static_cast<double>(memory.available) / static_cast<double>(memory.total);
}

bool isWarning(const PressureAverages& averages, double available) {
    using namespace PressureThresholds;
    const bool stalls =
        (averages.some10 >= warningSome10 && averages.some60 >= warningSome60) || averages.some60 >= lastingSome60;
    return stalls && available <= warningAvailableShare;
}

bool isCritical(const PressureAverages& averages, double available) {
    using namespace PressureThresholds;
    return averages.full10 >= criticalFull10 && averages.full60 >= criticalFull60 &&
           available <= criticalAvailableShare;
}

}  // namespace

std::optional<PressureAverages> parsePressure(std::string_view text) {
    PressureAverages averages;
    bool hasSome = false;
    while (!text.empty()) {
        auto line = Scan::take(text, '\n');
        const auto kind = Scan::word(line);
        if (kind == "some") hasSome = readAverages(line, averages.some10, averages.some60);
        if (kind == "full") readAverages(line, averages.full10, averages.full60);
    }
    if (!hasSome) return std::nullopt;
    return averages;
}

int pressureLevel(const PressureAverages& averages, const MemInfo& memory) {
    const double available = availableShare(memory);
    if (isCritical(averages, available)) return 4;
    return isWarning(averages, available) ? 2 : 1;
}

}  // namespace tolvane::linuxhost
