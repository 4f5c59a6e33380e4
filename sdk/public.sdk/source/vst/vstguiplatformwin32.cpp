#include "public.sdk/source/vst/vstguiplatform.h"

#include <windows.h>

// The module whose resources the toolkit loads: this library.
void* hInstance = nullptr;

namespace Steinberg {
namespace Vst {

void startToolkit()
{
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT
                           | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&startToolkit), &self);
    hInstance = self;
}

std::unique_ptr<VSTGUI::IPlatformFrameConfig> makeFrameConfig(IPlugFrame* /*host*/)
{
    return nullptr;
}

bool hasEventLoop(IPlugFrame* /*host*/)
{
    return true;
}

void keepLibraryLoaded()
{
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&keepLibraryLoaded), &self);
}

FIDString windowType()
{
    return kPlatformTypeHWND;
}

}  // namespace Vst
}  // namespace Steinberg
