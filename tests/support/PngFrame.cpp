// SPDX-License-Identifier: Apache-2.0
#include "support/PngFrame.h"

#include <stdexcept>
#include <string>

#ifndef VASTRELLINE_HAS_PNG

namespace vastrelline {

Frame ReadPngFrame(const std::filesystem::path& path) {
    throw std::runtime_error(path.string() + ": there is no PNG library here");
}

}  // namespace vastrelline

#else

#include <png.h>

#include <cstdint>
#include <memory>

#include "support/TemporaryFolder.h"

namespace vastrelline {

// The library's simple interface takes 16 bits as linear light; asked for the same, it converts nothing.
Frame ReadPngFrame(const std::filesystem::path& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    const std::unique_ptr<png_image, decltype(&png_image_free)> owner(&image, png_image_free);
    const std::string bytes = ReadBytes(path);
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0)
        throw std::runtime_error(path.string() + ": " + image.message);
    if (image.format != PNG_FORMAT_LINEAR_Y)
        throw std::runtime_error(path.string() + ": not plain grey with 16 bits");
    Frame frame(static_cast<int32_t>(image.width), static_cast<int32_t>(image.height));
    if (png_image_finish_read(&image, nullptr, frame.Data(), 0, nullptr) == 0)
        throw std::runtime_error(path.string() + ": " + image.message);
    return frame;
}

}  // namespace vastrelline

#endif
