// Helpers of the value field tests: a recording top-level frame, keys, clipboard and pixels.
#pragma once
#include <afxwin.h>
#include <gtest/gtest.h>
#include <valueedit.h>

#include "testsupport.h"

#include <memory>
#include <string>
#include <vector>

namespace kel_ve_test
{
// One WM_NOTIFY as the frame received it, copied while the sender's data was alive.
struct NotifySeen
{
    WPARAM wParam = 0;
    HWND hwndFrom = nullptr;
    UINT_PTR idFrom = 0;
    UINT code = 0;
    // Filled for LVN_ENDLABELEDITA only.
    UINT mask = 0xFFFFFFFF;
    int iItem = -1;
    int iSubItem = -1;
    bool textIsNull = false;
    std::string text;
    int cchTextMax = -1;
    LPARAM lParam = -1;
};

// A visible top-level window that logs the notifications it receives, in order.
class CRecordingFrame : public CWnd
{
public:
    CRecordingFrame() = default;
    ~CRecordingFrame() override;
    bool CreateFrame(const char* title = "value field test");
    std::vector<NotifySeen> notifies;
    // Notification codes of the WM_COMMAND messages it received, in order.
    std::vector<UINT> commandCodes;
    // The LVN_ENDLABELEDITA notifications among them.
    std::vector<NotifySeen> EndLabelEdits() const;
    // When set, called for each LVN_ENDLABELEDITA after it was recorded.
    void (*onEndLabelEdit)(CRecordingFrame* frame, const NotifySeen& seen) = nullptr;
    void* context = nullptr;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

using kel_test::PostKeyDown;
// Puts text on the clipboard; reads it back ("" when there is none).
bool SetClipboardText(HWND owner, const char* text);
std::string GetClipboardText(HWND owner);

// Selection of an edit as a pair.
std::pair<int, int> Selection(const CEdit& edit);

// Renders a window's client area with WM_PRINTCLIENT into a memory bitmap and reads pixels.
class ClientRender
{
public:
    explicit ClientRender(HWND hWnd);
    ~ClientRender();
    ClientRender(const ClientRender&) = delete;
    ClientRender& operator=(const ClientRender&) = delete;
    COLORREF Pixel(int x, int y) const { return ::GetPixel(m_hdc, x, y); }
    int Width() const { return m_cx; }
    int Height() const { return m_cy; }
    // How many pixels of the given colour the rendering holds.
    int Count(COLORREF color) const;

private:
    HDC m_hdc = nullptr;
    HBITMAP m_hbm = nullptr;
    HGDIOBJ m_old = nullptr;
    int m_cx = 0, m_cy = 0;
};
}
