#pragma once

#include <string>

namespace tolvane::fakes {

/// The folder tests/fixtures, with files recorded on real machines. Only one source file knows where the clone lies, so
/// that all others compile to the same code in every clone.
std::string fixtures();

}  // namespace tolvane::fakes
