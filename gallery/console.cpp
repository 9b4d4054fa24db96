// Lines to the program's standard output and error, also for a GUI program.
#include "console.h"

#include <windows.h>

namespace
{
// The handle of a standard stream: the inherited one, or else the parent's console.
HANDLE StandardHandle(DWORD nStdHandle)
{
    HANDLE h = GetStdHandle(nStdHandle);
    if (h != nullptr && h != INVALID_HANDLE_VALUE)
        return h;
    static HANDLE s_hConsole = nullptr;
    static bool s_bTried = false;
    if (!s_bTried)
    {
        s_bTried = true;
        if (AttachConsole(ATTACH_PARENT_PROCESS))
            s_hConsole = CreateFileA("CONOUT$", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                     OPEN_EXISTING, 0, nullptr);
    }
    return s_hConsole != INVALID_HANDLE_VALUE ? s_hConsole : nullptr;
}

void WriteLine(DWORD nStdHandle, const std::string& text)
{
    std::string line = text + "\n";
    OutputDebugStringA(line.c_str());
    HANDLE h = StandardHandle(nStdHandle);
    if (h == nullptr)
        return;
    DWORD written = 0;
    WriteFile(h, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}
}

void WriteOutputLine(const std::string& text)
{
    WriteLine(STD_OUTPUT_HANDLE, text);
}

void WriteErrorLine(const std::string& text)
{
    WriteLine(STD_ERROR_HANDLE, "KelGallery: " + text);
}

void WritePlainErrorLine(const std::string& text)
{
    WriteLine(STD_ERROR_HANDLE, text);
}

std::string NarrowText(const std::wstring& text)
{
    if (text.empty())
        return std::string();
    int n = WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<size_t>(n), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), &result[0], n, nullptr, nullptr);
    return result;
}
