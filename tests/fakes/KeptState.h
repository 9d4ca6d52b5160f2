#pragma once

#include <memory>

#include "app/model/ModelState.h"

namespace tolvane::fakes {

/// A state for a model to own whose address the test keeps: the one way past the model's verbs. `kept` holds as long as
/// the model does.
inline std::unique_ptr<ModelState> keptState(ModelState*& kept) {
    auto made = std::make_unique<ModelState>();
    kept = made.get();
    return made;
}

}  // namespace tolvane::fakes
