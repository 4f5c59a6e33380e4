// Documents, shown by the desktop.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace platform {

enum class OpenResult { Opened, NoViewer, Failed };

// A document on its way to the user's viewer. When this ends, the viewer stays.
class DocumentOpening {
public:
    virtual ~DocumentOpening() = default;

    // What has come of it; nothing as long as the desktop has not answered. Does not wait.
    virtual std::optional<OpenResult> result() = 0;
};

// Asks for a document to be shown in the user's viewer and returns at once. `window` is the
// system's handle of the window that asks, or null. UTF-8.
std::unique_ptr<DocumentOpening> openDocument(void* window, const std::string& path);

}  // namespace platform
