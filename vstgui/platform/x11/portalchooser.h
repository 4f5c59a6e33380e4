// PortalChooser: a file dialog of the desktop's portal, reached over the session's D-Bus.
#pragma once

#include "vstgui/platform/x11/filechooser.h"
#include "vstgui/platform/x11/libdbus.h"

#include <X11/Xlib.h>
#include <chrono>

namespace VSTGUI {
namespace X11 {

class PortalChooser : public FileChooser {
public:
    // The dialog stays in front of the window `parent`. Null without libdbus or a session bus.
    static std::unique_ptr<FileChooser> open(const FileDialogRequest& request, Window parent);
    ~PortalChooser() override;

    State poll(std::vector<std::string>& chosen) override;

private:
    using Clock = std::chrono::steady_clock;
    // What the bus or the portal has to answer next.
    enum class Awaited { connection, version, handle, response };

    PortalChooser(const LibDbus& bus, DBusConnection* connection, const FileDialogRequest& request,
                  Window parent);
    DBusMessage* newCall(const char* service, const char* path, const char* interface,
                         const char* method) const;
    // Releases the message, and waits for that answer from now on.
    void send(DBusMessage* message, Awaited answer);
    void askForVersion(DBusMessage& hello);
    void askForDialog();
    void appendOptions(DBusMessageIter& to) const;
    State handle(DBusMessage& message, std::vector<std::string>& chosen);
    State handleReply(DBusMessage& reply);
    void readUris(DBusMessage& response, std::vector<std::string>& chosen) const;

    const LibDbus& bus;
    DBusConnection* const connection;
    const FileDialogRequest request;
    const std::string parentWindow;
    Awaited awaited{Awaited::connection};
    dbus_uint32_t serial{0};  // of the call that is awaited
    Clock::time_point deadline;
    std::string dialog;  // the object path of the portal's request; empty when there is none
};

}  // namespace X11
}  // namespace VSTGUI
