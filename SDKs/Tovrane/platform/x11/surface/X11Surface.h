// SPDX-License-Identifier: GPL-3.0-or-later
// A copy of the last picture that a window showed, in memory that the server reads as well, so that one
// request shows all of it and an uncovered part is shown again without asking anybody.
//
// Where memory cannot be shared (a server on another machine) the picture is sent in pieces instead.
#pragma once

#include "Tovrane/draw/IBlitTarget.h"
#include "Tovrane/platform/x11/connection/X11Connection.h"
#include "Tovrane/platform/x11/connection/X11Window.h"

#include <vector>
#include <xcb/shm.h>

namespace Tovra
{
// [window thread]
class X11Surface
{
public:
    enum Transport
    {
        sharedIfPossible,
        sent
    };

    explicit X11Surface(std::shared_ptr<X11Connection> server, Transport transport = sharedIfPossible);
    ~X11Surface();
    X11Surface(const X11Surface&) = delete;
    X11Surface& operator=(const X11Surface&) = delete;

    // Shows the picture at a place of the window, scaled if need be. More than 64 MiB are not shown.
    void show(const X11Window& window, const BlitPicture& picture, const X11Place& target);
    // Shows what a part of the window held of the last one again. Nothing happens before the first.
    void showAgain(const X11Window& window, const X11Place& part);

    bool isShared() const { return segment != 0; }

private:
    bool fit(const X11Place& target);
    bool share(std::size_t bytes);
    void release();
    void waitUntilRead();
    void put(xcb_window_t window, const X11Place& part);
    void send(xcb_window_t window, const X11Place& part);

    const std::shared_ptr<X11Connection> server;
    const Transport transport;
    xcb_gcontext_t context = 0;
    X11Place at;                      // of the picture
    std::uint32_t* pixels = nullptr;  // of the size of that place
    std::vector<std::uint32_t> owned; // behind pixels while nothing is shared
    xcb_shm_seg_t segment = 0;
    bool isBeingRead = false;
    xcb_get_input_focus_cookie_t afterRead{};
};
}
