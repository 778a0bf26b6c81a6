// SPDX-License-Identifier: GPL-3.0-or-later
// Where in an event its window and its time are.
#pragma once

#include <cstdint>
#include <xcb/xproto.h>

namespace Tovra
{
// [any thread]  Which of our windows an event is for; 0 for none.
xcb_window_t windowOfEvent(std::uint8_t type, const xcb_generic_event_t& event);
// [any thread]  0 for an event without a time.
xcb_timestamp_t timeOfEvent(std::uint8_t type, const xcb_generic_event_t& event);
}
