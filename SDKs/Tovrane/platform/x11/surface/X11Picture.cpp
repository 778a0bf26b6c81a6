// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/surface/X11Picture.h"

#include "CORE/ForeignData.h"
#include "Tovrane/draw/IBlitTarget.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/xcb.h>

namespace Tovra
{
X11Picture::X11Picture(std::shared_ptr<X11Connection> connected, Transport how)
    : server(std::move(connected)), transport(how)
{
}

X11Picture::~X11Picture()
{
    X11Picture::destroy();
    if (context != 0)
        xcb_free_gc(server->xcb(), context);
    server->flush();
}

bool X11Picture::setSize(unsigned int w, unsigned int h)
{
    w = std::max(w, 1u);
    h = std::max(h, 1u);
    wasShown = false;
    if (pixels != nullptr && w == width && h == height)
    {
        waitUntilRead();
        std::memset(pixels, 0, totalBytes);
        return true;
    }
    X11Picture::destroy();
    const std::uint64_t row = std::uint64_t(w) * 4;
    if (row > Core::kLargestForeignSize / h)
        return false;
    const std::size_t bytes = row * h;
    if (!(transport == sharedIfPossible && share(bytes)) && !own(bytes))
        return false;
    width = w;
    height = h;
    rowBytes = std::int32_t(row);
    totalBytes = std::uint32_t(bytes);
    return true;
}

// The segment loses its number at once, so that nothing is left of it however this process ends.
bool X11Picture::share(std::size_t bytes)
{
    xcb_connection_t* c = server->xcb();
    const auto* extension = xcb_get_extension_data(c, &xcb_shm_id);
    if (extension == nullptr || !extension->present)
        return false;
    const int number = shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    if (number < 0)
        return false;
    void* memory = shmat(number, nullptr, 0);
    X11Reply<xcb_generic_error_t> refused;
    if (memory != reinterpret_cast<void*>(-1))
    {
        segment = xcb_generate_id(c);
        const X11PipeGuard guard(c);
        refused.reset(xcb_request_check(c, xcb_shm_attach_checked(c, segment, std::uint32_t(number), 1)));
    }
    shmctl(number, IPC_RMID, nullptr);
    if (memory == reinterpret_cast<void*>(-1))
        return false;
    if (refused != nullptr || !server->isAlive())
    {
        shmdt(memory);
        segment = 0;
        return false;
    }
    pixels = static_cast<unsigned char*>(memory);
    return true;
}

bool X11Picture::own(std::size_t bytes)
{
    try
    {
        owned.assign(bytes / 4, 0);
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    pixels = reinterpret_cast<unsigned char*>(owned.data());
    return true;
}

void X11Picture::destroy()
{
    waitUntilRead();
    if (segment != 0)
    {
        xcb_shm_detach(server->xcb(), segment);
        shmdt(pixels);
        segment = 0;
    }
    owned.clear();
    owned.shrink_to_fit();
    pixels = nullptr;
    width = height = totalBytes = 0;
    rowBytes = 0;
    wasShown = false;
}

void X11Picture::drawToContext(void* target, const CRect* place, const CRect*)
{
    if (target == nullptr || pixels == nullptr)
        return;
    const CRect all(0.0, 0.0, width, height);
    static_cast<IBlitTarget*>(target)->blit({pixels, width, height, rowBytes, flipped}, place ? *place : all);
}

void X11Picture::waitUntilRead()
{
    if (!isBeingRead)
        return;
    isBeingRead = false;
    server->reply(xcb_get_input_focus_reply, afterRead);
}

void X11Picture::prepareContext(xcb_window_t window)
{
    if (context != 0)
        return;
    context = xcb_generate_id(server->xcb());
    const std::uint32_t quiet = 0; // no event for every picture
    xcb_create_gc(server->xcb(), context, window, XCB_GC_GRAPHICS_EXPOSURES, &quiet);
}

void X11Picture::showAgain(const X11Window& window, const X11Place& part, int x, int y)
{
    if (wasShown)
        show(window, part, x, y);
}

void X11Picture::show(const X11Window& window, const X11Place& wanted, int x, int y)
{
    const int left = std::max(wanted.x, 0);
    const int top = std::max(wanted.y, 0);
    const X11Place part{left, top, std::min(int(width), wanted.x + wanted.width) - left,
                        std::min(int(height), wanted.y + wanted.height) - top};
    if (window.isGone() || pixels == nullptr || part.width <= 0 || part.height <= 0)
        return;
    const X11PipeGuard guard(server->xcb());
    wasShown = true;
    prepareContext(window.id());
    if (segment == 0)
        return send(window.id(), part, x, y);
    xcb_connection_t* c = server->xcb();
    xcb_shm_put_image(c, window.id(), context, std::uint16_t(width), std::uint16_t(height),
                      std::uint16_t(part.x), std::uint16_t(part.y), std::uint16_t(part.width),
                      std::uint16_t(part.height), std::int16_t(x + part.x), std::int16_t(y + part.y),
                      server->depth(), XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment, 0);
    if (isBeingRead) // the answer to the later question is enough
        xcb_discard_reply(c, afterRead.sequence);
    afterRead = xcb_get_input_focus(c);
    isBeingRead = true;
    server->flush();
}

// As many whole rows at a time as a request can bear.
void X11Picture::send(xcb_window_t window, const X11Place& part, int x, int y)
{
    xcb_connection_t* c = server->xcb();
    constexpr std::size_t head = 64;
    const std::size_t most = std::size_t(xcb_get_maximum_request_length(c)) * 4 - head;
    const std::size_t partBytes = std::size_t(part.width) * 4;
    const int rows = int(std::clamp<std::size_t>(most / partBytes, 1, std::size_t(part.height)));
    std::vector<std::uint8_t> piece(partBytes * std::size_t(rows));
    for (int row = 0; row < part.height; row += rows)
    {
        const int count = std::min(rows, part.height - row);
        for (int i = 0; i < count; ++i)
            std::memcpy(piece.data() + std::size_t(i) * partBytes,
                        pixels + std::ptrdiff_t(part.y + row + i) * rowBytes + std::ptrdiff_t(part.x) * 4,
                        partBytes);
        xcb_put_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, window, context, std::uint16_t(part.width),
                      std::uint16_t(count), std::int16_t(x + part.x), std::int16_t(y + part.y + row), 0,
                      server->depth(), std::uint32_t(partBytes * std::size_t(count)), piece.data());
    }
    server->flush();
}
}
