#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vastrelline {

// The whole number behind a key of a section in a profile text. Section and key match without regard to
// case, the first of several counts, lines from ';' on are comments; of the value only the leading digits
// count, so that a text gives 0. A missing section or key gives `defaultValue`. Texts in UTF-16LE with their
// mark at the start are understood as far as they are plain ASCII.
int32_t ProfileNumber(std::string_view text, std::string_view section, std::string_view key,
                      int32_t defaultValue);

// The top level of the pictures that a profile's section makes: its key OUTPUTRANGE. 4095 if that is missing,
// unreadable, or no level of a pixel (1 to 65535).
int32_t ReadOutputRange(const std::string& profilePath, const std::string& section);

}  // namespace vastrelline
