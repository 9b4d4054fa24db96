// Shots of windows as PNG files: capture from the window device context, GDI+ for the PNG.
#include "shots.h"

#include <afxwin.h>

#include <objidl.h>
#include <gdiplus.h>

#include <memory>
#include <vector>

namespace
{
std::string LastErrorText(const char* what)
{
    char text[64];
    wsprintfA(text, " (error %lu)", GetLastError());
    return std::string(what) + text;
}

// Creates the folder and every missing parent; answers its full path.
bool CreateFolderPath(const std::wstring& folder, std::wstring& fullPath, std::string& error)
{
    DWORD n = GetFullPathNameW(folder.c_str(), 0, nullptr, nullptr);
    if (n == 0)
    {
        error = LastErrorText("cannot resolve the shot folder");
        return false;
    }
    std::wstring full(n, L'\0');
    n = GetFullPathNameW(folder.c_str(), n, &full[0], nullptr);
    full.resize(n);
    while (full.size() > 3 && (full.back() == L'\\' || full.back() == L'/'))
        full.pop_back();

    // Skip the root ("C:\" or "\\server\share\"), then create each level in turn.
    size_t start = 0;
    if (full.compare(0, 2, L"\\\\") == 0)
    {
        start = full.find(L'\\', 2);
        start = start == std::wstring::npos ? full.size() : full.find(L'\\', start + 1);
    }
    else
    {
        start = full.find(L'\\');
    }
    while (start != std::wstring::npos && start < full.size())
    {
        size_t next = full.find(L'\\', start + 1);
        std::wstring level = full.substr(0, next);
        if (!CreateDirectoryW(level.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
        {
            error = LastErrorText("cannot create the shot folder");
            return false;
        }
        start = next;
    }
    DWORD attributes = GetFileAttributesW(full.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
    {
        error = "the shot folder is not a folder";
        return false;
    }
    fullPath = full;
    return true;
}

bool FindPngEncoder(CLSID& clsid, std::string& error)
{
    UINT count = 0, size = 0;
    if (Gdiplus::GetImageEncodersSize(&count, &size) != Gdiplus::Ok || size == 0)
    {
        error = "GDI+ lists no image encoders";
        return false;
    }
    std::vector<BYTE> buffer(size);
    Gdiplus::ImageCodecInfo* codecs = reinterpret_cast<Gdiplus::ImageCodecInfo*>(buffer.data());
    if (Gdiplus::GetImageEncoders(count, size, codecs) != Gdiplus::Ok)
    {
        error = "GDI+ cannot list its image encoders";
        return false;
    }
    for (UINT i = 0; i < count; ++i)
    {
        if (codecs[i].MimeType != nullptr && lstrcmpW(codecs[i].MimeType, L"image/png") == 0)
        {
            clsid = codecs[i].Clsid;
            return true;
        }
    }
    error = "GDI+ has no PNG encoder";
    return false;
}

// A 24-bit top-down DIB section and the memory context it is selected into.
class CCaptureSurface
{
public:
    CCaptureSurface(HDC hReferenceDC, int cx, int cy) : m_cx(cx), m_cy(cy)
    {
        BITMAPINFO bmi = {};
        bmi.bmiHeader.biSize = sizeof(bmi.bmiHeader);
        bmi.bmiHeader.biWidth = cx;
        bmi.bmiHeader.biHeight = -cy;   // top-down: row 0 is the top of the window
        bmi.bmiHeader.biPlanes = 1;
        bmi.bmiHeader.biBitCount = 24;
        bmi.bmiHeader.biCompression = BI_RGB;
        void* pBits = nullptr;
        HBITMAP hBitmap = CreateDIBSection(hReferenceDC, &bmi, DIB_RGB_COLORS, &pBits, nullptr, 0);
        if (hBitmap == nullptr)
            return;
        m_bitmap.Attach(hBitmap);
        m_pBits = static_cast<const BYTE*>(pBits);
        m_dc.CreateCompatibleDC(CDC::FromHandle(hReferenceDC));
    }
    CCaptureSurface(const CCaptureSurface&) = delete;   // owns its bitmap and context
    CCaptureSurface& operator=(const CCaptureSurface&) = delete;

    bool IsValid() const { return m_pBits != nullptr && m_dc.GetSafeHdc() != nullptr; }
    CDC& GetDC() { return m_dc; }
    CBitmap& GetBitmap() { return m_bitmap; }

    // True when at least two pixels differ.
    bool HasContent() const
    {
        GdiFlush();
        size_t stride = (static_cast<size_t>(m_cx) * 3 + 3) & ~static_cast<size_t>(3);
        const BYTE* first = m_pBits;
        for (int y = 0; y < m_cy; ++y)
        {
            const BYTE* row = m_pBits + stride * static_cast<size_t>(y);
            for (int x = 0; x < m_cx; ++x)
            {
                const BYTE* px = row + 3 * x;
                if (px[0] != first[0] || px[1] != first[1] || px[2] != first[2])
                    return true;
            }
        }
        return false;
    }

private:
    int m_cx;
    int m_cy;
    CBitmap m_bitmap;
    CDC m_dc;
    const BYTE* m_pBits = nullptr;
};
}

void SettleWindow(HWND hWnd, DWORD nMilliseconds)
{
    DWORD start = GetTickCount();
    bool bRedrawn = false;
    for (;;)
    {
        MSG msg;
        while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        {
            if (msg.message == WM_QUIT)
            {
                // Leave the quit for the caller's own loop.
                PostQuitMessage(static_cast<int>(msg.wParam));
                return;
            }
            if (!AfxPreTranslateMessage(&msg))
            {
                TranslateMessage(&msg);
                DispatchMessageA(&msg);
            }
        }
        DWORD elapsed = GetTickCount() - start;
        if (!bRedrawn && elapsed >= nMilliseconds / 2)
        {
            // Half way, once the window has settled its layout: paint everything, frame
            // and children included, right now.
            RedrawWindow(hWnd, nullptr, nullptr,
                         RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
            bRedrawn = true;
        }
        if (elapsed >= nMilliseconds)
            break;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, nMilliseconds - elapsed, QS_ALLINPUT);
    }
    UpdateWindow(hWnd);
    AfxDeleteTempMaps();
    GdiFlush();
}

CShotWriter::~CShotWriter()
{
    if (m_gdiplusToken != 0)
        Gdiplus::GdiplusShutdown(m_gdiplusToken);
}

bool CShotWriter::Open(const std::wstring& folder, std::string& error)
{
    if (m_gdiplusToken == 0)
    {
        Gdiplus::GdiplusStartupInput input;
        if (Gdiplus::GdiplusStartup(&m_gdiplusToken, &input, nullptr) != Gdiplus::Ok)
        {
            m_gdiplusToken = 0;
            error = "GDI+ does not start";
            return false;
        }
        if (!FindPngEncoder(m_pngEncoder, error))
            return false;
    }
    return CreateFolderPath(folder, m_folder, error);
}

bool CShotWriter::WriteWindow(HWND hWnd, const std::string& fileName, std::wstring& path, std::string& error)
{
    if (m_folder.empty())
    {
        error = "no shot folder is open";
        return false;
    }
    if (!IsWindow(hWnd) || !IsWindowVisible(hWnd))
    {
        error = "the window to capture is not on the screen";
        return false;
    }
    CRect rcWindow;
    GetWindowRect(hWnd, &rcWindow);
    if (rcWindow.Width() <= 0 || rcWindow.Height() <= 0)
    {
        error = "the window to capture has no size";
        return false;
    }

    {
        // Copy what the window shows, frame included, from its window device context.
        // PrintWindow would spare the screen, but Wine answers it with the background alone,
        // without the children or the frame.
        CWindowDC windowDC(CWnd::FromHandle(hWnd));
        CCaptureSurface surface(windowDC.GetSafeHdc(), rcWindow.Width(), rcWindow.Height());
        if (!surface.IsValid())
        {
            error = LastErrorText("cannot create the capture bitmap");
            return false;
        }
        {
            CSelectObjectScope keepBitmap(surface.GetDC(), surface.GetBitmap());
            if (!surface.GetDC().BitBlt(0, 0, rcWindow.Width(), rcWindow.Height(), &windowDC, 0, 0, SRCCOPY))
            {
                error = LastErrorText("cannot copy the window");
                return false;
            }
        }
        if (!surface.HasContent())
        {
            error = "the captured window is blank";
            return false;
        }

        std::wstring wideName(fileName.begin(), fileName.end());
        path = m_folder + L"\\" + wideName;
        // GDI+ copies the pixels; the bitmap is no longer selected anywhere.
        std::unique_ptr<Gdiplus::Bitmap> image(
            Gdiplus::Bitmap::FromHBITMAP(static_cast<HBITMAP>(surface.GetBitmap().GetSafeHandle()), nullptr));
        if (image == nullptr || image->GetLastStatus() != Gdiplus::Ok)
        {
            error = "GDI+ cannot take the captured bitmap";
            return false;
        }
        Gdiplus::Status status = image->Save(path.c_str(), &m_pngEncoder, nullptr);
        if (status != Gdiplus::Ok)
        {
            char text[64];
            wsprintfA(text, " (GDI+ status %d)", static_cast<int>(status));
            error = "cannot write " + std::string(fileName) + text;
            return false;
        }
    }
    AfxDeleteTempMaps();
    return true;
}
