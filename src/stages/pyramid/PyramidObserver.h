// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace vastrelline {

// Looks on while pyramid enhancement works, for those who tune a profile. It is given what each step made, by
// the name under which a run saves it, and changes nothing. Without an observer none of it is prepared.
class PyramidObserver {
public:
    virtual ~PyramidObserver() = default;

    // pixels   width * height; a band's are signed
    virtual void SeeFrame(const std::wstring& name, const uint16_t* pixels, int32_t width,
                          int32_t height) = 0;

    // responses   of a band to its values, from `first` on
    virtual void SeeResponse(const std::wstring& name, int32_t first, std::span<const int32_t> responses) = 0;

protected:
    PyramidObserver() = default;
    PyramidObserver(const PyramidObserver&) = default;
    PyramidObserver& operator=(const PyramidObserver&) = default;
    PyramidObserver(PyramidObserver&&) = default;
    PyramidObserver& operator=(PyramidObserver&&) = default;
};

}  // namespace vastrelline
