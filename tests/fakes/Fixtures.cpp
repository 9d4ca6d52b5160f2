#include "tests/fakes/Fixtures.h"

namespace tolvane::fakes {

std::string fixtures() {
    return TOLVANE_FIXTURES;
}

}  // namespace tolvane::fakes
