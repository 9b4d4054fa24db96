// Helpers shared by the tests: pumping messages and answering modal boxes.
#include "testsupport.h"

#include "kelfw/fwwnd.h"

namespace kel_test
{
void PostKeyDown(HWND hWnd, UINT vk)
{
    UINT scan = ::MapVirtualKeyA(vk, MAPVK_VK_TO_VSC);
    ::PostMessageA(hWnd, WM_KEYDOWN, vk, MAKELPARAM(1, scan));
}

void PostChars(HWND hWnd, const char* text)
{
    for (const char* c = text; *c; ++c)
        ::PostMessageA(hWnd, WM_CHAR, static_cast<unsigned char>(*c), 1);
}

void PumpPending()
{
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        if (msg.message == WM_QUIT)
        {
            PostQuitMessage(static_cast<int>(msg.wParam));
            return;
        }
        if (!AfxPreTranslateMessage(&msg))
        {
            TranslateMessage(&msg);
            DispatchMessageA(&msg);
        }
    }
}

void PumpFor(DWORD milliseconds)
{
    DWORD start = GetTickCount();
    do
    {
        PumpPending();
        Sleep(5);
    } while (GetTickCount() - start < milliseconds);
    PumpPending();
}

bool TakeForeground(HWND hWnd)
{
    DWORD start = GetTickCount();
    do
    {
        SetForegroundWindow(hWnd);
        SetActiveWindow(hWnd);
        PumpPending();
        if (GetForegroundWindow() == hWnd && GetActiveWindow() == hWnd)
            return true;
        Sleep(10);
    } while (GetTickCount() - start < 2000);
    return false;
}

bool RunHoldingForeground(HWND hWnd, const std::function<void()>& step)
{
    if (!TakeForeground(hWnd))
        return false;
    step();
    DWORD pid = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &pid);
    return pid == GetCurrentProcessId();
}

namespace
{
struct FindCtx
{
    const std::string* caption;
    HWND found;
};

BOOL CALLBACK FindBox(HWND hWnd, LPARAM lParam)
{
    FindCtx* ctx = reinterpret_cast<FindCtx*>(lParam);
    DWORD pid = 0;
    GetWindowThreadProcessId(hWnd, &pid);
    if (pid != GetCurrentProcessId())
        return TRUE;
    char cls[64] = {}, text[256] = {};
    GetClassNameA(hWnd, cls, sizeof(cls));
    GetWindowTextA(hWnd, text, sizeof(text));
    if (std::string(cls) == "#32770" && *ctx->caption == text)
    {
        ctx->found = hWnd;
        return FALSE;
    }
    return TRUE;
}

HWND FindBoxWindow(const std::string& caption)
{
    FindCtx ctx = {&caption, nullptr};
    EnumWindows(&FindBox, reinterpret_cast<LPARAM>(&ctx));
    return ctx.found;
}
}

bool BoxIsOpen(const char* caption)
{
    return FindBoxWindow(caption) != nullptr;
}

BoxAnswerer::BoxAnswerer(const char* caption, int buttonToPress, DWORD timeoutMs)
    : m_thread(&BoxAnswerer::Run, this, std::string(caption), buttonToPress, timeoutMs)
{
}

BoxAnswerer::~BoxAnswerer()
{
    if (m_thread.joinable())
        m_thread.join();
}

const BoxSeen& BoxAnswerer::Wait()
{
    if (m_thread.joinable())
        m_thread.join();
    return m_seen;
}

void BoxAnswerer::Run(std::string caption, int button, DWORD timeoutMs)
{
    DWORD start = GetTickCount();
    HWND hBox = nullptr;
    while (hBox == nullptr && GetTickCount() - start < timeoutMs)
    {
        hBox = FindBoxWindow(caption);
        if (hBox == nullptr)
            Sleep(20);
    }
    if (hBox == nullptr)
        return;
    // The box is found by its caption as soon as it is created; read it only once it has
    // finished its initialisation (text, buttons, default button). It is shown after that,
    // and its thread answers a sent message only from the box's own message loop. The last
    // pause covers a busy machine running several test programs at once.
    while (!IsWindowVisible(hBox) && IsWindow(hBox) && GetTickCount() - start < timeoutMs)
        Sleep(10);
    DWORD_PTR answer = 0;
    SendMessageTimeoutA(hBox, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &answer);
    Sleep(100);
    m_seen.found = true;
    m_seen.caption = caption;
    m_seen.owner = GetWindow(hBox, GW_OWNER);
    char text[1024] = {};
    GetDlgItemTextA(hBox, 0xFFFF, text, sizeof(text));
    m_seen.text = text;
    // The default button is the push button drawn as the default one. DM_GETDEFID is not
    // asked first: Wine's message box answers IDOK there even when No is the default.
    for (HWND hChild = GetWindow(hBox, GW_CHILD); hChild != nullptr; hChild = GetWindow(hChild, GW_HWNDNEXT))
    {
        char cls[32] = {};
        GetClassNameA(hChild, cls, sizeof(cls));
        if (lstrcmpiA(cls, "Button") == 0 && (GetWindowLongA(hChild, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON)
            m_seen.defaultButton = GetDlgCtrlID(hChild);
    }
    if (m_seen.defaultButton == 0)
    {
        DWORD defId = static_cast<DWORD>(SendMessageA(hBox, DM_GETDEFID, 0, 0));
        if (HIWORD(defId) == DC_HASDEFID)
            m_seen.defaultButton = LOWORD(defId);
    }
    m_seen.hasYes = GetDlgItem(hBox, IDYES) != nullptr;
    m_seen.hasNo = GetDlgItem(hBox, IDNO) != nullptr;
    m_seen.hasOk = GetDlgItem(hBox, IDOK) != nullptr;
    m_seen.hasCancel = GetDlgItem(hBox, IDCANCEL) != nullptr;
    // The icon of a message box is a static control showing an icon.
    for (HWND hChild = GetWindow(hBox, GW_CHILD); hChild != nullptr; hChild = GetWindow(hChild, GW_HWNDNEXT))
    {
        char cls[32] = {};
        GetClassNameA(hChild, cls, sizeof(cls));
        if (lstrcmpiA(cls, "Static") == 0 && (GetWindowLongA(hChild, GWL_STYLE) & SS_TYPEMASK) == SS_ICON)
            m_seen.icon = reinterpret_cast<HICON>(SendMessageA(hChild, STM_GETICON, 0, 0));
    }
    HWND hButton = GetDlgItem(hBox, button);
    PostMessageA(hBox, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(hButton));
}
}
