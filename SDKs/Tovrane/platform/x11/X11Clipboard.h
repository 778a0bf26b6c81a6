// The two texts that X clients share: what was copied, and what was selected last.
//
// A text of ours is there as long as the frame is: X has no place to leave it.
#pragma once

#include "Tovrane/platform/x11/X11Transfer.h"

#include <array>

namespace Tovra
{
// [window thread]
class X11Clipboard : private X11EventSink
{
public:
    enum Which
    {
        copied,   // CLIPBOARD
        selection // PRIMARY
    };

    explicit X11Clipboard(std::shared_ptr<X11Connection> server);

    void offer(Which which, std::string text);
    // The callback gets the text in UTF-8, as it stands there, or is never called if there is none. It is for
    // one asker: a later question takes its place.
    void ask(Which which, std::function<void(const std::string&)> callback);
    // Whoever asked has gone.
    void forgetAsker();

private:
    void handleEvent(std::uint8_t type, const xcb_generic_event_t& event) override;
    void answer(const xcb_selection_request_event_t& request);
    bool write(const xcb_selection_request_event_t& request, xcb_atom_t property, const std::string& text);
    xcb_atom_t nameOf(Which which) const;
    std::string* offeredUnder(xcb_atom_t name);
    void askFor(xcb_atom_t name, xcb_atom_t form);

    X11Window window;
    X11Transfer transfer;
    std::array<std::string, 2> offered;
    std::array<bool, 2> isOurs{};
    std::array<xcb_timestamp_t, 2> since{};
    std::function<void(const std::string&)> asker;
};
}
