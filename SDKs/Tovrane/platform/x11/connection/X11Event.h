// SPDX-License-Identifier: GPL-3.0-or-later
// The server's replies and events: who frees them, who gets an event, and its window and time.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <xcb/xproto.h>

namespace Tovra
{
// What XCB hands out belongs to the caller, who frees it.
struct X11Free
{
    void operator()(void* memory) const { std::free(memory); }
};

// A reply, event or error; null if the request failed or the server is gone.
template <class T>
using X11Reply = std::unique_ptr<T, X11Free>;

// Gets the events of one window. Errors never come here, only events.
class X11EventSink
{
public:
    virtual ~X11EventSink() = default;
    // [window thread]  type is the event's, without the bit of events that clients sent.
    virtual void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) = 0;
};

// The event as the structure that belongs to its type.
template <class T>
const T& as(const xcb_generic_event_t& event)
{
    return reinterpret_cast<const T&>(event);
}

// A client sent it, not the server.
inline bool wasSent(const xcb_generic_event_t& event)
{
    return (event.response_type & 0x80) != 0;
}

// [any thread]  Which of our windows an event is for; 0 for none.
xcb_window_t windowOfEvent(std::uint8_t type, const xcb_generic_event_t& event);
// [any thread]  0 for an event without a time.
xcb_timestamp_t timeOfEvent(std::uint8_t type, const xcb_generic_event_t& event);
}
