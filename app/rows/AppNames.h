#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "app/rows/TableRow.h"
#include "platform/Applications.h"

namespace tolvane {

/// Display names of applications without ".app". Asks the host for each name once and remembers it, because every
/// redraw needs the name of every group. Main thread.
class AppNames {
public:
    /// `applications` outlives this.
    explicit AppNames(Applications& applications) : applications_(applications) {}

    const std::string& of(std::string_view appPath);

    /// Names for folding rows, with a cache that lives as long as any copy.
    static RowNames rowNames(Applications& applications, std::string home);

private:
    Applications& applications_;
    std::map<std::string, std::string, std::less<>> names_;
};

}  // namespace tolvane
