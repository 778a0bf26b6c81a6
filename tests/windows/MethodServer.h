// SPDX-License-Identifier: GPL-3.0-or-later
// An input method of the test's own: a server for the protocol that the library under X11InputMethod speaks,
// on a connection of its own, in the test's loop.
//
// It turns the key a into the two characters of "Japan", keeps b until the next key, and gives all others
// back.
#pragma once

#include "Tovrane/base/RunLoop.h"
#include "Tovrane/platform/x11/connection/X11Event.h"

#include <cstring>
#include <memory>
#include <string>
#include <vector>
#include <xcb-imdkit/encoding.h>
#include <xcb-imdkit/imdkit.h>
#include <xcb/xcb.h>

class MethodServer
{
public:
    static constexpr const char* name = "lodex_test";
    static constexpr std::uint8_t keyA = 38;
    static constexpr std::uint8_t keyB = 56;

    explicit MethodServer(std::uint32_t style = XCB_IM_PreeditPosition | XCB_IM_StatusNothing)
        : styles{1, &onlyStyle}, onlyStyle(style)
    {
        xcb_compound_text_init();
        c = xcb_connect(nullptr, nullptr);
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
        window = xcb_generate_id(c);
        xcb_create_window(c, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
        xcb_im_trigger_keys_t noKeys{};
        im = xcb_im_create(c, 0, window, name, XCB_IM_ALL_LOCALES, &styles, &noKeys, &noKeys, &encodings, 0,
                           &MethodServer::called, this);
        xcb_im_open_im(im);
        xcb_flush(c);
        watch.start(xcb_get_file_descriptor(c), [this] { read(); });
    }
    ~MethodServer() { die(); }
    MethodServer(const MethodServer&) = delete;
    MethodServer& operator=(const MethodServer&) = delete;

    // Reads and answers nothing from here on, or does again.
    void hang() { watch.stop(); }
    void goOn()
    {
        watch.start(xcb_get_file_descriptor(c), [this] { read(); });
        read();
    }
    // Its connection breaks, as when the program crashes.
    void die()
    {
        if (c == nullptr)
            return;
        watch.stop();
        xcb_connection_t* const killer = xcb_connect(nullptr, nullptr);
        xcb_kill_client(killer, window);
        xcb_flush(killer);
        while (const Tovra::X11Reply<xcb_generic_event_t> event{xcb_wait_for_event(c)})
            ;
        xcb_disconnect(killer);
        xcb_im_close_im(im); // what it still sends goes nowhere
        xcb_im_destroy(im);
        xcb_disconnect(c);
        c = nullptr;
    }

    std::vector<int> keys; // that it was given
    int contexts = 0;
    xcb_point_t spot{};
    bool diesOnB = false;

private:
    static void called(xcb_im_t*, xcb_im_client_t*, xcb_im_input_context_t* context,
                       const xcb_im_packet_header_fr_t* head, void*, void* argument, void* data)
    {
        auto& server = *static_cast<MethodServer*>(data);
        if (head->major_opcode == XCB_XIM_CREATE_IC)
            ++server.contexts;
        if (head->major_opcode == XCB_XIM_CREATE_IC || head->major_opcode == XCB_XIM_SET_IC_VALUES)
            server.spot = xcb_im_input_context_get_preedit_attr(context)->spot_location;
        if (head->major_opcode == XCB_XIM_FORWARD_EVENT)
            server.key(context, *static_cast<xcb_key_press_event_t*>(argument));
    }

    void key(xcb_im_input_context_t* context, xcb_key_press_event_t& event)
    {
        keys.push_back(event.detail);
        if (event.detail == keyB && diesOnB)
            isDying = true;
        if (event.detail == keyB)
            return;
        if (event.detail != keyA)
            return xcb_im_forward_event(im, context, &event);
        const char text[] = "\xe6\x97\xa5\xe6\x9c\xac";
        std::size_t length = 0;
        const std::unique_ptr<char, Tovra::X11Free> sent(
            xcb_utf8_to_compound_text(text, std::strlen(text), &length));
        xcb_im_commit_string(im, context, XCB_XIM_LOOKUP_CHARS, sent.get(), std::uint32_t(length), 0);
    }

    void read()
    {
        while (!isDying)
        {
            const Tovra::X11Reply<xcb_generic_event_t> event(xcb_poll_for_event(c));
            if (event == nullptr)
                break;
            xcb_im_filter_event(im, event.get());
        }
        if (isDying)
            return die();
        xcb_flush(c);
    }

    xcb_connection_t* c = nullptr;
    xcb_window_t window = 0;
    xcb_im_t* im = nullptr;
    xcb_im_styles_t styles;
    std::uint32_t onlyStyle;
    char compound[14] = "COMPOUND_TEXT";
    xcb_im_encoding_t encoding[1] = {compound};
    xcb_im_encodings_t encodings{1, encoding};
    bool isDying = false;
    Tovra::DescriptorWatch watch;
};
