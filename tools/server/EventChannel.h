// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace vastrelline {

// Carries events to all pages that listen. Of the events of one topic that a page has not taken yet only the
// newest counts: a page that is slow, or asleep, misses states in between and no end.
class EventChannel {
public:
    // What one page has still to get.
    class Listener {
    public:
        // The oldest event; nothing: there is none.
        std::optional<std::string> Take();

    private:
        friend class EventChannel;
        struct Event {
            std::string topic;
            std::string text;
        };
        std::mutex mutex_;
        std::deque<Event> events_;
        std::function<void()> wake_;
    };

    // A new listener begins with the events that last.
    //
    // wake   called, on any thread, after an event has come; must not call the channel. Not called any more
    // once
    //        the listener is gone
    std::shared_ptr<Listener> Listen(std::function<void()> wake);

    // lasts   who listens from now on gets it, too, until the topic has another one
    void Publish(const std::string& topic, const std::string& text, bool lasts = false);

private:
    std::mutex mutex_;
    std::map<Listener*, std::weak_ptr<Listener>> listeners_;
    std::map<std::string, std::string> lasting_;  // by topic
};

}  // namespace vastrelline
