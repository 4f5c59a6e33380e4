#include "vstgui/lib/cfileextension.h"

namespace VSTGUI {

namespace {

std::string copied(UTF8StringPtr text)
{
    return text ? text : "";
}

}  // namespace

CFileExtension::CFileExtension(UTF8StringPtr description, UTF8StringPtr extension,
                               UTF8StringPtr mimeType, int32_t macType, UTF8StringPtr uti)
    : description(copied(description)), extension(copied(extension)), mimeType(copied(mimeType)),
      uti(copied(uti)), macType(macType)
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
