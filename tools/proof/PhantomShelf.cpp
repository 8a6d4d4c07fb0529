// SPDX-License-Identifier: Apache-2.0
#include "proof/PhantomShelf.h"

#include "phantom/PhantomFrame.h"

namespace vastrelline {

PhantomShelf::Place& PhantomShelf::PlaceOf(const PhantomRecipe& recipe) {
    const std::lock_guard lock(mutex_);
    for (const std::unique_ptr<Place>& place : places_)
        if (place->recipe == recipe) return *place;
    places_.push_back(std::make_unique<Place>());
    places_.back()->recipe = recipe;
    return *places_.back();
}

const Frame& PhantomShelf::Find(const PhantomRecipe& recipe) {
    Place& place = PlaceOf(recipe);
    std::call_once(place.isMade,
                   [&] { place.frame = MakePhantomFrame(recipe.size, recipe.dose, recipe.seed); });
    return place.frame;
}

}  // namespace vastrelline
