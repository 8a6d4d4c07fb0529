// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace vastrelline {

// One value of a file of JSON that anybody may have written, with its place in it: whoever asks it for
// something else than it is learns where.
class ManifestFields {
public:
    // Both outlive this.
    ManifestFields(const std::string& file, const nlohmann::json& value, std::string place)
        : file_(file), value_(value), place_(std::move(place)) {}

    // Errors   InputError: the value is no object, the field is missing or of another type
    ManifestFields Field(const char* name) const;
    bool Has(const char* name) const;
    std::string Text(const char* name) const;
    std::string Hash(const char* name) const;  // 64 hexadecimal digits in lower case
    std::string TextOr(const char* name, const std::string& otherwise) const;
    int64_t Whole(const char* name) const;
    double Number(const char* name) const;

    // Elements of an array.
    size_t Count() const;
    ManifestFields At(size_t index) const;

    [[noreturn]] void Refuse(const std::string& what) const;

private:
    const std::string& file_;
    const nlohmann::json& value_;
    std::string place_;  // "entries[3].frame"
};

// Errors   InputError for what is no JSON, or nested deeper than `maxDepth`
nlohmann::json ParseManifest(const std::string& file, std::string_view text, int maxDepth);

}  // namespace vastrelline
