// CWnd core: the handle maps, the creation hook, subclassing and message dispatch.
#include "kelfw/fwwnd.h"

#include "kelfw/fwdc.h"
#include "kelfw/fwlivecount.h"
#include "kelfw/fwmodule.h"
#include "threadslot.h"

#include <unordered_map>

namespace
{
// The permanent map is one per process: a window may be reached from any thread.
struct PermanentMap
{
    SRWLOCK lock = SRWLOCK_INIT;
    std::unordered_map<HWND, CWnd*> map;
};

PermanentMap& Permanent()
{
    static PermanentMap* s_map = new PermanentMap;   // lives as long as the process
    return *s_map;
}

// Temporary wrappers belong to the thread that asked for them, and go when it ends.
struct TempMap
{
    std::unordered_map<HWND, CWnd*> map;
    TempMap() = default;
    TempMap(const TempMap&) = delete;   // owns its wrappers
    TempMap& operator=(const TempMap&) = delete;
    ~TempMap()
    {
        for (auto& entry : map)
        {
            entry.second->m_hWnd = nullptr;
            delete entry.second;
        }
    }
};
CThreadLocalPtr<TempMap> s_tempWnds;

// The message being handled, for Default() and reflection.
thread_local MSG t_lastSentMsg = {};
// How many window procedures of ours are running on this thread; temporary wrappers are
// deleted only outside all of them, so that no handler's pointer goes stale.
thread_local int t_nCallDepth = 0;

// Creation hook state.
thread_local CWnd* t_pWndInit = nullptr;
thread_local HHOOK t_hHookOldCbtFilter = nullptr;

LRESULT CALLBACK CbtFilterHook(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HCBT_CREATEWND && t_pWndInit != nullptr)
    {
        CWnd* pWndInit = t_pWndInit;
        t_pWndInit = nullptr;
        HWND hWnd = reinterpret_cast<HWND>(wParam);
        pWndInit->Attach(hWnd);
        pWndInit->PreSubclassWindow();
        WNDPROC oldProc = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CWnd::AfxWndProc)));
        if (oldProc != &CWnd::AfxWndProc)
            pWndInit->m_pfnSuper = oldProc;
    }
    return CallNextHookEx(t_hHookOldCbtFilter, code, wParam, lParam);
}
}

// ---------------------------------------------------------------- CCmdTarget

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr}};
    static const AFX_MSGMAP messageMap = {nullptr, &entries[0]};
    return &messageMap;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

const AFX_MSGMAP_ENTRY* CCmdTarget::FindMessageEntry(const AFX_MSGMAP* pMap, UINT nMessage, UINT nCode, UINT nID,
                                                     bool bMatchId)
{
    for (; pMap != nullptr; pMap = pMap->pfnGetBaseMap ? pMap->pfnGetBaseMap() : nullptr)
    {
        for (const AFX_MSGMAP_ENTRY* pEntry = pMap->lpEntries; pEntry->pfn != nullptr; ++pEntry)
        {
            if (pEntry->nMessage != nMessage || pEntry->nCode != nCode)
                continue;
            if (bMatchId && (nID < pEntry->nID || nID > pEntry->nLastID))
                continue;
            return pEntry;
        }
    }
    return nullptr;
}

// ---------------------------------------------------------------- CWnd: maps

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_NCDESTROY()
    ON_WM_DRAWITEM()
    ON_WM_MEASUREITEM()
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

CWnd::CWnd() : m_hWnd(nullptr), m_pfnSuper(nullptr), m_bTemporary(false)
{
}

CWnd::CWnd(HWND hWnd) : m_hWnd(hWnd), m_pfnSuper(nullptr), m_bTemporary(true)
{
}

CWnd::~CWnd()
{
    if (m_hWnd != nullptr && !m_bTemporary && FromHandlePermanent(m_hWnd) == this)
        DestroyWindow();
}

HWND CWnd::GetSafeHwnd() const
{
    return reinterpret_cast<uintptr_t>(this) == 0 ? nullptr : m_hWnd;
}

CWnd* PASCAL CWnd::FromHandlePermanent(HWND hWnd)
{
    if (hWnd == nullptr)
        return nullptr;
    PermanentMap& pm = Permanent();
    AcquireSRWLockShared(&pm.lock);
    auto it = pm.map.find(hWnd);
    CWnd* pWnd = it == pm.map.end() ? nullptr : it->second;
    ReleaseSRWLockShared(&pm.lock);
    return pWnd;
}

CWnd* PASCAL CWnd::FromHandle(HWND hWnd)
{
    if (hWnd == nullptr)
        return nullptr;
    if (CWnd* pWnd = FromHandlePermanent(hWnd))
        return pWnd;
    CWnd*& slot = s_tempWnds.GetOrCreate().map[hWnd];
    if (slot == nullptr)
        slot = new CWnd(hWnd);
    return slot;
}

void PASCAL CWnd::DeleteTempMap()
{
    s_tempWnds.Reset();
}

BOOL CWnd::Attach(HWND hWndNew)
{
    if (hWndNew == nullptr || m_hWnd != nullptr)
        return FALSE;
    PermanentMap& pm = Permanent();
    AcquireSRWLockExclusive(&pm.lock);
    bool inserted = pm.map.emplace(hWndNew, this).second;
    ReleaseSRWLockExclusive(&pm.lock);
    if (!inserted)
        return FALSE;
    // A temporary wrapper of the same handle would now be stale.
    if (TempMap* pTemp = s_tempWnds.Get())
    {
        auto it = pTemp->map.find(hWndNew);
        if (it != pTemp->map.end())
        {
            it->second->m_hWnd = nullptr;
            delete it->second;
            pTemp->map.erase(it);
        }
    }
    m_hWnd = hWndNew;
    m_bTemporary = false;
    AfxAdjustLiveCount(afxLiveWindows, +1);
    return TRUE;
}

HWND CWnd::Detach()
{
    HWND hWnd = m_hWnd;
    if (hWnd != nullptr && !m_bTemporary)
    {
        PermanentMap& pm = Permanent();
        AcquireSRWLockExclusive(&pm.lock);
        auto it = pm.map.find(hWnd);
        bool mine = it != pm.map.end() && it->second == this;
        if (mine)
            pm.map.erase(it);
        ReleaseSRWLockExclusive(&pm.lock);
        if (mine)
            AfxAdjustLiveCount(afxLiveWindows, -1);
    }
    m_hWnd = nullptr;
    return hWnd;
}

// ---------------------------------------------------------------- creation

void AfxHookWindowCreate(CWnd* pWnd)
{
    if (t_hHookOldCbtFilter == nullptr)
        t_hHookOldCbtFilter = SetWindowsHookExA(WH_CBT, CbtFilterHook, nullptr, GetCurrentThreadId());
    t_pWndInit = pWnd;
}

BOOL AfxUnhookWindowCreate()
{
    if (t_hHookOldCbtFilter != nullptr)
    {
        UnhookWindowsHookEx(t_hHookOldCbtFilter);
        t_hHookOldCbtFilter = nullptr;
    }
    if (t_pWndInit != nullptr)
    {
        t_pWndInit = nullptr;
        return FALSE;
    }
    return TRUE;
}

LPCTSTR AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor, HBRUSH hbrBackground, HICON hIcon)
{
    // One class per combination, named after it, registered for the current module, which
    // is the instance CreateEx passes.
    static thread_local char s_name[96];
    wsprintfA(s_name, "KelFw:%x:%p:%p:%p", nClassStyle, static_cast<void*>(hCursor),
              static_cast<void*>(hbrBackground), static_cast<void*>(hIcon));
    HINSTANCE hInst = AfxGetInstanceHandle();
    WNDCLASSA wc = {};
    if (!GetClassInfoA(hInst, s_name, &wc))
    {
        wc.style = nClassStyle;
        wc.lpfnWndProc = DefWindowProcA;
        wc.hInstance = hInst;
        wc.hCursor = hCursor;
        wc.hbrBackground = hbrBackground;
        wc.hIcon = hIcon;
        wc.lpszClassName = s_name;
        RegisterClassA(&wc);
    }
    return s_name;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (cs.lpszClass == nullptr)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, LoadCursor(nullptr, IDC_ARROW),
                                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
    return TRUE;
}

BOOL CWnd::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                  CWnd* pParentWnd, UINT nID, LPVOID lpParam)
{
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect, pParentWnd, nID, lpParam);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle,
                    const RECT& rect, CWnd* pParentWnd, UINT nID, LPVOID lpParam)
{
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, pParentWnd->GetSafeHwnd(),
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), lpParam);
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, int x, int y,
                    int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam)
{
    if (m_hWnd != nullptr)
        return FALSE;
    CREATESTRUCT cs = {};
    cs.dwExStyle = dwExStyle;
    cs.lpszClass = lpszClassName;
    cs.lpszName = lpszWindowName;
    cs.style = static_cast<LONG>(dwStyle);
    cs.x = x;
    cs.y = y;
    cs.cx = nWidth;
    cs.cy = nHeight;
    cs.hwndParent = hWndParent;
    cs.hMenu = nIDorHMenu;
    cs.hInstance = AfxGetInstanceHandle();
    cs.lpCreateParams = lpParam;
    if (!PreCreateWindow(cs))
    {
        PostNcDestroy();
        return FALSE;
    }
    AfxHookWindowCreate(this);
    HWND hWnd = CreateWindowExA(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), cs.x, cs.y,
                                cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();   // the window was never made: clean up as if destroyed
    return hWnd != nullptr;
}

BOOL CWnd::DestroyWindow()
{
    if (m_hWnd == nullptr)
        return FALSE;
    return ::DestroyWindow(m_hWnd);
}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (!::IsWindow(hWnd) || !Attach(hWnd))
        return FALSE;
    PreSubclassWindow();
    WNDPROC oldProc =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    if (oldProc != &AfxWndProc)
        m_pfnSuper = oldProc;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent)
{
    HWND hWndControl = ::GetDlgItem(pParent->GetSafeHwnd(), static_cast<int>(nID));
    return hWndControl != nullptr && SubclassWindow(hWndControl);
}

HWND CWnd::UnsubclassWindow()
{
    if (m_hWnd == nullptr)
        return nullptr;
    if (m_pfnSuper != nullptr)
        SetWindowLongPtrA(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    m_pfnSuper = nullptr;
    return Detach();
}

void CWnd::PreSubclassWindow()
{
}

void CWnd::PostNcDestroy()
{
}

void CWnd::OnNcDestroy()
{
    // Let the previous procedure clean up, put it back, forget the handle, then tell the object.
    WNDPROC pfnWndProc = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(m_hWnd, GWLP_WNDPROC));
    Default();
    if (reinterpret_cast<WNDPROC>(GetWindowLongPtrA(m_hWnd, GWLP_WNDPROC)) == pfnWndProc && m_pfnSuper != nullptr)
        SetWindowLongPtrA(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    m_pfnSuper = nullptr;
    Detach();
    PostNcDestroy();
}

// ---------------------------------------------------------------- dispatch

const MSG* PASCAL CWnd::GetCurrentMessage()
{
    return &t_lastSentMsg;
}

LRESULT CALLBACK CWnd::AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    CWnd* pWnd = FromHandlePermanent(hWnd);
    if (pWnd == nullptr)
        return ::DefWindowProcA(hWnd, nMsg, wParam, lParam);
    return AfxCallWndProc(pWnd, hWnd, nMsg, wParam, lParam);
}

LRESULT AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    MSG oldState = t_lastSentMsg;
    t_lastSentMsg.hwnd = hWnd;
    t_lastSentMsg.message = nMsg;
    t_lastSentMsg.wParam = wParam;
    t_lastSentMsg.lParam = lParam;
    LRESULT lResult = 0;
    ++t_nCallDepth;
    try
    {
        lResult = pWnd->WindowProc(nMsg, wParam, lParam);
    }
    catch (...)
    {
        // Nothing crosses a window procedure; the message counts as answered with 0.
        lResult = 0;
    }
    --t_nCallDepth;
    t_lastSentMsg = oldState;
    return lResult;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT lResult = 0;
    if (!OnWndMsg(message, wParam, lParam, &lResult))
        lResult = DefWindowProc(message, wParam, lParam);
    return lResult;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_pfnSuper != nullptr)
        return ::CallWindowProcA(m_pfnSuper, m_hWnd, message, wParam, lParam);
    return ::DefWindowProcA(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default()
{
    const MSG& msg = t_lastSentMsg;
    return DefWindowProc(msg.message, msg.wParam, msg.lParam);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    LRESULT lResult = 0;
    if (message == WM_COMMAND)
    {
        if (!OnCommand(wParam, lParam))
            return FALSE;
        lResult = 1;
    }
    else if (message == WM_NOTIFY)
    {
        const NMHDR* pNMHDR = reinterpret_cast<const NMHDR*>(lParam);
        if (pNMHDR == nullptr || !OnNotify(wParam, lParam, &lResult))
            return FALSE;
    }
    else
    {
        // Every colour request shares one entry; reflected commands and notifications match
        // on their code.
        UINT lookup = message;
        UINT code = 0;
        if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC)
            lookup = WM_CTLCOLOR;
        else if (message == WM_REFLECT_BASE + WM_COMMAND)
            code = HIWORD(wParam);
        else if (message == WM_REFLECT_BASE + WM_NOTIFY)
            code = reinterpret_cast<const NMHDR*>(lParam)->code;
        const AFX_MSGMAP_ENTRY* pEntry = FindMessageEntry(GetMessageMap(), lookup, code, 0, false);
        if (pEntry == nullptr || !pEntry->pfn(this, message, wParam, lParam, &lResult))
            return FALSE;
    }
    if (pResult != nullptr)
        *pResult = lResult;
    return TRUE;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    UINT nID = LOWORD(wParam);
    HWND hWndCtrl = reinterpret_cast<HWND>(lParam);
    UINT nCode = HIWORD(wParam);
    if (hWndCtrl == nullptr)
        nCode = CN_COMMAND;   // menu (0) and accelerator (1) commands are one kind
    else if (ReflectLastMsg(hWndCtrl))
        return TRUE;          // the control handled its own notification
    const AFX_MSGMAP_ENTRY* pEntry = FindMessageEntry(GetMessageMap(), WM_COMMAND, nCode, nID, true);
    LRESULT lResult = 0;
    return pEntry != nullptr && pEntry->pfn(this, WM_COMMAND, wParam, lParam, &lResult);
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    NMHDR* pNMHDR = reinterpret_cast<NMHDR*>(lParam);
    if (ReflectLastMsg(pNMHDR->hwndFrom, pResult))
        return TRUE;
    const AFX_MSGMAP_ENTRY* pEntry =
        FindMessageEntry(GetMessageMap(), WM_NOTIFY, pNMHDR->code, static_cast<UINT>(pNMHDR->idFrom), true);
    return pEntry != nullptr && pEntry->pfn(this, WM_NOTIFY, wParam, lParam, pResult);
}

BOOL PASCAL CWnd::ReflectLastMsg(HWND hWndChild, LRESULT* pResult)
{
    CWnd* pWnd = FromHandlePermanent(hWndChild);
    if (pWnd == nullptr)
        return FALSE;
    return pWnd->SendChildNotifyLastMsg(pResult);
}

BOOL CWnd::SendChildNotifyLastMsg(LRESULT* pResult)
{
    const MSG& msg = t_lastSentMsg;
    return OnChildNotify(msg.message, msg.wParam, msg.lParam, pResult);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return ReflectChildNotify(message, wParam, lParam, pResult);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    switch (message)
    {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_DRAWITEM:
    case WM_MEASUREITEM:
    case WM_COMPAREITEM:
    case WM_DELETEITEM:
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_PARENTNOTIFY:
        return OnWndMsg(WM_REFLECT_BASE + message, wParam, lParam, pResult);
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        // The reflected form carries the DC and the kind of control.
        return OnWndMsg(WM_REFLECT_BASE + WM_CTLCOLOR, wParam, static_cast<LPARAM>(message - WM_CTLCOLORMSGBOX),
                        pResult);
    default:
        return FALSE;
    }
}

void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    if (lpDrawItemStruct->CtlType != ODT_MENU && ReflectLastMsg(lpDrawItemStruct->hwndItem))
        return;
    Default();
}

void CWnd::OnMeasureItem(int nIDCtl, LPMEASUREITEMSTRUCT lpMeasureItemStruct)
{
    if (lpMeasureItemStruct->CtlType != ODT_MENU && ReflectLastMsg(::GetDlgItem(m_hWnd, nIDCtl)))
        return;
    Default();
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd* pWnd, UINT)
{
    LRESULT lResult = 0;
    if (pWnd != nullptr && ReflectLastMsg(pWnd->m_hWnd, &lResult))
        return reinterpret_cast<HBRUSH>(lResult);
    return reinterpret_cast<HBRUSH>(Default());
}

// ---------------------------------------------------------------- pre-translation

BOOL CWnd::PreTranslateMessage(MSG*)
{
    return FALSE;
}

BOOL PASCAL CWnd::WalkPreTranslateTree(HWND hWndStop, MSG* pMsg)
{
    for (HWND hWnd = pMsg->hwnd; hWnd != nullptr; hWnd = ::GetParent(hWnd))
    {
        CWnd* pWnd = FromHandlePermanent(hWnd);
        if (pWnd != nullptr && pWnd->PreTranslateMessage(pMsg))
            return TRUE;
        if (hWnd == hWndStop)
            break;
    }
    return FALSE;
}

BOOL AfxPreTranslateMessage(MSG* pMsg)
{
    if (pMsg->hwnd == nullptr)
        return FALSE;
    return CWnd::WalkPreTranslateTree(::GetAncestor(pMsg->hwnd, GA_ROOT), pMsg);
}

BOOL AfxPumpMessage()
{
    MSG msg;
    if (!::GetMessageA(&msg, nullptr, 0, 0))
    {
        ::PostQuitMessage(static_cast<int>(msg.wParam));   // leave WM_QUIT for the outer loop
        return FALSE;
    }
    if (!AfxPreTranslateMessage(&msg))
    {
        ::TranslateMessage(&msg);
        ::DispatchMessageA(&msg);
    }
    return TRUE;
}

void AfxDeleteTempMaps()
{
    if (t_nCallDepth > 0)
        return;
    CWnd::DeleteTempMap();
    CDC::DeleteTempMap();
    CGdiObject::DeleteTempMap();
}
