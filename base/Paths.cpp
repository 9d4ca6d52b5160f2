#include "base/Paths.h"

namespace tolvane::Paths {

namespace {

std::string_view withoutSlashesAtEnd(std::string_view path) {
    while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
    return path;
}

}  // namespace

std::string_view lastComponent(std::string_view path) {
    path = withoutSlashesAtEnd(path);
    if (path == "/") return path;
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view parent(std::string_view path) {
    path = withoutSlashesAtEnd(path);
    const auto slash = path.rfind('/');
    if (slash == std::string_view::npos) return {};
    return withoutSlashesAtEnd(path.substr(0, slash == 0 ? 1 : slash));
}

std::string_view withoutExtension(std::string_view path) {
    const auto name = lastComponent(path);
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size()) return path;
    return path.substr(0, static_cast<std::size_t>(name.data() - path.data()) + dot);
}

std::string abbreviatedWithTilde(std::string_view path, std::string_view home) {
    if (home.empty() || home == "/" || !path.starts_with(home)) return std::string(path);
    const auto rest = path.substr(home.size());
    if (!rest.empty() && rest.front() != '/') return std::string(path);
    return "~" + std::string(rest);
}

}  // namespace tolvane::Paths
