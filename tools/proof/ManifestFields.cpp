// SPDX-License-Identifier: Apache-2.0
#include "proof/ManifestFields.h"

#include <algorithm>

#include "messages/ToolError.h"

namespace vastrelline {
namespace {

using Json = nlohmann::json;

constexpr const char* kRemedy = "docs/tool-json.md tells what a manifest holds";

bool IsHashDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); }

// "[json.exception.parse_error.101] parse error at line 1, column 2: ..." without the library's own number.
std::string WithoutNumber(const std::string& text) {
    const size_t end = text.find("] ");
    return text.starts_with('[') && end != std::string::npos ? text.substr(end + 2) : text;
}

}  // namespace

void ManifestFields::Refuse(const std::string& what) const {
    throw InputError(file_, (place_.empty() ? "the manifest" : place_) + " " + what, kRemedy);
}

bool ManifestFields::Has(const char* name) const {
    if (!value_.is_object()) Refuse("is no object");
    const auto found = value_.find(name);
    return found != value_.end() && !found->is_null();
}

ManifestFields ManifestFields::Field(const char* name) const {
    if (!Has(name)) Refuse(std::string("has no '") + name + "'");
    return {file_, value_.at(name), (place_.empty() ? "" : place_ + ".") + name};
}

std::string ManifestFields::Text(const char* name) const {
    const ManifestFields field = Field(name);
    if (!field.value_.is_string()) field.Refuse("is no text");
    std::string text = field.value_.get<std::string>();
    if (text.find('\0') != std::string::npos) field.Refuse("holds a zero character");
    return text;
}

std::string ManifestFields::Hash(const char* name) const {
    constexpr size_t kDigits = 64;
    std::string hash = Text(name);
    if (hash.size() != kDigits || !std::all_of(hash.begin(), hash.end(), IsHashDigit))
        Field(name).Refuse("is no SHA-256 of 64 digits in lower case");
    return hash;
}

std::string ManifestFields::TextOr(const char* name, const std::string& otherwise) const {
    return Has(name) ? Text(name) : otherwise;
}

int64_t ManifestFields::Whole(const char* name) const {
    const ManifestFields field = Field(name);
    const bool isTooLarge = field.value_.is_number_unsigned() && field.value_.get<uint64_t>() > INT64_MAX;
    if (!field.value_.is_number_integer() || isTooLarge) field.Refuse("is no whole number");
    return field.value_.get<int64_t>();
}

double ManifestFields::Number(const char* name) const {
    const ManifestFields field = Field(name);
    if (!field.value_.is_number()) field.Refuse("is no number");
    return field.value_.get<double>();
}

size_t ManifestFields::Count() const {
    if (!value_.is_array()) Refuse("is no array");
    return value_.size();
}

ManifestFields ManifestFields::At(size_t index) const {
    return {file_, value_.at(index), place_ + "[" + std::to_string(index) + "]"};
}

nlohmann::json ParseManifest(const std::string& file, std::string_view text, int maxDepth) {
    bool isTooDeep = false;
    const auto watch = [&](int depth, Json::parse_event_t /*event*/, Json& /*parsed*/) {
        isTooDeep = isTooDeep || depth > maxDepth;
        return !isTooDeep;  // what is false here is not kept
    };
    std::string reason;
    try {
        Json json = Json::parse(text, watch);
        if (!isTooDeep) return json;
    } catch (const Json::exception& error) {
        reason = WithoutNumber(error.what());
    }
    if (isTooDeep) reason = "it is nested deeper than " + std::to_string(maxDepth) + " levels";
    throw InputError(file, "is no manifest: " + reason, kRemedy);
}

}  // namespace vastrelline
