#include "platform/MessageDialog.h"

#include <atomic>

#include "platform/PlatformMessage.h"

namespace vastrelline {

namespace {

// Frames may run in several threads while a test swaps the handler.
std::atomic<MessageHandler> currentHandler{nullptr};

}  // namespace

void ShowMessage(const std::wstring& text, MessageIcon icon) {
    if (const MessageHandler handler = currentHandler.load())
        handler(text, icon);
    else
        ShowPlatformMessage(text, icon);
}

MessageHandler SetMessageHandler(MessageHandler handler) { return currentHandler.exchange(handler); }

}  // namespace vastrelline
