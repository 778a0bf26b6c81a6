// SPDX-License-Identifier: GPL-3.0-or-later
// Who gets the events of one window.
#pragma once

#include <cstdint>
#include <xcb/xproto.h>

namespace Tovra
{
// Errors never come here, only events.
class X11EventSink
{
public:
    virtual ~X11EventSink() = default;
    // [window thread]  type is the event's, without the bit of events that clients sent.
    virtual void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) = 0;
};

// The event as what its type says that it is.
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
}
