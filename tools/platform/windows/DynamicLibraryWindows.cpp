// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "platform/DynamicLibrary.h"
#include "platform/PathText.h"
#include "platform/Reason.h"
#include "platform/windows/WideText.h"

namespace vastrelline {

const char* const kLibraryLeaf = "Vastrelline.dll";

namespace {

constexpr size_t kMostPathUnits = 32768;

// Stands for the system's window: the same text, and the answer that a person would give.
int WINAPI PrintMessage(HWND /*owner*/, LPCWSTR text, LPCWSTR /*title*/, UINT /*style*/) {
    const std::string line = NarrowToUtf8(text).append("\n");
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line.data(), static_cast<DWORD>(line.size()), &written,
              nullptr);
    return IDOK;
}

// A loaded image: tables are found by their distance from its begin.
class LoadedImage {
public:
    explicit LoadedImage(HMODULE module) : base_(reinterpret_cast<uint8_t*>(module)) {}

    template <typename Entry>
    Entry* At(size_t distance) const {
        return reinterpret_cast<Entry*>(base_ + distance);
    }

    const IMAGE_IMPORT_DESCRIPTOR* Imports() const {
        const auto* const head = At<IMAGE_NT_HEADERS>(static_cast<size_t>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
        const IMAGE_DATA_DIRECTORY& table = head->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        return table.VirtualAddress == 0 ? nullptr : At<IMAGE_IMPORT_DESCRIPTOR>(table.VirtualAddress);
    }

private:
    uint8_t* base_;
};

// The place where the image keeps the address of a function that it imports by name; nullptr: it does not.
IMAGE_THUNK_DATA* FindImport(const LoadedImage& image, const char* function) {
    const IMAGE_IMPORT_DESCRIPTOR* library = image.Imports();
    for (; library != nullptr && library->Name != 0; ++library) {
        if (library->OriginalFirstThunk == 0) continue;
        const auto* name = image.At<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
        auto* address = image.At<IMAGE_THUNK_DATA>(library->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++address) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* const entry =
                image.At<IMAGE_IMPORT_BY_NAME>(static_cast<size_t>(name->u1.AddressOfData));
            if (std::strcmp(reinterpret_cast<const char*>(entry->Name), function) == 0) return address;
        }
    }
    return nullptr;
}

}  // namespace

DynamicLibrary DynamicLibrary::Load(const std::string& path, std::string& reason) {
    DynamicLibrary library;
    std::error_code ignored;
    // By its whole path: else a library of the same name that is loaded already would be taken for it.
    const std::filesystem::path whole = std::filesystem::absolute(PathOf(path), ignored).make_preferred();
    library.handle_ = LoadLibraryExW(whole.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    reason = library.handle_ == nullptr ? DescribeReason(LastSystemReason()) : std::string();
    return library;
}

void* DynamicLibrary::Find(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

std::string FindLoadedLibrary() {
    const HMODULE module = GetModuleHandleA(kLibraryLeaf);
    if (module == nullptr) return {};
    std::wstring path(kMostPathUnits, L'\0');
    const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    return NarrowToUtf8(std::wstring_view(path).substr(0, length));
}

void PrintMessageBoxes(void* function) {
    HMODULE module = nullptr;
    constexpr DWORD kHow =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExW(kHow, static_cast<LPCWSTR>(function), &module) == FALSE) return;
    IMAGE_THUNK_DATA* const place = FindImport(LoadedImage(module), "MessageBoxW");
    if (place == nullptr) return;
    DWORD before = 0;
    if (VirtualProtect(place, sizeof(*place), PAGE_READWRITE, &before) == FALSE) return;
    place->u1.Function = reinterpret_cast<ULONG_PTR>(&PrintMessage);
    VirtualProtect(place, sizeof(*place), before, &before);
}

}  // namespace vastrelline
