// SPDX-License-Identifier: GPL-3.0-or-later
// A host's window in a process of its own, for the window tests: it makes a window, writes its number, and
// obeys lines on its standard input. It writes down the events of its window.
//
//   hide | show | destroy | embed WINDOW | key WINDOW KEYCODE
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <poll.h>
#include <sstream>
#include <string>
#include <unistd.h>
#include <xcb/xcb.h>

namespace
{
xcb_connection_t* c = nullptr;
xcb_window_t window = 0;
xcb_atom_t xembed = 0;

void makeWindow()
{
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    window = xcb_generate_id(c);
    const std::uint32_t values[] = {0x203040, 1, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE};
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, screen->root, 100, 80, 400, 300, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_map_window(c, window);
    auto* reply = xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, 7, "_XEMBED"), nullptr);
    xembed = reply->atom;
    std::free(reply);
    xcb_flush(c);
}

void sendXEmbed(xcb_window_t to, std::uint32_t opcode)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = to;
    message.type = xembed;
    message.data.data32[1] = opcode;
    message.data.data32[3] = window;
    xcb_send_event(c, 0, to, 0, reinterpret_cast<const char*>(&message));
}

void sendKey(xcb_window_t to, int keycode)
{
    xcb_key_press_event_t key{};
    key.response_type = XCB_KEY_PRESS;
    key.detail = std::uint8_t(keycode);
    key.event = to;
    key.same_screen = 1;
    xcb_send_event(c, 0, to, 0, reinterpret_cast<const char*>(&key));
}

void obey(const std::string& line)
{
    std::istringstream words(line);
    std::string command;
    words >> command;
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    words >> first >> second;
    if (command == "hide")
        xcb_unmap_window(c, window);
    else if (command == "show")
        xcb_map_window(c, window);
    else if (command == "destroy")
        xcb_destroy_window(c, window);
    else if (command == "embed")
        sendXEmbed(first, 0);
    else if (command == "key")
        sendKey(first, int(second));
    xcb_flush(c);
    std::cout << "done" << std::endl;
}

void tell(const xcb_generic_event_t& event)
{
    const int type = event.response_type & 0x7f;
    if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE)
        std::cout << (type == XCB_KEY_PRESS ? "press " : "release ")
                  << int(reinterpret_cast<const xcb_key_press_event_t&>(event).detail) << std::endl;
    const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
    if (type == XCB_CLIENT_MESSAGE && message.type == xembed)
        std::cout << "xembed " << message.data.data32[1] << std::endl;
}
}

int main()
{
    c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(c) != 0)
        return 1;
    makeWindow();
    std::cout << "window " << window << std::endl;
    std::string typed;
    pollfd waiting[] = {{STDIN_FILENO, POLLIN, 0}, {xcb_get_file_descriptor(c), POLLIN, 0}};
    for (;;)
    {
        while (auto* event = xcb_poll_for_event(c))
        {
            tell(*event);
            std::free(event);
        }
        if (poll(waiting, 2, -1) < 0 || xcb_connection_has_error(c) != 0)
            return 1;
        if (waiting[0].revents == 0)
            continue;
        char piece[256];
        const ssize_t got = read(STDIN_FILENO, piece, sizeof piece);
        if (got <= 0)
            return 0; // the test is over
        typed.append(piece, std::size_t(got));
        for (std::size_t end; (end = typed.find('\n')) != std::string::npos; typed.erase(0, end + 1))
            obey(typed.substr(0, end));
    }
}
