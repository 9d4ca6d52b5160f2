#pragma once

#include <string>

namespace tolvane::fakes {

/// The folder of files that were recorded on real machines: tests/fixtures. Only one source knows where the clone
/// stands, so that all others compile to the same in every clone.
std::string fixtures();

}  // namespace tolvane::fakes
