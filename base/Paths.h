#pragma once

#include <string>
#include <string_view>

namespace tolvane::Paths {

/// Ignores trailing slashes: "/a/b/" gives "b", "/" gives "/", "" gives "".
std::string_view lastComponent(std::string_view path);

/// The path without its last component: "/a/b" gives "/a", "/a" gives "/", "a" gives "".
std::string_view parent(std::string_view path);

/// Cuts the extension off the last component. A name whose only dot is its first character stays whole, and so does
/// a dot at the end.
std::string_view withoutExtension(std::string_view path);

/// Returns "~" for the home folder itself, "~/rest" for a path below it, and any other path unchanged.
std::string abbreviatedWithTilde(std::string_view path, std::string_view home);

}  // namespace tolvane::Paths
