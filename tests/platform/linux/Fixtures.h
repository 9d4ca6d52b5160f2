#pragma once

#include "tests/fakes/Fixtures.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace tolvane::linuxhost::testing {

/// The bytes of a recorded file below tests/fixtures/linux/processes.
inline std::string fixture(const std::string& name) {
    std::ifstream file(fakes::fixtures() + "/linux/processes/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace tolvane::linuxhost::testing
