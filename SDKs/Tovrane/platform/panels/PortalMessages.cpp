// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/panels/PortalMessages.h"

#include "CORE/Utf8.h"
#include "Tovrane/platform/parts/UriList.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace Tovra
{
namespace
{
constexpr char portalPath[] = "/org/freedesktop/portal/desktop";
constexpr char chooserInterface[] = "org.freedesktop.portal.FileChooser";

// The library ends the process when it is given a text that is no UTF-8.
std::string busText(const std::string& text)
{
    return Core::Utf8::replaceInvalid(text.substr(0, text.find('\0')));
}

// An array, a structure or a variant that is being written into another one; closed at the end.
class Part
{
public:
    Part(DBusMessageIter& in, int type, const char* content) : outer(in)
    {
        dbus_message_iter_open_container(&outer, type, content, &inner);
    }
    ~Part() { dbus_message_iter_close_container(&outer, &inner); }
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;

    DBusMessageIter inner;

private:
    DBusMessageIter& outer;
};

void append(DBusMessageIter& to, const std::string& text)
{
    const std::string valid = busText(text);
    const char* const bytes = valid.c_str();
    dbus_message_iter_append_basic(&to, DBUS_TYPE_STRING, &bytes);
}

// One entry of a table of options. write gets the place of the value.
template <typename Write>
void appendOption(DBusMessageIter& options, const char* key, const char* type, Write write)
{
    Part entry(options, DBUS_TYPE_DICT_ENTRY, nullptr);
    append(entry.inner, key);
    Part value(entry.inner, DBUS_TYPE_VARIANT, type);
    write(value.inner);
}

void appendOption(DBusMessageIter& options, const char* key, const std::string& text)
{
    appendOption(options, key, "s", [&](DBusMessageIter& value) { append(value, text); });
}

void appendTrue(DBusMessageIter& options, const char* key)
{
    const dbus_bool_t yes = TRUE;
    appendOption(options, key, "b",
                 [&](DBusMessageIter& value)
                 { dbus_message_iter_append_basic(&value, DBUS_TYPE_BOOLEAN, &yes); });
}

// A path as the bytes that it consists of, with the NUL at its end.
void appendPath(DBusMessageIter& options, const char* key, const std::string& path)
{
    appendOption(options, key, "ay",
                 [&](DBusMessageIter& value)
                 {
                     Part bytes(value, DBUS_TYPE_ARRAY, "y");
                     const char* const data = path.c_str();
                     dbus_message_iter_append_fixed_array(&bytes.inner, DBUS_TYPE_BYTE, &data,
                                                          int(std::strlen(data)) + 1);
                 });
}

// A name and a list with one pattern, which is of kind 0.
void appendFilter(DBusMessageIter& filters, const FileSelectorType& type)
{
    const std::uint32_t isPattern = 0;
    const bool isAny = type.extension.empty() || type.extension == "*";
    Part filter(filters, DBUS_TYPE_STRUCT, nullptr);
    append(filter.inner, type.description);
    Part patterns(filter.inner, DBUS_TYPE_ARRAY, "(us)");
    Part one(patterns.inner, DBUS_TYPE_STRUCT, nullptr);
    dbus_message_iter_append_basic(&one.inner, DBUS_TYPE_UINT32, &isPattern);
    append(one.inner, isAny ? "*" : "*." + type.extension);
}

void appendOptions(DBusMessageIter& call, const FileSelectorOptions& asked, const char* token)
{
    Part options(call, DBUS_TYPE_ARRAY, "{sv}");
    appendOption(options.inner, "handle_token", token);
    if (asked.purpose == FileSelectorOptions::openFiles)
        appendTrue(options.inner, "multiple");
    if (asked.purpose == FileSelectorOptions::openFolder)
        appendTrue(options.inner, "directory");
    if (asked.purpose != FileSelectorOptions::openFolder && !asked.types.empty())
        appendOption(options.inner, "filters", "a(sa(us))",
                     [&](DBusMessageIter& value)
                     {
                         Part filters(value, DBUS_TYPE_ARRAY, "(sa(us))");
                         for (const FileSelectorType& type : asked.types)
                             appendFilter(filters.inner, type);
                     });
    if (asked.startFolder.starts_with('/'))
        appendPath(options.inner, "current_folder", asked.startFolder);
    const std::string name = asked.startFile.substr(asked.startFile.rfind('/') + 1);
    if (asked.purpose == FileSelectorOptions::saveFile && !name.empty())
        appendOption(options.inner, "current_name", name);
}

std::string parentOf(std::uint32_t window)
{
    if (window == 0)
        return "";
    std::array<char, 8> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), window, 16).ptr;
    return "x11:" + std::string(digits.data(), end);
}

BusMessage chooserCall(const char* method)
{
    return BusMessage(dbus_message_new_method_call(portalName, portalPath, chooserInterface, method));
}
}

BusMessage portalVersionCall()
{
    BusMessage call(dbus_message_new_method_call(portalName, portalPath, DBUS_INTERFACE_PROPERTIES, "Get"));
    const char* const interfaceName = chooserInterface;
    const char* const property = "version";
    dbus_message_append_args(call.get(), DBUS_TYPE_STRING, &interfaceName, DBUS_TYPE_STRING, &property,
                             DBUS_TYPE_INVALID);
    return call;
}

static bool isReplyOf(DBusMessage& message, const char* signature)
{
    return dbus_message_get_type(&message) == DBUS_MESSAGE_TYPE_METHOD_RETURN &&
           dbus_message_has_signature(&message, signature);
}

std::optional<std::uint32_t> portalVersion(DBusMessage& reply)
{
    if (!isReplyOf(reply, "v"))
        return std::nullopt;
    DBusMessageIter variant, value;
    dbus_message_iter_init(&reply, &variant);
    dbus_message_iter_recurse(&variant, &value);
    if (dbus_message_iter_get_arg_type(&value) != DBUS_TYPE_UINT32)
        return std::nullopt;
    std::uint32_t version = 0;
    dbus_message_iter_get_basic(&value, &version);
    return version;
}

BusMessage portalCall(const FileSelectorOptions& options, std::uint32_t window, const char* token)
{
    BusMessage call = chooserCall(options.purpose == FileSelectorOptions::saveFile ? "SaveFile" : "OpenFile");
    DBusMessageIter arguments;
    dbus_message_iter_init_append(call.get(), &arguments);
    append(arguments, parentOf(window));
    append(arguments, options.title);
    appendOptions(arguments, options, token);
    return call;
}

std::string portalRequestPath(const std::string& uniqueName, const char* token)
{
    std::string caller = uniqueName.substr(1);
    std::replace(caller.begin(), caller.end(), '.', '_');
    return std::string(portalPath) + "/request/" + caller + "/" + token;
}

std::optional<std::string> portalHandle(DBusMessage& reply)
{
    const char* handle = nullptr;
    if (!isReplyOf(reply, "o") ||
        !dbus_message_get_args(&reply, nullptr, DBUS_TYPE_OBJECT_PATH, &handle, DBUS_TYPE_INVALID))
        return std::nullopt;
    return handle;
}

BusMessage portalCloseCall(const std::string& handle)
{
    return BusMessage(
        dbus_message_new_method_call(portalName, handle.c_str(), portalRequestInterface, "Close"));
}

// The texts of an array of them; none if it is something else.
static std::vector<std::string> textsOf(DBusMessageIter& variant)
{
    std::vector<std::string> texts;
    DBusMessageIter array, item;
    dbus_message_iter_recurse(&variant, &array);
    if (dbus_message_iter_get_arg_type(&array) != DBUS_TYPE_ARRAY ||
        dbus_message_iter_get_element_type(&array) != DBUS_TYPE_STRING)
        return texts;
    dbus_message_iter_recurse(&array, &item);
    for (; dbus_message_iter_get_arg_type(&item) == DBUS_TYPE_STRING; dbus_message_iter_next(&item))
    {
        const char* text = nullptr;
        dbus_message_iter_get_basic(&item, &text);
        texts.emplace_back(text);
    }
    return texts;
}

static void appendPathOf(const std::string& address, std::vector<std::string>& paths)
{
    const bool isOneLine = address.find_first_of("\r\n") == std::string::npos;
    if (!address.starts_with("file://") || !isOneLine)
        return;
    const auto decoded = pathsOfUriList(address);
    paths.insert(paths.end(), decoded.begin(), decoded.end());
}

PortalResponse portalResponse(DBusMessage& signal)
{
    PortalResponse response;
    if (!dbus_message_has_signature(&signal, "ua{sv}"))
        return response;
    DBusMessageIter argument, entry;
    std::uint32_t code = 0;
    dbus_message_iter_init(&signal, &argument);
    dbus_message_iter_get_basic(&argument, &code);
    dbus_message_iter_next(&argument);
    dbus_message_iter_recurse(&argument, &entry);
    for (; dbus_message_iter_get_arg_type(&entry) == DBUS_TYPE_DICT_ENTRY; dbus_message_iter_next(&entry))
    {
        DBusMessageIter keyAndValue;
        const char* key = nullptr;
        dbus_message_iter_recurse(&entry, &keyAndValue);
        dbus_message_iter_get_basic(&keyAndValue, &key);
        dbus_message_iter_next(&keyAndValue);
        if (code == 0 && std::strcmp(key, "uris") == 0)
            for (const std::string& address : textsOf(keyAndValue))
                appendPathOf(address, response.paths);
    }
    response.isChosen = !response.paths.empty();
    return response;
}
}
