// SPDX-License-Identifier: Apache-2.0
#include "config/CommonSettings.h"

#include <algorithm>

#include "config/CRegistryIO.h"

namespace vastrelline {

namespace {

// With defaults of their own: what the record holds when made are the values of an empty section.
void FillSettings(const CRegistryIO& profile, const std::wstring& section, CommonSettings& record) {
    record.CAPTION = profile.ReadProfileString(section, L"CAPTION", L"");
    record.VERSION = profile.ReadProfileString(section, L"VERSION", L"");
    record.PROCMODE = profile.ReadProfileInt(section, L"PROCMODE", 0);
    record.SAVE_IMAGE = profile.ReadProfileInt(section, L"SAVE_IMAGE", 0);
    record.SAVE_LOG = profile.ReadProfileInt(section, L"SAVE_LOG", 0);
    record.AUTOWINDOWING = profile.ReadProfileInt(section, L"AUTOWINDOWING", 0);
    record.WRITE_PATH = profile.ReadProfileString(section, L"WRITE_PATH", L"");
    record.BITALLOCATED = profile.ReadProfileInt(section, L"BITALLOCATED", 16);
    record.BITSTORED = profile.ReadProfileInt(section, L"BITSTORED", 12);
    record.LITTLEENDIAN = profile.ReadProfileInt(section, L"LITTLEENDIAN", 1);
    record.SATURATION_VALUE = profile.ReadProfileInt(section, L"SATURATION_VALUE", 4095);
    record.OUTPUTRANGE = profile.ReadProfileInt(section, L"OUTPUTRANGE", 4095);
    record.SETCLIPBIN = profile.ReadProfileDouble(section, L"SETCLIPBIN", 0.5);
    record.MSGBOX_ENABLE = profile.ReadProfileInt(section, L"MSGBOX_ENABLE", 0);
    record.INTRAORAL_MASK = profile.ReadProfileInt(section, L"INTRAORAL_MASK", 1);
    record.INVERSE_INTENSITY = profile.ReadProfileInt(section, L"INVERSE_INTENSITY", 1);
    record.INVERSE_LOGRATIO = profile.ReadProfileDouble(section, L"INVERSE_LOGRATIO", 0.2);
    record.FunctionCount = profile.ReadProfileInt(section, L"FunctionCount", 0);
    record.SAVE_BACKUP = profile.ReadProfileInt(section, L"SAVE_BACKUP", 0);
    record.SAVE_BACKUPPATH = profile.ReadProfileString(section, L"SAVE_BACKUPPATH", L"");
}

}  // namespace

int32_t ReadCommonSettings(const std::wstring& iniPath, const std::wstring& section, CommonSettings& record) {
    const CRegistryIO profile(nullptr, iniPath.c_str(), 1);
    if (profile.SectionHasEntries(section) == 0) return 0;
    FillSettings(profile, section, record);
    return 1;
}

CommonSettings ReadStageSettings(const std::wstring& iniPath, const std::wstring& section) {
    CommonSettings settings;
    FillSettings(CRegistryIO(nullptr, iniPath.c_str(), 1), section, settings);
    return settings;
}

int32_t MaxValueOfBits(int32_t bitsStored) {
    const int32_t bits = std::clamp(bitsStored, 0, 31);
    return static_cast<int32_t>((uint32_t{1} << bits) - 1);
}

}  // namespace vastrelline
