// Documents on Windows, where the result is known at once.
#include "platform/Documents.h"

#include "platform/win32/WideText.h"

#include <windows.h>

#include <shellapi.h>

namespace platform {

namespace {

class Answered : public DocumentOpening {
public:
    explicit Answered(OpenResult answer) : answer(answer) { }
    std::optional<OpenResult> result() override { return answer; }

private:
    const OpenResult answer;
};

}  // namespace

std::unique_ptr<DocumentOpening> openDocument(void* window, const std::string& path)
{
    // ShellExecute returns a value above 32 on success.
    constexpr INT_PTR kLastError = 32;
    const auto result = reinterpret_cast<INT_PTR>(ShellExecuteW(
        static_cast<HWND>(window), L"open", toWide(path).c_str(), nullptr, nullptr, SW_SHOW));
    return std::make_unique<Answered>(result > kLastError            ? OpenResult::Opened
                                          : result == SE_ERR_NOASSOC ? OpenResult::NoViewer
                                                                     : OpenResult::Failed);
}

}  // namespace platform
