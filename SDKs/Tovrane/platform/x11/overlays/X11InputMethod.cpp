// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/overlays/X11InputMethod.h"

#include <cstdlib>
#include <string_view>
#include <xcb-imdkit/encoding.h>
#include <xcb-imdkit/imclient.h>

namespace Tovra
{
namespace
{
constexpr std::uint64_t mostBytes = 1 << 20; // of one message
const void* const noMore = nullptr;          // ends a list of attributes
constexpr std::uint32_t overTheSpot = XCB_IM_PreeditPosition | XCB_IM_StatusNothing;
constexpr std::uint32_t atTheRoot = XCB_IM_PreeditNothing | XCB_IM_StatusNothing;

bool isWanted()
{
    const char* const modifiers = std::getenv("XMODIFIERS");
    const std::string_view name = modifiers != nullptr ? modifiers : "";
    return name.starts_with("@im=") && name != "@im=" && name != "@im=none" && name != "@im=local";
}
}

// What the library calls. It goes on after each of them: nothing here may destroy its object.
struct X11InputMethod::Callbacks
{
    static X11InputMethod& of(void* data) { return *static_cast<X11InputMethod*>(data); }

    static void opened(xcb_xim_t*, void* data)
    {
        of(data).isOpened = true;
        of(data).createContext(overTheSpot);
    }
    static void created(xcb_xim_t*, xcb_xic_t made, void* data) { of(data).contextCreated(made); }
    static void answered(xcb_xim_t*, xcb_xic_t, xcb_im_get_ic_values_reply_fr_t*, void* data)
    {
        of(data).answered();
    }
    static void key(xcb_xim_t*, xcb_xic_t, xcb_key_press_event_t* event, void* data)
    {
        of(data).gaveBack(*event);
    }
    static void text(xcb_xim_t*, xcb_xic_t, std::uint32_t, char* bytes, std::uint32_t count,
                     std::uint32_t* keysym, std::size_t keysyms, void* data)
    {
        of(data).committed(bytes, count, keysyms > 0 ? *keysym : 0);
    }
    static void moved(xcb_xim_t*, xcb_xic_t, void* data) { of(data).answered(); }
    static void died(xcb_xim_t*, void* data)
    {
        of(data).hasDied = true;
        of(data).giveUp();
    }
};

std::shared_ptr<X11InputMethod> X11InputMethod::open(const std::shared_ptr<X11Connection>& server,
                                                     xcb_window_t window, Hooks hooks)
{
    if (!isWanted() || !server->isAlive())
        return nullptr;
    std::shared_ptr<X11InputMethod> made(new X11InputMethod(server, window, std::move(hooks)));
    server->eventFilter = [weak = std::weak_ptr(made)](const xcb_generic_event_t& event)
    {
        const auto alive = weak.lock(); // a hook may drop the owner's reference
        return alive != nullptr && alive->filter(event);
    };
    const X11PipeGuard guard(server->xcb());
    if (!xcb_xim_open(made->method, &Callbacks::opened, false, made.get()))
        made->state = gone; // no method runs
    return made;
}

X11InputMethod::X11InputMethod(const std::shared_ptr<X11Connection>& connected, xcb_window_t forKeys,
                               Hooks whatFor)
    : server(connected),
      connection(connected->xcb()),
      window(forKeys),
      protocol(connected->atom(X11Atom::ximProtocol)),
      hooks(std::move(whatFor))
{
    static const bool isPrepared = (xcb_compound_text_init(), true);
    (void)isPrepared;
    method = xcb_xim_create(connection, 0, nullptr);
    xcb_xim_im_callback callbacks{};
    callbacks.forward_event = &Callbacks::key;
    callbacks.commit_string = &Callbacks::text;
    callbacks.disconnected = &Callbacks::died;
    xcb_xim_set_im_callback(method, &callbacks, this);
    xcb_xim_set_use_compound_text(method, true);
    xcb_xim_set_use_utf8_string(method, true);
}

// The library closes a method that has died by itself, and a second time would free what is free.
X11InputMethod::~X11InputMethod()
{
    const auto alive = server.lock();
    if (alive != nullptr && !hasDied)
    {
        const X11PipeGuard guard(connection);
        xcb_xim_close(method);
    }
    xcb_xim_destroy(method);
}

void X11InputMethod::stop()
{
    hooks = {};
    patience.stop();
    queue.clear();
    flight = none;
    state = gone;
    if (const auto alive = server.lock())
        alive->eventFilter = nullptr;
}

// Only what the library waits for. It reads what a message says that there is, and closes itself on an error
// before it has opened: both are kept from it.
bool X11InputMethod::filter(const xcb_generic_event_t& event)
{
    const std::uint8_t type = event.response_type & 0x7f;
    const bool isItsKind =
        type == XCB_CLIENT_MESSAGE || type == XCB_SELECTION_NOTIFY || type == XCB_DESTROY_NOTIFY;
    if (state == gone || !isItsKind)
        return false;
    const auto& message = as<xcb_client_message_event_t>(event);
    if (type == XCB_CLIENT_MESSAGE && message.type == protocol && !mayPass(message))
        return true;
    return xcb_xim_filter_event(method, const_cast<xcb_generic_event_t*>(&event));
}

bool X11InputMethod::mayPass(const xcb_client_message_event_t& message)
{
    std::uint8_t what = message.data.data8[0];
    if (message.format == 32) // it lies in a property
    {
        const auto asked =
            xcb_get_property(connection, 0, message.window, message.data.data32[1], XCB_ATOM_ANY, 0, 1);
        const X11Reply<xcb_get_property_reply_t> head{xcb_get_property_reply(connection, asked, nullptr)};
        if (head == nullptr || xcb_get_property_value_length(head.get()) < 4)
            return false;
        const std::uint64_t there = std::uint64_t(head->bytes_after) + 4;
        if (message.data.data32[0] > there || there > mostBytes)
            return false;
        what = *static_cast<const std::uint8_t*>(xcb_get_property_value(head.get()));
    }
    if (what != XCB_XIM_ERROR || isOpened)
        return true;
    giveUp();
    return false;
}

void X11InputMethod::createContext(std::uint32_t wantedStyle)
{
    style = wantedStyle;
    const X11PipeGuard guard(connection);
    xcb_point_t spot{std::int16_t(spotX), std::int16_t(spotY)};
    xcb_xim_nested_list place{};
    if (style == overTheSpot)
        place = xcb_xim_create_nested_list(method, XCB_XIM_XNSpotLocation, &spot, noMore);
    const bool isSent =
        place.data != nullptr
            ? xcb_xim_create_ic(method, &Callbacks::created, this, XCB_XIM_XNInputStyle, &style,
                                XCB_XIM_XNClientWindow, &window, XCB_XIM_XNFocusWindow, &window,
                                XCB_XIM_XNPreeditAttributes, &place, noMore)
            : xcb_xim_create_ic(method, &Callbacks::created, this, XCB_XIM_XNInputStyle, &style,
                                XCB_XIM_XNClientWindow, &window, XCB_XIM_XNFocusWindow, &window, noMore);
    std::free(place.data);
    if (!isSent)
        giveUp();
}

// A method that cannot show what is typed in its place shows it in a window of its own. It is asked for that
// when the library has returned from the refusal.
void X11InputMethod::contextCreated(std::uint16_t made)
{
    if (made == 0 && style == overTheSpot)
        return patience.start(1,
                              [this]
                              {
                                  patience.stop();
                                  createContext(atTheRoot);
                              });
    if (made == 0)
        return giveUp();
    context = made;
    state = ready;
    setFocused(isFocused);
}

void X11InputMethod::setFocused(bool focused)
{
    isFocused = focused;
    if (state != ready)
        return;
    const X11PipeGuard guard(connection);
    if (isFocused)
        xcb_xim_set_ic_focus(method, context);
    else
        xcb_xim_unset_ic_focus(method, context);
    pump();
}

void X11InputMethod::setSpot(int x, int y)
{
    if (x == spotX && y == spotY)
        return;
    spotX = x;
    spotY = y;
    isSpotNew = true;
    if (queue.empty()) // else it goes out before the next key
        pump();
}

bool X11InputMethod::showsAtSpot() const
{
    return style == overTheSpot;
}

void X11InputMethod::sendSpot()
{
    const X11PipeGuard guard(connection);
    isSpotNew = false;
    xcb_point_t spot{std::int16_t(spotX), std::int16_t(spotY)};
    const xcb_xim_nested_list place =
        xcb_xim_create_nested_list(method, XCB_XIM_XNSpotLocation, &spot, noMore);
    wait(place.data != nullptr && xcb_xim_set_ic_values(method, context, &Callbacks::moved, this,
                                                        XCB_XIM_XNPreeditAttributes, &place, noMore));
    std::free(place.data);
}

// Anything that has to be answered.
bool X11InputMethod::ask()
{
    return xcb_xim_get_ic_values(method, context, &Callbacks::answered, this, XCB_XIM_XNFilterEvents, noMore);
}
}
