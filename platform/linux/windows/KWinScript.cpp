#include "platform/linux/windows/KWinScript.h"

#include <cstddef>

namespace tolvane::linuxhost::KWinScript {

namespace {

constexpr const char* beginning = R"js((function () {
    var isNew = workspace.windowActivated !== undefined;
    function clean(value) {
        return value === undefined || value === null ? '' : String(value).replace(/[\t\n]/g, ' ');
    }
    function describe(window) {
        return [clean(window.pid), clean(window.desktopFileName), clean(window.resourceClass)];
    }
    function all() { return isNew ? workspace.windowList() : workspace.clientList(); }
)js";

constexpr const char* watchingPart = R"js(    function tell(window) {
        var known = window ? describe(window) : ['', '', ''];
        report('Activated', known[0], known[1], known[2]);
    }
    function list(gone) {
        var lines = [];
        all().forEach(function (window) { if (window !== gone) lines.push(describe(window).join('\t')); });
        report('Listed', lines.join('\n'));
    }
    (isNew ? workspace.windowAdded : workspace.clientAdded).connect(function () { list(null); });
    (isNew ? workspace.windowRemoved : workspace.clientRemoved).connect(list);
    (isNew ? workspace.windowActivated : workspace.clientActivated).connect(tell);
    list(null);
    tell(isNew ? workspace.activeWindow : workspace.activeClient);
})();
)js";

constexpr const char* closingPart = R"js(    all().forEach(function (window) {
        if (wanted.indexOf(describe(window).join('\t')) >= 0) window.closeWindow();
    });
    report('Closed');
})();
)js";

/// Windows choose their own names: nothing in a name may be read as part of the script.
std::string quoted(const std::string& text) {
    static constexpr const char* digits = "0123456789abcdef";
    std::string result = "'";
    for (const char each : text) {
        const auto byte = static_cast<unsigned char>(each);
        if (byte < 0x20 || each == '\'' || each == '\\') {
            result += {'\\', 'x', digits[byte >> 4U], digits[byte & 0xFU]};
        } else {
            result += each;
        }
    }
    return result + "'";
}

std::string reportTo(const std::string& listener) {
    return "    var report = callDBus.bind(null, " + quoted(listener) + ", " + quoted(path) + ", " + quoted(interface) +
           ");\n";
}

}  // namespace

std::string watch(const std::string& listener) { return beginning + reportTo(listener) + watchingPart; }

std::string close(const std::string& listener, const std::vector<std::string>& lines) {
    std::string wanted = "    var wanted = [";
    for (std::size_t index = 0; index < lines.size(); ++index) {
        wanted += (index == 0 ? "" : ", ") + quoted(lines[index]);
    }
    return beginning + reportTo(listener) + wanted + "];\n" + closingPart;
}

}  // namespace tolvane::linuxhost::KWinScript
