#include "vstgui/platform/x11/portalchooser.h"

#include "platform/Utf8.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace VSTGUI {
namespace X11 {

namespace {

constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
constexpr const char* kFileChooser = "org.freedesktop.portal.FileChooser";
constexpr const char* kRequest = "org.freedesktop.portal.Request";
constexpr const char* kToken = "zkr";  // our name for the request; each dialog has its connection

// A portal that takes longer to answer counts as missing. It may have to be started first.
constexpr std::chrono::seconds kMaxWait{5};

std::string busAddress()
{
    if (const char* const address = std::getenv("DBUS_SESSION_BUS_ADDRESS"))
        return address;
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    const std::string socket = folder ? std::string(folder) + "/bus" : "";
    std::error_code ignored;
    return std::filesystem::is_socket(socket, ignored) ? "unix:path=" + socket : "";
}

// libdbus ends the process when it gets text that is not UTF-8.
void appendText(const LibDbus& bus, DBusMessageIter& to, const std::string& text)
{
    const std::string valid = platform::validUtf8(text.c_str());
    const char* const characters = valid.c_str();
    bus.message_iter_append_basic(&to, DBUS_TYPE_STRING, &characters);
}

// Appends an array, struct, variant or dictionary entry that `fill` fills.
template <typename Fill>
void appendContainer(const LibDbus& bus, DBusMessageIter& to, int type, const char* signature,
                     Fill fill)
{
    DBusMessageIter inside;
    bus.message_iter_open_container(&to, type, signature, &inside);
    fill(inside);
    bus.message_iter_close_container(&to, &inside);
}

// Appends an entry of a dictionary of variants.
template <typename Fill>
void appendOption(const LibDbus& bus, DBusMessageIter& to, const char* key, const char* signature,
                  Fill fill)
{
    appendContainer(bus, to, DBUS_TYPE_DICT_ENTRY, nullptr, [&](DBusMessageIter& entry) {
        appendText(bus, entry, key);
        appendContainer(bus, entry, DBUS_TYPE_VARIANT, signature, fill);
    });
}

// Appends a description and its patterns, each marked as a pattern by a 0.
void appendFilter(const LibDbus& bus, DBusMessageIter& to, const FileFilter& filter)
{
    appendContainer(bus, to, DBUS_TYPE_STRUCT, nullptr, [&](DBusMessageIter& pair) {
        appendText(bus, pair, filter.description);
        appendContainer(bus, pair, DBUS_TYPE_ARRAY, "(us)", [&](DBusMessageIter& list) {
            for (const std::string& pattern : filter.patterns)
                appendContainer(bus, list, DBUS_TYPE_STRUCT, nullptr, [&](DBusMessageIter& item) {
                    const dbus_uint32_t kind = 0;
                    bus.message_iter_append_basic(&item, DBUS_TYPE_UINT32, &kind);
                    appendText(bus, item, pattern);
                });
        });
    });
}

// The text at that place; empty for other types.
std::string textAt(const LibDbus& bus, DBusMessageIter& place)
{
    const char* text = "";
    if (bus.message_iter_get_arg_type(&place) == DBUS_TYPE_STRING)
        bus.message_iter_get_basic(&place, &text);
    return text;
}

// The path of a local file; empty for other addresses.
std::string pathOfUri(const std::string& uri)
{
    const std::string scheme = "file://";
    const size_t start = uri.find('/', scheme.size());
    if (uri.compare(0, scheme.size(), scheme) != 0 || start == std::string::npos)
        return {};
    std::string path;
    for (size_t i = start; i < uri.size(); ++i) {
        const std::string digits = uri[i] == '%' ? uri.substr(i + 1, 2) : "";
        const bool coded = digits.size() == 2
            && digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
        const char c = coded ? static_cast<char>(std::stoi(digits, nullptr, 16)) : uri[i];
        if (c == '\0')
            return {};
        path += c;
        i += coded ? 2 : 0;
    }
    return path;
}

}  // namespace

std::unique_ptr<FileChooser> PortalChooser::open(const FileDialogRequest& request, Window parent)
{
    const LibDbus* const bus = LibDbus::load();
    const std::string address = busAddress();
    if (!bus || address.empty())
        return nullptr;
    DBusError error;
    bus->error_init(&error);
    DBusConnection* const connection = bus->connection_open_private(address.c_str(), &error);
    bus->error_free(&error);
    if (!connection)
        return nullptr;
    return std::unique_ptr<FileChooser>(new PortalChooser(*bus, connection, request, parent));
}

PortalChooser::PortalChooser(const LibDbus& bus, DBusConnection* connection,
                             const FileDialogRequest& request, Window parent)
    : bus(bus), connection(connection), request(request), parentWindow([parent] {
          std::ostringstream text;
          text << "x11:" << std::hex << parent;
          return text.str();
      }())
{
    bus.connection_set_exit_on_disconnect(connection, FALSE);
    send(newCall(kBus, "/org/freedesktop/DBus", kBus, "Hello"), Awaited::connection);
}

PortalChooser::~PortalChooser()
{
    if (!dialog.empty())
        send(newCall(kPortal, dialog.c_str(), kRequest, "Close"), Awaited::response);
    bus.connection_close(connection);
    bus.connection_unref(connection);
}

DBusMessage* PortalChooser::newCall(const char* service, const char* path, const char* interface,
                                    const char* method) const
{
    return bus.message_new_method_call(service, path, interface, method);
}

void PortalChooser::send(DBusMessage* message, Awaited answer)
{
    bus.connection_send(connection, message, &serial);
    bus.message_unref(message);
    awaited = answer;
    deadline = Clock::now() + kMaxWait;
}

FileChooser::State PortalChooser::poll(std::vector<std::string>& chosen)
{
    bus.connection_read_write(connection, 0);
    State state = State::open;
    while (state == State::open) {
        DBusMessage* const message = bus.connection_pop_message(connection);
        if (!message)
            break;
        state = handle(*message, chosen);
        bus.message_unref(message);
    }
    if (state != State::open)
        return state;
    if (awaited == Awaited::response)
        return bus.connection_get_is_connected(connection) ? State::open : State::ended;
    const bool late = Clock::now() >= deadline;
    return late || !bus.connection_get_is_connected(connection) ? State::unavailable : State::open;
}

FileChooser::State PortalChooser::handle(DBusMessage& message, std::vector<std::string>& chosen)
{
    const int type = bus.message_get_type(&message);
    const bool isReply = type == DBUS_MESSAGE_TYPE_METHOD_RETURN || type == DBUS_MESSAGE_TYPE_ERROR;
    if (isReply && awaited != Awaited::response && bus.message_get_reply_serial(&message) == serial)
        return type == DBUS_MESSAGE_TYPE_ERROR ? State::unavailable : handleReply(message);
    if (bus.message_is_signal(&message, kBus, "NameOwnerChanged")) {
        const char *name = "", *from = "", *to = "";
        const bool read =
            bus.message_get_args(&message, nullptr, DBUS_TYPE_STRING, &name, DBUS_TYPE_STRING,
                                 &from, DBUS_TYPE_STRING, &to, DBUS_TYPE_INVALID);
        // The portal has ended, and its dialog with it.
        if (read && std::string(name) == kPortal && *from && !*to)
            return awaited == Awaited::response ? State::ended : State::unavailable;
    }
    const char* const path = bus.message_get_path(&message);
    if (path && path == dialog && bus.message_is_signal(&message, kRequest, "Response")) {
        dialog.clear();
        readUris(message, chosen);
        return State::ended;
    }
    return State::open;
}

FileChooser::State PortalChooser::handleReply(DBusMessage& reply)
{
    if (awaited == Awaited::connection) {
        askForVersion(reply);
    } else if (awaited == Awaited::version) {
        askForDialog();
    } else {
        // Old portals choose the path of the request themselves.
        const char* path = nullptr;
        if (bus.message_get_args(&reply, nullptr, DBUS_TYPE_OBJECT_PATH, &path, DBUS_TYPE_INVALID))
            dialog = path;
        awaited = Awaited::response;
    }
    return dialog.empty() && awaited == Awaited::response ? State::unavailable : State::open;
}

void PortalChooser::askForVersion(DBusMessage& hello)
{
    const char* name = ":";
    bus.message_get_args(&hello, nullptr, DBUS_TYPE_STRING, &name, DBUS_TYPE_INVALID);
    dialog = name + 1;
    std::replace(dialog.begin(), dialog.end(), '.', '_');
    dialog = std::string(kPortalPath) + "/request/" + dialog + "/" + kToken;

    const std::string signals = "type='signal',sender='";
    bus.bus_add_match(
        connection,
        (signals + kPortal + "',interface='" + kRequest + "',member='Response'").c_str(), nullptr);
    bus.bus_add_match(
        connection, (signals + kBus + "',member='NameOwnerChanged',arg0='" + kPortal + "'").c_str(),
        nullptr);
    DBusMessage* const call = newCall(kPortal, kPortalPath, DBUS_INTERFACE_PROPERTIES, "Get");
    DBusMessageIter arguments;
    bus.message_iter_init_append(call, &arguments);
    appendText(bus, arguments, kFileChooser);
    appendText(bus, arguments, "version");
    send(call, Awaited::version);
}

void PortalChooser::askForDialog()
{
    const bool saving = request.kind == FileDialogRequest::Kind::saveFile;
    DBusMessage* const call =
        newCall(kPortal, kPortalPath, kFileChooser, saving ? "SaveFile" : "OpenFile");
    DBusMessageIter arguments;
    bus.message_iter_init_append(call, &arguments);
    appendText(bus, arguments, parentWindow);
    appendText(bus, arguments, request.title);
    appendContainer(bus, arguments, DBUS_TYPE_ARRAY, "{sv}",
                    [this](DBusMessageIter& options) { appendOptions(options); });
    send(call, Awaited::handle);
}

void PortalChooser::appendOptions(DBusMessageIter& to) const
{
    const auto appendSwitch = [&](const char* key, bool on) {
        appendOption(bus, to, key, "b", [&](DBusMessageIter& value) {
            const dbus_bool_t word = on;
            bus.message_iter_append_basic(&value, DBUS_TYPE_BOOLEAN, &word);
        });
    };
    appendOption(bus, to, "handle_token", "s",
                 [&](DBusMessageIter& value) { appendText(bus, value, kToken); });
    appendSwitch("multiple", request.allowSeveral);
    appendSwitch("directory", request.kind == FileDialogRequest::Kind::selectDirectory);
    if (!request.defaultSaveName.empty())
        appendOption(bus, to, "current_name", "s", [&](DBusMessageIter& value) {
            appendText(bus, value, request.defaultSaveName);
        });
    const std::string folder = startFolder(request);
    if (!folder.empty())
        appendOption(bus, to, "current_folder", "ay", [&](DBusMessageIter& value) {
            appendContainer(bus, value, DBUS_TYPE_ARRAY, "y", [&](DBusMessageIter& bytes) {
                // With the zero byte at its end.
                const char* const path = folder.c_str();
                bus.message_iter_append_fixed_array(&bytes, DBUS_TYPE_BYTE, &path,
                                                    static_cast<int>(folder.size() + 1));
            });
        });
    appendOption(bus, to, "filters", "a(sa(us))", [&](DBusMessageIter& value) {
        appendContainer(bus, value, DBUS_TYPE_ARRAY, "(sa(us))", [&](DBusMessageIter& list) {
            for (const FileFilter& filter : filtersOf(request))
                appendFilter(bus, list, filter);
        });
    });
}

void PortalChooser::readUris(DBusMessage& response, std::vector<std::string>& chosen) const
{
    DBusMessageIter arguments, results;
    dbus_uint32_t cancelled = 1;
    if (!bus.message_iter_init(&response, &arguments)
        || bus.message_iter_get_arg_type(&arguments) != DBUS_TYPE_UINT32)
        return;
    bus.message_iter_get_basic(&arguments, &cancelled);
    if (cancelled || !bus.message_iter_next(&arguments)
        || bus.message_iter_get_arg_type(&arguments) != DBUS_TYPE_ARRAY)
        return;
    bus.message_iter_recurse(&arguments, &results);
    for (; bus.message_iter_get_arg_type(&results) == DBUS_TYPE_DICT_ENTRY;
         bus.message_iter_next(&results)) {
        DBusMessageIter entry, value, uris;
        bus.message_iter_recurse(&results, &entry);
        if (textAt(bus, entry) != "uris" || !bus.message_iter_next(&entry)
            || bus.message_iter_get_arg_type(&entry) != DBUS_TYPE_VARIANT)
            continue;
        bus.message_iter_recurse(&entry, &value);
        if (bus.message_iter_get_arg_type(&value) != DBUS_TYPE_ARRAY)
            continue;
        bus.message_iter_recurse(&value, &uris);
        for (; bus.message_iter_get_arg_type(&uris) == DBUS_TYPE_STRING;
             bus.message_iter_next(&uris)) {
            const std::string path = pathOfUri(textAt(bus, uris));
            if (!path.empty())
                chosen.push_back(path);
        }
    }
}

}  // namespace X11
}  // namespace VSTGUI
