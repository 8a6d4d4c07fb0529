// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <array>
#include <cstddef>

#include "platform/DynamicLibrary.h"
#include "platform/Machine.h"
#include "platform/windows/WideText.h"

namespace vastrelline {
namespace {

// A text of the system's own table of machines and programs.
std::string TableText(const wchar_t* key, const wchar_t* name) {
    constexpr size_t kMostUnits = 256;
    std::array<wchar_t, kMostUnits> text{};
    DWORD bytes = sizeof(text);
    const LSTATUS state =
        RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
    return state == ERROR_SUCCESS ? NarrowToUtf8(text.data()) : std::string();
}

std::string HostName() {
    std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> name{};
    DWORD length = static_cast<DWORD>(name.size());
    return GetComputerNameW(name.data(), &length) != FALSE ? NarrowToUtf8(name.data()) : std::string();
}

}  // namespace

MachineNames AskMachine() {
    constexpr const wchar_t* kSystem = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
    constexpr const wchar_t* kProcessor = L"HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0";
    const char* const architecture = sizeof(void*) == 8 ? "x86_64" : "i686";
    std::string processor = TableText(kProcessor, L"ProcessorNameString");
    while (processor.ends_with(' ')) processor.pop_back();
    return {HostName(), "Windows", TableText(kSystem, L"CurrentBuildNumber"), architecture, processor};
}

}  // namespace vastrelline
