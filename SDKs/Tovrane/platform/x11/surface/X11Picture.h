// SPDX-License-Identifier: GPL-3.0-or-later
// A picture in memory that the server reads as well: what is drawn into it is shown by one request, without a
// copy, and an uncovered part is shown again without asking anybody.
//
// The server reads later, when it comes to the request: beginDrawing waits for that, and by the time of the
// next painting it mostly has long read. Where memory cannot be shared (a server on another machine) the
// pixels are sent in pieces instead. The memory stays valid when the connection breaks.
#pragma once

#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/platform/x11/connection/X11Connection.h"
#include "Tovrane/platform/x11/connection/X11Window.h"

#include <memory>
#include <vector>
#include <xcb/shm.h>

namespace Tovra
{
// [window thread]
class X11Picture : public IOSBitmap
{
public:
    enum Transport
    {
        sharedIfPossible,
        sent
    };

    explicit X11Picture(std::shared_ptr<X11Connection> server, Transport transport = sharedIfPossible);
    ~X11Picture() override;

    unsigned char* getPixelPtr() override { return pixels; }
    bool setSize(unsigned int w, unsigned int h) override;
    void destroy() override;
    void beginDrawing() override { waitUntilRead(); }
    void drawToContext(void* context, const CRect* target, const CRect* source) override;
    int getBitsPerPixel() const override { return 32; }

    // Shows a part of it, in its own pixels, in a window in which its top left lies at (x, y).
    void show(const X11Window& window, const X11Place& part, int x = 0, int y = 0);
    // Shows a part again that the window has lost. Nothing happens until something was shown in this size.
    void showAgain(const X11Window& window, const X11Place& part, int x = 0, int y = 0);

    X11Place whole() const { return {0, 0, int(width), int(height)}; }
    bool isShared() const { return segment != 0; }

private:
    bool share(std::size_t bytes);
    bool own(std::size_t bytes);
    void waitUntilRead();
    void prepareContext(xcb_window_t window);
    void send(xcb_window_t window, const X11Place& part, int x, int y);

    const std::shared_ptr<X11Connection> server;
    const Transport transport;
    xcb_gcontext_t context = 0;
    std::vector<std::uint32_t> owned; // the pixels while nothing is shared
    xcb_shm_seg_t segment = 0;
    bool wasShown = false;
    bool isBeingRead = false;
    xcb_get_input_focus_cookie_t afterRead{};
};
}
