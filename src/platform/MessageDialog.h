// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace vastrelline {

enum class MessageIcon : int32_t { None, Error };

// Shows a text to the person at the machine.
//
// Windows  a modal message box: the call returns when it is dismissed
// POSIX    one text on standard error, and the run goes on
void ShowMessage(const std::wstring& text, MessageIcon icon);

using MessageHandler = void (*)(const std::wstring& text, MessageIcon icon);

// Sends all later messages to `handler` in place of the platform; null restores the platform. Returns the
// handler that stood before. For tests: no test may wait for a person.
MessageHandler SetMessageHandler(MessageHandler handler);

}  // namespace vastrelline
