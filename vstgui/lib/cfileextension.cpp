// Kinds of files.
#include "vstgui/lib/cfileextension.h"

namespace VSTGUI {

namespace {

std::string copied(UTF8StringPtr text)
{
    return text ? text : "";
}

}  // namespace

CFileExtension::CFileExtension(UTF8StringPtr inDescription, UTF8StringPtr inExtension,
                               UTF8StringPtr inMimeType, int32_t inMacType, UTF8StringPtr inUti)
    : description(copied(inDescription)), extension(copied(inExtension)),
      mimeType(copied(inMimeType)), uti(copied(inUti)), macType(inMacType)
{
}

bool CFileExtension::operator==(const CFileExtension& other) const
{
    const auto agree = [](const std::string& a, const std::string& b) {
        return !a.empty() && a == b;
    };
    return agree(extension, other.extension) || agree(mimeType, other.mimeType)
        || agree(uti, other.uti) || (macType != 0 && macType == other.macType);
}

}  // namespace VSTGUI
