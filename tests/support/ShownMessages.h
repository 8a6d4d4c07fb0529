// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/MessageDialog.h"

namespace vastrelline {

// Collects what would be shown to the person at the machine, as long as the object lives.
class ShownMessages {
public:
    ShownMessages() : before_(SetMessageHandler(Collect)) { Shared().clear(); }
    ~ShownMessages() { SetMessageHandler(before_); }
    ShownMessages(const ShownMessages&) = delete;
    ShownMessages& operator=(const ShownMessages&) = delete;

    struct Message {
        std::wstring text;
        MessageIcon icon;
        friend bool operator==(const Message&, const Message&) = default;
    };

    // Hands over what was shown since the last call.
    static std::vector<Message> Take() {
        std::vector<Message> taken;
        taken.swap(Shared());
        return taken;
    }

    // How many were shown since then.
    static size_t Count() { return Shared().size(); }

    // Whether nothing was shown since then but this, once.
    static bool AreOnly(const std::wstring& text, MessageIcon icon) {
        return Shared() == std::vector<Message>{{text, icon}};
    }

private:
    static std::vector<Message>& Shared() {
        static std::vector<Message> messages;
        return messages;
    }
    static void Collect(const std::wstring& text, MessageIcon icon) { Shared().push_back({text, icon}); }

    MessageHandler before_;
};

}  // namespace vastrelline
