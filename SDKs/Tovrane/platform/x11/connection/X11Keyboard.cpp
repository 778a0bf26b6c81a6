// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/connection/X11Keyboard.h"

#include "Tovrane/platform/x11/connection/X11Event.h"
#include "Tovrane/platform/x11/connection/X11Keys.h"

#define explicit explicit_ // a field's name in this C header
#include <xcb/xkb.h>
#undef explicit
#include <cstdlib>
#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace Tovra
{
void X11Keyboard::Release::operator()(xkb_context* p) const
{
    xkb_context_unref(p);
}

void X11Keyboard::Release::operator()(xkb_keymap* p) const
{
    xkb_keymap_unref(p);
}

void X11Keyboard::Release::operator()(xkb_state* p) const
{
    xkb_state_unref(p);
}

void X11Keyboard::Release::operator()(xkb_compose_state* p) const
{
    xkb_compose_state_unref(p);
}

X11Keyboard::X11Keyboard(xcb_connection_t* server)
    : connection(server), context(xkb_context_new(XKB_CONTEXT_NO_FLAGS))
{
    if (context == nullptr ||
        xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &xkbEvents,
                                    nullptr) == 0)
        return;
    xkb_context_set_log_level(context.get(), XKB_LOG_LEVEL_CRITICAL);
    device = xkb_x11_get_core_keyboard_device_id(connection);
    listen();
    loadKeymap();
    loadSequences();
}

X11Keyboard::~X11Keyboard() = default;

void X11Keyboard::listen()
{
    if (device < 0)
        return;
    constexpr std::uint16_t changes = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                    XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                    XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, changes, 0, changes, parts, parts, nullptr);
    // A key that repeats is pressed many times and let go once.
    constexpr std::uint32_t once = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto flags = xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD, once, once, 0, 0, 0);
    xcb_discard_reply(connection, flags.sequence);
}

void X11Keyboard::loadKeymap()
{
    if (device < 0)
        return;
    std::unique_ptr<xkb_keymap, Release> loaded{
        xkb_x11_keymap_new_from_device(context.get(), connection, device, XKB_KEYMAP_COMPILE_NO_FLAGS)};
    if (loaded == nullptr)
        return; // what was there goes on
    state.reset(xkb_state_new(loaded.get()));
    keymap = std::move(loaded);
}

// The country as the user's environment has it; the process need not have called setlocale.
void X11Keyboard::loadSequences()
{
    const char* country = nullptr;
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (country == nullptr || *country == '\0')
            country = std::getenv(name);
    if (country == nullptr || *country == '\0')
        country = "C";
    xkb_compose_table* table =
        xkb_compose_table_new_from_locale(context.get(), country, XKB_COMPOSE_COMPILE_NO_FLAGS);
    if (table == nullptr)
        return;
    sequence.reset(xkb_compose_state_new(table, XKB_COMPOSE_STATE_NO_FLAGS));
    xkb_compose_table_unref(table);
}

void X11Keyboard::handleEvent(const xcb_generic_event_t& event)
{
    const std::uint8_t kind = event.pad0; // the second byte of all events of this extension
    if (kind == XCB_XKB_NEW_KEYBOARD_NOTIFY || kind == XCB_XKB_MAP_NOTIFY)
        loadKeymap();
}

// The event's own state counts, not what the server last told: a host may hand on keys with a state of
// theirs.
std::uint32_t X11Keyboard::symbolOf(std::uint8_t keycode, std::uint16_t eventState)
{
    if (state == nullptr)
        return XKB_KEY_NoSymbol;
    xkb_state_update_mask(state.get(), eventState & 0xffu, 0, 0, (eventState >> 13) & 3u, 0, 0);
    return xkb_state_key_get_one_sym(state.get(), keycode);
}

X11Keyboard::Stroke X11Keyboard::press(std::uint8_t keycode, std::uint16_t eventState)
{
    Stroke stroke;
    const std::uint8_t modifiers = keyModifiersOfState(eventState);
    std::uint32_t symbol = symbolOf(keycode, eventState);
    char text[64] = "";
    bool composed = false;
    if (sequence != nullptr && xkb_compose_state_feed(sequence.get(), symbol) == XKB_COMPOSE_FEED_ACCEPTED)
        switch (xkb_compose_state_get_status(sequence.get()))
        {
        case XKB_COMPOSE_COMPOSING:
        case XKB_COMPOSE_CANCELLED: // the key that broke the sequence is lost, as everywhere
            stroke.pending = true;
            return stroke;
        case XKB_COMPOSE_COMPOSED:
            symbol = xkb_compose_state_get_one_sym(sequence.get());
            xkb_compose_state_get_utf8(sequence.get(), text, sizeof text);
            composed = true;
            break;
        case XKB_COMPOSE_NOTHING:
            break;
        }

    stroke.code = keyCodeOfKeysym(symbol, xkb_keysym_to_utf32(symbol), modifiers);
    if (!composed)
        xkb_keysym_to_utf8(symbol, text, sizeof text);
    constexpr unsigned commands = kKeyControl | kKeyCommand | kKeyAlt;
    if ((modifiers & commands) == 0 && static_cast<unsigned char>(text[0]) >= 0x20 && text[0] != 0x7f)
        stroke.text = text;
    return stroke;
}

TovraKeyCode X11Keyboard::release(std::uint8_t keycode, std::uint16_t eventState)
{
    const std::uint32_t symbol = symbolOf(keycode, eventState);
    return keyCodeOfKeysym(symbol, xkb_keysym_to_utf32(symbol), keyModifiersOfState(eventState));
}

void X11Keyboard::resetSequence()
{
    if (sequence != nullptr)
        xkb_compose_state_reset(sequence.get());
}
}
