// SPDX-License-Identifier: GPL-3.0-or-later
// A desktop portal that does what a test tells it, in a process of its own.
//
//   stand_in_portal BUS-ADDRESS [version N|no-chooser] STEP...
//
// It writes "ready" when it has its name, then each call as text. On a call that shows a panel it takes the
// steps one after the other:
//
//   handle | handle-at PATH | nonsense | error   answers the call
//   respond CODE URI...                          sends the response
//   text-as-uris | empty-response                sends one that is not what it should be
//   stranger URI                                 another program sends a response
//   leave | die                                  gives up its name, or ends
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <dbus/dbus.h>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{
constexpr char portal[] = "org.freedesktop.portal.Desktop";
constexpr char request[] = "org.freedesktop.portal.Request";

std::string textOf(DBusMessageIter& at);

template <typename T>
T basic(DBusMessageIter& at)
{
    T value{};
    dbus_message_iter_get_basic(&at, &value);
    return value;
}

std::string listOf(DBusMessageIter& at)
{
    DBusMessageIter inner;
    dbus_message_iter_recurse(&at, &inner);
    std::string text;
    for (; dbus_message_iter_get_arg_type(&inner) != DBUS_TYPE_INVALID; dbus_message_iter_next(&inner))
        text += (text.empty() ? "" : " ") + textOf(inner);
    return text;
}

std::string bytesOf(DBusMessageIter& at)
{
    DBusMessageIter inner;
    const char* bytes = nullptr;
    int count = 0;
    dbus_message_iter_recurse(&at, &inner);
    dbus_message_iter_get_fixed_array(&inner, &bytes, &count);
    std::string text(bytes, std::size_t(count));
    const std::size_t end = text.find('\0');
    return end != std::string::npos ? text.replace(end, 1, "\\0") : text;
}

std::string textOf(DBusMessageIter& at)
{
    switch (dbus_message_iter_get_arg_type(&at))
    {
    case DBUS_TYPE_STRING:
    case DBUS_TYPE_OBJECT_PATH:
        return "'" + std::string(basic<const char*>(at)) + "'";
    case DBUS_TYPE_BOOLEAN:
        return basic<dbus_bool_t>(at) ? "true" : "false";
    case DBUS_TYPE_UINT32:
        return std::to_string(basic<std::uint32_t>(at));
    case DBUS_TYPE_ARRAY:
        return "[" + (dbus_message_iter_get_element_type(&at) == DBUS_TYPE_BYTE ? bytesOf(at) : listOf(at)) +
               "]";
    case DBUS_TYPE_STRUCT:
        return "(" + listOf(at) + ")";
    default:
        return listOf(at);
    }
}

class Portal
{
public:
    Portal(const char* busAddress, std::vector<std::string> words)
        : address(busAddress), steps(std::move(words))
    {
        bus = connect();
        while (dbus_bus_request_name(bus, portal, DBUS_NAME_FLAG_DO_NOT_QUEUE, nullptr) ==
               DBUS_REQUEST_NAME_REPLY_EXISTS)
            usleep(1000); // the one before it is still about to end
        std::cout << "ready" << std::endl;
    }

    void run()
    {
        while (dbus_connection_read_write(bus, -1))
            while (DBusMessage* const message = dbus_connection_pop_message(bus))
            {
                receive(*message);
                dbus_message_unref(message);
            }
    }

private:
    DBusConnection* connect() const
    {
        DBusConnection* const made = dbus_connection_open_private(address, nullptr);
        if (made == nullptr || !dbus_bus_register(made, nullptr))
            std::exit(1);
        return made;
    }

    void receive(DBusMessage& message)
    {
        const char* const member = dbus_message_get_member(&message);
        if (dbus_message_get_type(&message) != DBUS_MESSAGE_TYPE_METHOD_CALL || member == nullptr)
            return;
        DBusMessageIter arguments;
        std::cout << member;
        if (dbus_message_iter_init(&message, &arguments))
            do
                std::cout << ' ' << textOf(arguments);
            while (dbus_message_iter_next(&arguments));
        std::cout << std::endl;
        if (member == std::string("Get"))
            return tellVersion(message);
        if (member != std::string("OpenFile") && member != std::string("SaveFile"))
            return;
        caller = dbus_message_get_sender(&message);
        path = "/org/freedesktop/portal/desktop/request/" + caller.substr(1) + "/tovrane_panel";
        std::replace(path.begin(), path.end(), '.', '_');
        for (const std::string& step : steps)
            take(step, message);
    }

    void tellVersion(DBusMessage& call)
    {
        if (steps[0] == "no-chooser")
            return answer(dbus_message_new_error(&call, DBUS_ERROR_UNKNOWN_INTERFACE, "none"));
        const std::uint32_t version =
            steps[0].starts_with("version ") ? std::uint32_t(std::stoul(steps[0].substr(8))) : 4;
        DBusMessage* const reply = dbus_message_new_method_return(&call);
        DBusMessageIter arguments, variant;
        dbus_message_iter_init_append(reply, &arguments);
        dbus_message_iter_open_container(&arguments, DBUS_TYPE_VARIANT, "u", &variant);
        dbus_message_iter_append_basic(&variant, DBUS_TYPE_UINT32, &version);
        dbus_message_iter_close_container(&arguments, &variant);
        answer(reply);
    }

    void answer(DBusMessage* reply) { send(bus, reply); }

    void send(DBusConnection* on, DBusMessage* message)
    {
        dbus_connection_send(on, message, nullptr);
        dbus_connection_flush(on);
        dbus_message_unref(message);
    }

    void take(const std::string& step, DBusMessage& call)
    {
        std::istringstream stream(step);
        std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
        const std::string word = words[0];
        if (word == "handle" || word == "handle-at")
            tellHandle(call, word == "handle-at" ? words[1] : path);
        else if (word == "nonsense")
            answer(withText(dbus_message_new_method_return(&call), "what?"));
        else if (word == "error")
            answer(dbus_message_new_error(&call, DBUS_ERROR_FAILED, "no"));
        else if (word == "respond")
            respond(bus, std::uint32_t(std::stoul(words[1])), {words.begin() + 2, words.end()});
        else if (word == "text-as-uris")
            respondWithText();
        else if (word == "empty-response")
            send(bus, response());
        else if (word == "stranger")
            respondAsStranger(words[1]);
        else if (word == "leave")
            dbus_bus_release_name(bus, portal, nullptr);
        else if (word == "die")
            _exit(0);
    }

    void tellHandle(DBusMessage& call, const std::string& at)
    {
        path = at;
        const char* const text = path.c_str();
        DBusMessage* const reply = dbus_message_new_method_return(&call);
        dbus_message_append_args(reply, DBUS_TYPE_OBJECT_PATH, &text, DBUS_TYPE_INVALID);
        answer(reply);
    }

    static DBusMessage* withText(DBusMessage* message, const char* text)
    {
        dbus_message_append_args(message, DBUS_TYPE_STRING, &text, DBUS_TYPE_INVALID);
        return message;
    }

    DBusMessage* response() const
    {
        DBusMessage* const signal = dbus_message_new_signal(path.c_str(), request, "Response");
        dbus_message_set_destination(signal, caller.c_str());
        return signal;
    }

    // write gets the place of the value of "uris".
    template <typename Write>
    DBusMessage* responseWith(std::uint32_t code, const char* type, Write write) const
    {
        DBusMessage* const signal = response();
        DBusMessageIter arguments, table, entry, variant;
        const char* const key = "uris";
        dbus_message_iter_init_append(signal, &arguments);
        dbus_message_iter_append_basic(&arguments, DBUS_TYPE_UINT32, &code);
        dbus_message_iter_open_container(&arguments, DBUS_TYPE_ARRAY, "{sv}", &table);
        dbus_message_iter_open_container(&table, DBUS_TYPE_DICT_ENTRY, nullptr, &entry);
        dbus_message_iter_append_basic(&entry, DBUS_TYPE_STRING, &key);
        dbus_message_iter_open_container(&entry, DBUS_TYPE_VARIANT, type, &variant);
        write(variant);
        dbus_message_iter_close_container(&entry, &variant);
        dbus_message_iter_close_container(&table, &entry);
        dbus_message_iter_close_container(&arguments, &table);
        return signal;
    }

    void respond(DBusConnection* on, std::uint32_t code, const std::vector<std::string>& uris)
    {
        send(on, responseWith(code, "as",
                              [&](DBusMessageIter& variant)
                              {
                                  DBusMessageIter list;
                                  dbus_message_iter_open_container(&variant, DBUS_TYPE_ARRAY, "s", &list);
                                  for (const std::string& uri : uris)
                                  {
                                      const char* const text = uri.c_str();
                                      dbus_message_iter_append_basic(&list, DBUS_TYPE_STRING, &text);
                                  }
                                  dbus_message_iter_close_container(&variant, &list);
                              }));
    }

    void respondWithText()
    {
        send(bus, responseWith(0, "s",
                               [](DBusMessageIter& variant)
                               {
                                   const char* const text = "file:///x";
                                   dbus_message_iter_append_basic(&variant, DBUS_TYPE_STRING, &text);
                               }));
    }

    // The bus has passed it on when this returns.
    void respondAsStranger(const std::string& uri)
    {
        DBusConnection* const other = connect();
        respond(other, 0, {uri});
        dbus_bus_name_has_owner(other, portal, nullptr);
    }

    const char* const address;
    const std::vector<std::string> steps;
    DBusConnection* bus;
    std::string caller;
    std::string path; // of the request
};
}

int main(int count, char** words)
{
    Portal(words[1], {words + 2, words + count}).run();
}
