// LibDbus: the functions of libdbus, which is loaded at the first use; without the library the
// plug-in works all the same.
#pragma once

#include <dbus/dbus.h>

namespace VSTGUI {
namespace X11 {

#define ZKR_DBUS_FUNCTIONS(X)                                                                      \
    X(bus_add_match)                                                                               \
    X(connection_close)                                                                            \
    X(connection_get_is_connected)                                                                 \
    X(connection_open_private)                                                                     \
    X(connection_pop_message)                                                                      \
    X(connection_read_write)                                                                       \
    X(connection_send)                                                                             \
    X(connection_set_exit_on_disconnect)                                                           \
    X(connection_unref)                                                                            \
    X(error_free)                                                                                  \
    X(error_init)                                                                                  \
    X(message_get_args)                                                                            \
    X(message_get_path)                                                                            \
    X(message_get_reply_serial)                                                                    \
    X(message_get_type)                                                                            \
    X(message_is_signal)                                                                           \
    X(message_iter_append_basic)                                                                   \
    X(message_iter_append_fixed_array)                                                             \
    X(message_iter_close_container)                                                                \
    X(message_iter_get_arg_type)                                                                   \
    X(message_iter_get_basic)                                                                      \
    X(message_iter_init)                                                                           \
    X(message_iter_init_append)                                                                    \
    X(message_iter_next)                                                                           \
    X(message_iter_open_container)                                                                 \
    X(message_iter_recurse)                                                                        \
    X(message_new_method_call)                                                                     \
    X(message_unref)

// Members have the functions' names without "dbus_".
struct LibDbus {
    // Null if the library is not installed.
    static const LibDbus* load();

#define ZKR_DBUS_MEMBER(name) decltype(&dbus_##name) name;
    ZKR_DBUS_FUNCTIONS(ZKR_DBUS_MEMBER)
#undef ZKR_DBUS_MEMBER
};

}  // namespace X11
}  // namespace VSTGUI
