// Opening documents in the desktop's viewer.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace platform {

enum class OpenResult { Opened, NoViewer, Failed };

// A request to open a document. Destroying it does not close the viewer.
class DocumentOpening {
public:
    virtual ~DocumentOpening() = default;

    // The result; nothing until the desktop has answered. Does not wait.
    virtual std::optional<OpenResult> result() = 0;
};

// Opens a document (path in UTF-8) in the user's viewer and returns at once. `window` is the
// system's handle of the parent window, or null.
std::unique_ptr<DocumentOpening> openDocument(void* window, const std::string& path);

}  // namespace platform
