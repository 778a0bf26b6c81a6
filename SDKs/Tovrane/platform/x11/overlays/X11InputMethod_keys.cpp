// SPDX-License-Identifier: GPL-3.0-or-later
// The keys on their way to the input method and back, and the texts that it makes of them.
#include "CORE/Utf8.h"
#include "Tovrane/platform/x11/overlays/X11InputMethod.h"

#include <cstdlib>
#include <utility>
#include <xcb-imdkit/encoding.h>
#include <xcb-imdkit/imclient.h>
#include <xkbcommon/xkbcommon.h>

namespace Tovra
{
namespace
{
constexpr int patienceMilliseconds = 1000;
constexpr std::size_t mostWaiting = 1024; // keys; nobody types so many in a second

std::uint8_t typeOf(const xcb_key_press_event_t& event)
{
    return event.response_type & 0x7f;
}
}

bool X11InputMethod::take(const xcb_generic_event_t& event)
{
    if (state == ready && queue.size() >= mostWaiting)
        giveUp();
    const auto& key = as<xcb_key_press_event_t>(event);
    const bool isFirst = typeOf(key) == XCB_KEY_PRESS && isFocused;
    if (state != ready || (queue.empty() && !isFirst))
        return false;
    queue.push_back(key);
    pump();
    return true;
}

// Each key that is handled may stop this: then the queue is empty.
void X11InputMethod::pump()
{
    if (state != ready || isAsked)
        return;
    if (isSpotNew && isFocused && showsAtSpot())
        return sendSpot();
    while (state == ready && !isAsked && !queue.empty())
    {
        const xcb_key_press_event_t next = queue.front();
        if (isFocused && typeOf(next) == XCB_KEY_PRESS)
            return send(next);
        queue.pop_front();
        handle(next);
    }
}

void X11InputMethod::send(const xcb_key_press_event_t& press)
{
    const X11PipeGuard guard(connection);
    xcb_key_press_event_t sending = press;
    sending.response_type = XCB_KEY_PRESS; // also of a key that the host sent
    flight = sent;
    const bool isSent = xcb_xim_forward_event(method, context, &sending);
    wait(isSent && ask());
}

// For the answer to a question, if it could be asked.
void X11InputMethod::wait(bool couldAsk)
{
    if (!couldAsk)
        return giveUp();
    isAsked = true;
    patience.start(patienceMilliseconds, [this] { giveUp(); });
}

void X11InputMethod::answered()
{
    if (!isAsked || state != ready)
        return;
    isAsked = false;
    patience.stop();
    const Flight landed = std::exchange(flight, none);
    if (landed != none)
    {
        const std::uint8_t keycode = queue.front().detail;
        queue.pop_front();
        if (const auto tell = hooks.kept; tell && landed == sent)
            tell(keycode);
    }
    pump();
}

// The one that it has, or another one that it makes up.
void X11InputMethod::gaveBack(const xcb_key_press_event_t& event)
{
    const std::uint8_t type = typeOf(event);
    if (state != ready || (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE))
        return;
    if (flight != sent || type != XCB_KEY_PRESS || event.detail != queue.front().detail)
        return handle(event);
    flight = backed;
    const xcb_key_press_event_t ours = queue.front();
    handle(ours);
}

void X11InputMethod::committed(const char* bytes, std::size_t count, std::uint32_t keysym)
{
    std::string text;
    if (bytes == nullptr || count == 0)
    {
        if (const std::uint32_t character = xkb_keysym_to_utf32(keysym); character >= 0x20)
            text = Core::Utf8::encode(character);
    }
    else if (xcb_xim_get_encoding(method) == XCB_XIM_UTF8_STRING)
        text.assign(bytes, count);
    else
    {
        std::size_t length = 0;
        const std::unique_ptr<char, X11Free> converted(xcb_compound_text_to_utf8(bytes, count, &length));
        if (converted != nullptr)
            text.assign(converted.get(), length);
    }
    if (const auto tell = hooks.text; tell && state == ready && !text.empty())
        tell(text);
}

void X11InputMethod::giveUp()
{
    if (state == gone)
        return;
    const auto alive = shared_from_this();
    state = gone;
    isAsked = false;
    patience.stop();
    if (std::exchange(flight, none) == backed)
        queue.pop_front();
    while (!queue.empty())
    {
        const xcb_key_press_event_t next = queue.front();
        queue.pop_front();
        handle(next);
    }
}

void X11InputMethod::handle(const xcb_key_press_event_t& event)
{
    if (const auto tell = hooks.key)
        tell(typeOf(event), reinterpret_cast<const xcb_generic_event_t&>(event));
}
}
