// CFileExtension: a file type offered by a file dialog.
#pragma once

#include "vstgui/lib/vstguibase.h"

#include <string>

namespace VSTGUI {

class CFileExtension {
public:
    // Extension without the dot. Null counts as empty.
    CFileExtension(UTF8StringPtr description, UTF8StringPtr extension,
                   UTF8StringPtr mimeType = nullptr, int32_t macType = 0,
                   UTF8StringPtr uti = nullptr);

    UTF8StringPtr getDescription() const { return description.c_str(); }
    UTF8StringPtr getExtension() const { return extension.c_str(); }

    // Equal if they share the extension, MIME type, UTI or Mac type, empty or 0 excepted.
    bool operator==(const CFileExtension& other) const;
    bool operator!=(const CFileExtension& other) const { return !(*this == other); }

private:
    std::string description;
    std::string extension;
    std::string mimeType;
    std::string uti;
    int32_t macType;
};

}  // namespace VSTGUI
