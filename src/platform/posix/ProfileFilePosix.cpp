#include <string>

#include "platform/ProfileFile.h"
#include "platform/posix/FileContents.h"
#include "platform/posix/NativePath.h"
#include "profile_text/ProfileEdit.h"
#include "profile_text/ProfileText.h"

namespace vastrelline {

namespace {

// What cannot be read is read as an empty profile: all its keys are missing.
ProfileText ReadProfile(const wchar_t* path) {
    if (path == nullptr) return ProfileText({});
    return ProfileText(ReadFileContents(NativePath(path)).value_or(std::string()));
}

}  // namespace

int32_t PlatformProfileInt(const wchar_t* section, const wchar_t* key, int32_t defaultValue,
                           const wchar_t* path) {
    return ReadProfileTextInt(ReadProfile(path), section, key, defaultValue);
}

uint32_t PlatformProfileString(const wchar_t* section, const wchar_t* key, const wchar_t* defaultValue,
                               wchar_t* buffer, uint32_t size, const wchar_t* path) {
    return ReadProfileTextString(ReadProfile(path), section, key, defaultValue, buffer, size);
}

uint32_t PlatformProfileSection(const wchar_t* section, wchar_t* buffer, uint32_t size, const wchar_t* path) {
    return ReadProfileTextSection(ReadProfile(path), section, buffer, size);
}

bool PlatformWriteProfile(const wchar_t* section, const wchar_t* key, const wchar_t* value,
                          const wchar_t* path) {
    if (path == nullptr) return false;
    return UpdateFileContents(NativePath(path), [&](std::string& bytes) {
        switch (EditProfile(bytes, section, key, value)) {
            case ProfileEditResult::Unchanged:
                return ContentsEdit::Keep;
            case ProfileEditResult::Changed:
                return ContentsEdit::Replace;
            case ProfileEditResult::Impossible:
                break;
        }
        return ContentsEdit::Refuse;
    });
}

}  // namespace vastrelline
