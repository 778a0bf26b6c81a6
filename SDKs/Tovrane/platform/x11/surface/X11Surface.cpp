// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/surface/X11Surface.h"

#include "Tovrane/platform/parts/ScaledCopy.h"

#include <algorithm>
#include <new>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <xcb/xcb.h>

namespace Tovra
{
namespace
{
constexpr std::size_t mostBytes = std::size_t(64) << 20;
}

X11Surface::X11Surface(std::shared_ptr<X11Connection> connected, Transport how)
    : server(std::move(connected)), transport(how)
{
}

X11Surface::~X11Surface()
{
    release();
    if (context != 0)
        xcb_free_gc(server->xcb(), context);
    server->flush();
}

void X11Surface::show(const X11Window& window, const BlitPicture& picture, const X11Place& target)
{
    if (window.isGone() || picture.pixels == nullptr || picture.width == 0 || picture.height == 0 ||
        !fit(target))
        return;
    waitUntilRead();
    if (int(picture.width) == at.width && int(picture.height) == at.height)
        copyPicture(picture, pixels);
    else
        scalePicture(picture, pixels, at.width, at.height);
    put(window.id(), at);
}

void X11Surface::showAgain(const X11Window& window, const X11Place& part)
{
    if (window.isGone() || pixels == nullptr)
        return;
    const int left = std::max(part.x, at.x);
    const int top = std::max(part.y, at.y);
    const X11Place inside{left, top, std::min(at.x + at.width, part.x + part.width) - left,
                          std::min(at.y + at.height, part.y + part.height) - top};
    if (inside.width > 0 && inside.height > 0)
        put(window.id(), inside);
}

bool X11Surface::fit(const X11Place& target)
{
    const bool isSameSize = target.width == at.width && target.height == at.height;
    at = target;
    if (pixels != nullptr && isSameSize)
        return true;
    release();
    const std::size_t bytes = std::size_t(at.width) * std::size_t(at.height) * 4;
    if (bytes > mostBytes)
        return false;
    if (transport == sharedIfPossible && share(bytes))
        return true;
    try
    {
        owned.assign(bytes / 4, 0);
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
    pixels = owned.data();
    return true;
}

// The segment loses its number at once, so that nothing is left of it however this process ends.
bool X11Surface::share(std::size_t bytes)
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
    pixels = static_cast<std::uint32_t*>(memory);
    return true;
}

void X11Surface::release()
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
}

// The server takes the picture when it comes to it. By the time of the next one it mostly has long answered.
void X11Surface::waitUntilRead()
{
    if (!isBeingRead)
        return;
    isBeingRead = false;
    server->reply(xcb_get_input_focus_reply, afterRead);
}

void X11Surface::put(xcb_window_t window, const X11Place& part)
{
    const X11PipeGuard guard(server->xcb());
    xcb_connection_t* c = server->xcb();
    if (context == 0)
    {
        context = xcb_generate_id(c);
        const std::uint32_t quiet = 0; // no event for every picture
        xcb_create_gc(c, context, window, XCB_GC_GRAPHICS_EXPOSURES, &quiet);
    }
    if (segment == 0)
        return send(window, part);
    waitUntilRead();
    xcb_shm_put_image(c, window, context, std::uint16_t(at.width), std::uint16_t(at.height),
                      std::uint16_t(part.x - at.x), std::uint16_t(part.y - at.y), std::uint16_t(part.width),
                      std::uint16_t(part.height), std::int16_t(part.x), std::int16_t(part.y), server->depth(),
                      XCB_IMAGE_FORMAT_Z_PIXMAP, 0, segment, 0);
    afterRead = xcb_get_input_focus(c);
    isBeingRead = true;
    server->flush();
}

// As many whole rows at a time as a request can bear.
void X11Surface::send(xcb_window_t window, const X11Place& part)
{
    xcb_connection_t* c = server->xcb();
    constexpr std::size_t head = 64;
    const std::size_t most = std::size_t(xcb_get_maximum_request_length(c)) * 4 - head;
    const std::size_t rowBytes = std::size_t(part.width) * 4;
    const int rows = int(std::clamp<std::size_t>(most / rowBytes, 1, std::size_t(part.height)));
    std::vector<std::uint32_t> piece(std::size_t(part.width) * std::size_t(rows));
    for (int y = 0; y < part.height; y += rows)
    {
        const int count = std::min(rows, part.height - y);
        for (int row = 0; row < count; ++row)
        {
            const int sourceRow = part.y - at.y + y + row;
            const auto* from = pixels + std::ptrdiff_t(sourceRow) * at.width + (part.x - at.x);
            std::copy_n(from, part.width, piece.data() + std::size_t(row) * std::size_t(part.width));
        }
        xcb_put_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, window, context, std::uint16_t(part.width),
                      std::uint16_t(count), std::int16_t(part.x), std::int16_t(part.y + y), 0,
                      server->depth(), std::uint32_t(rowBytes * std::size_t(count)),
                      reinterpret_cast<const std::uint8_t*>(piece.data()));
    }
    server->flush();
}
}
