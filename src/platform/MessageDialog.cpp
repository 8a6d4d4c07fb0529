// SPDX-License-Identifier: Apache-2.0
#include "platform/MessageDialog.h"

#include <atomic>

#include "platform/FloatingPointScope.h"
#include "platform/PlatformMessage.h"

namespace vastrelline {

namespace {

// Frames may run in several threads while a test swaps the handler.
std::atomic<MessageHandler> currentHandler{nullptr};

}  // namespace

// As long as a box stands the host's own windows go on with their work on this thread: if that leaves another
// floating-point state behind, the rest of the call must not be computed in it.
void ShowMessage(const std::wstring& text, MessageIcon icon) {
    const FloatingPointScope kept;
    if (const MessageHandler handler = currentHandler.load())
        handler(text, icon);
    else
        ShowPlatformMessage(text, icon);
}

MessageHandler SetMessageHandler(MessageHandler handler) { return currentHandler.exchange(handler); }

}  // namespace vastrelline
