// SPDX-License-Identifier: GPL-3.0-or-later
// The user's input method: a program that makes texts in any script out of many keys, and writes them into
// the text field that is open.
//
// It is asked where XMODIFIERS names one ("@im=NAME"). While a field has the keyboard, each press goes to the
// method first, one at a time and in the order of typing; releases wait for their turn behind the presses.
// What the method gives back goes the usual way, with dead keys and compose sequences; what it keeps, it
// turns into a text later. A question behind each key tells that the method still works: if that is not
// answered within a second, or the method dies, all keys that it has not taken are handled as if there were
// none. So no key is lost and none overtakes another, whatever the method does.
//
// Keys that are typed before the method has introduced itself go the usual way at once.
#pragma once

#include "Tovrane/base/RunLoop.h"
#include "Tovrane/platform/x11/connection/X11Connection.h"

#include <deque>
#include <functional>
#include <memory>

struct _xcb_xim_t;

namespace Tovra
{
// [window thread]
class X11InputMethod : public std::enable_shared_from_this<X11InputMethod>
{
public:
    // Each of these may close the frame and stop the method.
    struct Hooks
    {
        // A key that the method left to us, in its turn.
        std::function<void(std::uint8_t type, const xcb_generic_event_t& event)> key;
        // A text that it made: UTF-8, not checked.
        std::function<void(const std::string& text)> text;
        // It kept the press of this key.
        std::function<void(std::uint8_t keycode)> kept;
    };

    // Null if the user has none. window: the one that has the keyboard while a field is open.
    static std::shared_ptr<X11InputMethod> open(const std::shared_ptr<X11Connection>& server,
                                                xcb_window_t window, Hooks hooks);
    ~X11InputMethod();
    X11InputMethod(const X11InputMethod&) = delete;
    X11InputMethod& operator=(const X11InputMethod&) = delete;

    // The caret's place in the window, in pixels: where the method shows what is being typed.
    void setSpot(int x, int y);
    // A field has the keyboard now, or none has it any more.
    void setFocused(bool focused);
    // A KeyPress or KeyRelease. False if the caller handles it at once.
    bool take(const xcb_generic_event_t& event);
    // Keys wait for their turn; those that come now have to wait behind them.
    bool isBusy() const { return !queue.empty(); }
    // There is none, it answered too late, or it died. It is not asked any more.
    bool isGone() const { return state == gone; }
    // No hook is called from here on.
    void stop();

private:
    enum State
    {
        opening, // it has not introduced itself yet
        ready,
        gone
    };
    // What the press at the head of the queue is waiting for.
    enum Flight
    {
        none,
        sent,  // the method's decision
        backed // only the answer to the question behind it: it was given back, and is handled
    };
    struct Callbacks;

    X11InputMethod(const std::shared_ptr<X11Connection>& server, xcb_window_t window, Hooks hooks);
    bool filter(const xcb_generic_event_t& event);
    bool mayPass(const xcb_client_message_event_t& message);
    void createContext(std::uint32_t wantedStyle);
    void contextCreated(std::uint16_t made);
    void pump();
    void send(const xcb_key_press_event_t& press);
    bool showsAtSpot() const;
    void sendSpot();
    bool ask();
    void wait(bool couldAsk);
    void answered();
    void gaveBack(const xcb_key_press_event_t& event);
    void committed(const char* bytes, std::size_t count, std::uint32_t keysym);
    void giveUp();
    void handle(const xcb_key_press_event_t& event);

    const std::weak_ptr<X11Connection> server;
    xcb_connection_t* const connection;
    const xcb_window_t window;
    const xcb_atom_t protocol;
    Hooks hooks;
    _xcb_xim_t* method = nullptr;
    State state = opening;
    bool isOpened = false; // it has introduced itself
    bool hasDied = false;  // and the library has closed it
    bool isFocused = false;
    std::uint16_t context = 0; // the method's number for our fields
    std::uint32_t style = 0;
    int spotX = 0;
    int spotY = 0;
    bool isSpotNew = true;
    std::deque<xcb_key_press_event_t> queue; // presses and releases in the order of typing
    Flight flight = none;
    bool isAsked = false; // a question is open; the library takes one at a time
    RepeatingTimer patience;
};
}
