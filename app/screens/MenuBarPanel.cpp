#include "app/screens/MenuBarPanel.h"

#include "app/Format.h"

namespace tolvane {

std::string MenuBarPanel::load(const CPULoad& cpu, std::string_view locale) {
    return part((cpu.user + cpu.system) * cpu.cores, cpu.cores, locale);
}

std::string MenuBarPanel::part(double share, int count, std::string_view locale) {
    return Format::decimal(share, 1, 1, locale) + " of " + std::to_string(count) + " cores";
}

}  // namespace tolvane
