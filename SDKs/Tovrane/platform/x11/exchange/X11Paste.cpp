// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/x11/exchange/X11Paste.h"

#include "CORE/Utf8.h"

#include <utility>

namespace Tovra
{
// Latin 1 has the first 256 characters of Unicode, one in each byte.
static std::string utf8OfLatin1(const std::string& text)
{
    std::string result;
    for (const char c : text)
        result += Core::Utf8::encode(static_cast<unsigned char>(c));
    return result;
}

X11Paste::X11Paste(std::shared_ptr<X11Connection> connected) : server(std::move(connected)), transfer(server)
{
}

void X11Paste::ask(X11Clipboard::Which which, std::function<void(const std::string&)> callback)
{
    asker = std::move(callback);
    askFor(X11Clipboard::nameOf(*server, which), server->atom(X11Atom::utf8String));
}

// Old clients offer no UTF-8 but Latin 1.
void X11Paste::askFor(xcb_atom_t selection, xcb_atom_t form)
{
    transfer.start(selection, form, server->lastTime(),
                   [this, selection, form](std::optional<std::string> content)
                   {
                       if (!content && form != XCB_ATOM_STRING)
                           return askFor(selection, XCB_ATOM_STRING);
                       if (content)
                           std::exchange(asker, nullptr)(form == XCB_ATOM_STRING ? utf8OfLatin1(*content)
                                                                                 : *content);
                   });
}
}
