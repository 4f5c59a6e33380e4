// Documents and messages, shown by the desktop.
#pragma once

#include <string>

namespace platform {

enum class OpenResult { Opened, NoViewer, Failed };

// Shows a document in the user's viewer and returns at once. `window` is the system's handle of the
// window that asks, or null. UTF-8.
OpenResult openDocument(void* window, const std::string& path);

// Shows a message; on Windows until the user has closed it. Without a desktop nothing happens.
void showMessage(void* window, const std::string& text, const std::string& caption);

}  // namespace platform
