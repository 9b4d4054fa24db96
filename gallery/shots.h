// Shots of windows as PNG files: what a window shows on the screen, frame included, read
// back from its window device context and written with GDI+.
//
//     CShotWriter writer;
//     std::string error;
//     if (!writer.Open(L"C:\\shots", error)) ...       // creates the folder if missing
//     SettleWindow(hWnd, 300);                          // let it paint
//     std::wstring path;
//     if (!writer.WriteWindow(hWnd, "01-welcome.png", path, error)) ...
#pragma once
#include <windows.h>

#include <string>

// Pumps the thread's messages for about nMilliseconds, with the window and all its children
// repainted on the way, so that a shot sees the window as a user would.
void SettleWindow(HWND hWnd, DWORD nMilliseconds);

class CShotWriter
{
public:
    CShotWriter() = default;
    ~CShotWriter();
    CShotWriter(const CShotWriter&) = delete;   // one GDI+ session per writer
    CShotWriter& operator=(const CShotWriter&) = delete;

    // Starts GDI+, finds its PNG encoder and creates the folder with its parents.
    bool Open(const std::wstring& folder, std::string& error);
    // The full path of the folder, once open.
    const std::wstring& GetFolder() const { return m_folder; }

    // Captures the window with its frame and writes it as <folder>\<fileName>. Fails also when
    // the captured picture is of one colour only, since then nothing was painted.
    bool WriteWindow(HWND hWnd, const std::string& fileName, std::wstring& path, std::string& error);

private:
    ULONG_PTR m_gdiplusToken = 0;
    CLSID m_pngEncoder = {};
    std::wstring m_folder;
};
