#pragma once

#include <string>
#include <string_view>

namespace tolvane::Paths {

/// Slashes at the end are ignored: "/a/b/" gives "b", "/" gives "/", "" gives "".
std::string_view lastComponent(std::string_view path);

/// The path without its last component: "/a/b" gives "/a", "/a" gives "/", "a" gives "".
std::string_view parent(std::string_view path);

/// Without the last component's extension; a name that begins with its only dot keeps it, a dot at the end stays.
std::string_view withoutExtension(std::string_view path);

/// "~" for the home folder itself, "~/rest" for what lies below it, else the path.
std::string abbreviatedWithTilde(std::string_view path, std::string_view home);

}  // namespace tolvane::Paths
