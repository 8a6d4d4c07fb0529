// SPDX-License-Identifier: Apache-2.0
#include "server/EventChannel.h"

#include <algorithm>
#include <utility>

namespace vastrelline {

std::optional<std::string> EventChannel::Listener::Take() {
    const std::lock_guard lock(mutex_);
    if (events_.empty()) return std::nullopt;
    std::string text = std::move(events_.front().text);
    events_.pop_front();
    return text;
}

std::shared_ptr<EventChannel::Listener> EventChannel::Listen(std::function<void()> wake) {
    auto listener = std::make_shared<Listener>();
    listener->wake_ = std::move(wake);
    const std::lock_guard lock(mutex_);
    for (const auto& [topic, text] : lasting_) listener->events_.push_back({topic, text});
    listeners_.emplace(listener.get(), listener);
    return listener;
}

void EventChannel::Publish(const std::string& topic, const std::string& text, bool lasts) {
    const std::lock_guard lock(mutex_);
    if (lasts) lasting_[topic] = text;
    std::erase_if(listeners_, [](const auto& each) { return each.second.expired(); });
    for (const auto& [key, weak] : listeners_) {
        const std::shared_ptr<Listener> listener = weak.lock();
        if (!listener) continue;
        {
            const std::lock_guard own(listener->mutex_);
            std::erase_if(listener->events_, [&](const auto& event) { return event.topic == topic; });
            listener->events_.push_back({topic, text});
        }
        listener->wake_();
    }
}

}  // namespace vastrelline
