#include "platform/linux/text/RepairedText.h"

#include <glib.h>

#include <memory>

namespace tolvane::linuxhost {

Text repairedText(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find('\0'));
    const auto length = static_cast<gssize>(bytes.size());
    if (g_utf8_validate(bytes.data(), length, nullptr)) return Text(bytes);
    const std::unique_ptr<char, decltype(&g_free)> valid(g_utf8_make_valid(bytes.data(), length), &g_free);
    return Text(std::string_view(valid.get()));
}

void assign(Text& text, std::string_view bytes) {
    if (text.view() != bytes) text = repairedText(bytes);
}

}  // namespace tolvane::linuxhost
