// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "frames/Frame.h"
#include "proof/ProofManifest.h"

namespace vastrelline {

// Phantoms that several entries share are made once. Any number of threads may ask.
class PhantomShelf {
public:
    // Stays as long as the shelf.
    const Frame& Find(const PhantomRecipe& recipe);

private:
    struct Place {
        PhantomRecipe recipe;
        std::once_flag isMade;
        Frame frame;
    };

    Place& PlaceOf(const PhantomRecipe& recipe);

    std::mutex mutex_;
    std::vector<std::unique_ptr<Place>> places_;
};

}  // namespace vastrelline
