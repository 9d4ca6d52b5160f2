#pragma once

#include <memory>

#include "app/model/ModelState.h"

namespace tolvane::fakes {

/// Makes a state for a model to own and keeps its address for the test: the one way past the model's verbs. `kept` is
/// valid as long as the model exists.
inline std::unique_ptr<ModelState> keptState(ModelState*& kept) {
    auto made = std::make_unique<ModelState>();
    kept = made.get();
    return made;
}

}  // namespace tolvane::fakes
