// Message maps: tables that route window messages to typed member handlers.
//
// A class declares DECLARE_MESSAGE_MAP() and defines its table in its source:
//
//     BEGIN_MESSAGE_MAP(CMyEdit, CEdit)
//         ON_WM_CHAR()
//         ON_CONTROL_REFLECT(EN_SETFOCUS, &CMyEdit::OnSetFocusReflect)
//     END_MESSAGE_MAP()
//
// Each entry carries a small thunk that cracks WPARAM/LPARAM into the handler's typed
// arguments, so handlers never decode the message themselves. A lookup walks the class's
// table first and then the tables of its bases.
#pragma once
#include "fwdefs.h"

class CCmdTarget;

// Reflected messages are sent back to the child control that caused them, with this offset.
#define WM_REFLECT_BASE 0xBC00
#ifndef WM_CTLCOLOR
#define WM_CTLCOLOR 0x0019
#endif
#define CN_COMMAND 0

// A thunk returns true when the handler took the message; *pResult is the window's answer.
typedef bool (*AFX_PMSGTHUNK)(CCmdTarget* pTarget, UINT nMsg, WPARAM wParam, LPARAM lParam, LRESULT* pResult);

struct AFX_MSGMAP_ENTRY
{
    UINT nMessage;   // window message (WM_COMMAND, WM_NOTIFY, a reflected message, ...)
    UINT nCode;      // notification code for commands and notifications, else 0
    UINT nID;        // first control id for commands and notifications, else 0
    UINT nLastID;    // last control id of a range
    AFX_PMSGTHUNK pfn;
};

struct AFX_MSGMAP
{
    const AFX_MSGMAP* (*pfnGetBaseMap)();
    const AFX_MSGMAP_ENTRY* lpEntries;
};

#define DECLARE_MESSAGE_MAP()                          \
protected:                                             \
    static const AFX_MSGMAP* GetThisMessageMap();      \
    const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                          \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); } \
    const AFX_MSGMAP* theClass::GetThisMessageMap()                                   \
    {                                                                                 \
        typedef theClass ThisClass [[maybe_unused]];                                  \
        typedef baseClass TheBaseClass;                                               \
        static const AFX_MSGMAP_ENTRY _messageEntries[] = {

#define END_MESSAGE_MAP()                                                               \
        {0, 0, 0, 0, nullptr}};                                                       \
        static const AFX_MSGMAP messageMap = {&TheBaseClass::GetThisMessageMap, &_messageEntries[0]}; \
        return &messageMap;                                                           \
    }

// The body of a thunk: pThis is the object, wParam_/lParam_ the message, pResult_ the answer.
#define AFX_THUNK(...)                                                                         \
    [](CCmdTarget* pTarget_, UINT nMsg_, WPARAM wParam_, LPARAM lParam_, LRESULT* pResult_) -> bool { \
        ThisClass* pThis = static_cast<ThisClass*>(pTarget_);                                 \
        (void)pThis; (void)nMsg_; (void)wParam_; (void)lParam_; (void)pResult_;                \
        __VA_ARGS__                                                                            \
    }

#define AFX_MSG_ENTRY(msg, ...) {msg, 0, 0, 0, AFX_THUNK(__VA_ARGS__)},
#define AFX_PT_ (CPoint(static_cast<short>(LOWORD(lParam_)), static_cast<short>(HIWORD(lParam_))))

// ---- generic entries ----
#define ON_MESSAGE(message, memberFxn) \
    AFX_MSG_ENTRY(message, *pResult_ = (pThis->*(memberFxn))(wParam_, lParam_); return true;)
#define ON_COMMAND(id, memberFxn) \
    {WM_COMMAND, CN_COMMAND, static_cast<UINT>(id), static_cast<UINT>(id), AFX_THUNK((pThis->*(memberFxn))(); return true;)},
#define ON_COMMAND_EX(id, memberFxn) \
    {WM_COMMAND, CN_COMMAND, static_cast<UINT>(id), static_cast<UINT>(id), AFX_THUNK(return (pThis->*(memberFxn))(static_cast<UINT>(LOWORD(wParam_))) != FALSE;)},
#define ON_COMMAND_RANGE(id, idLast, memberFxn) \
    {WM_COMMAND, CN_COMMAND, static_cast<UINT>(id), static_cast<UINT>(idLast), AFX_THUNK((pThis->*(memberFxn))(static_cast<UINT>(LOWORD(wParam_))); return true;)},
#define ON_CONTROL(wNotifyCode, id, memberFxn) \
    {WM_COMMAND, static_cast<UINT>(wNotifyCode), static_cast<UINT>(id), static_cast<UINT>(id), AFX_THUNK((pThis->*(memberFxn))(); return true;)},
#define ON_CONTROL_RANGE(wNotifyCode, id, idLast, memberFxn) \
    {WM_COMMAND, static_cast<UINT>(wNotifyCode), static_cast<UINT>(id), static_cast<UINT>(idLast), AFX_THUNK((pThis->*(memberFxn))(static_cast<UINT>(LOWORD(wParam_))); return true;)},
#define ON_NOTIFY(wNotifyCode, id, memberFxn) \
    {WM_NOTIFY, static_cast<UINT>(wNotifyCode), static_cast<UINT>(id), static_cast<UINT>(id), AFX_THUNK((pThis->*(memberFxn))(reinterpret_cast<NMHDR*>(lParam_), pResult_); return true;)},
#define ON_NOTIFY_RANGE(wNotifyCode, id, idLast, memberFxn) \
    {WM_NOTIFY, static_cast<UINT>(wNotifyCode), static_cast<UINT>(id), static_cast<UINT>(idLast), AFX_THUNK((pThis->*(memberFxn))(static_cast<UINT>(wParam_), reinterpret_cast<NMHDR*>(lParam_), pResult_); return true;)},
#define ON_NOTIFY_EX(wNotifyCode, id, memberFxn) \
    {WM_NOTIFY, static_cast<UINT>(wNotifyCode), static_cast<UINT>(id), static_cast<UINT>(id), AFX_THUNK(return (pThis->*(memberFxn))(static_cast<UINT>(wParam_), reinterpret_cast<NMHDR*>(lParam_), pResult_) != FALSE;)},

// ---- reflected to the control itself ----
#define ON_CONTROL_REFLECT(wNotifyCode, memberFxn) \
    {WM_REFLECT_BASE + WM_COMMAND, static_cast<UINT>(wNotifyCode), 0, 0, AFX_THUNK((pThis->*(memberFxn))(); return true;)},
#define ON_CONTROL_REFLECT_EX(wNotifyCode, memberFxn) \
    {WM_REFLECT_BASE + WM_COMMAND, static_cast<UINT>(wNotifyCode), 0, 0, AFX_THUNK(return (pThis->*(memberFxn))() != FALSE;)},
#define ON_NOTIFY_REFLECT(wNotifyCode, memberFxn) \
    {WM_REFLECT_BASE + WM_NOTIFY, static_cast<UINT>(wNotifyCode), 0, 0, AFX_THUNK((pThis->*(memberFxn))(reinterpret_cast<NMHDR*>(lParam_), pResult_); return true;)},
#define ON_NOTIFY_REFLECT_EX(wNotifyCode, memberFxn) \
    {WM_REFLECT_BASE + WM_NOTIFY, static_cast<UINT>(wNotifyCode), 0, 0, AFX_THUNK(return (pThis->*(memberFxn))(reinterpret_cast<NMHDR*>(lParam_), pResult_) != FALSE;)},
// Reflected colour request: wParam_ is the DC, lParam_ the CTLCOLOR_* kind.
#define ON_WM_CTLCOLOR_REFLECT() \
    AFX_MSG_ENTRY(WM_REFLECT_BASE + WM_CTLCOLOR, HBRUSH hbr_ = pThis->CtlColor(CDC::FromHandle(reinterpret_cast<HDC>(wParam_)), static_cast<UINT>(lParam_)); *pResult_ = reinterpret_cast<LRESULT>(hbr_); return hbr_ != nullptr;)
#define ON_WM_DRAWITEM_REFLECT() \
    AFX_MSG_ENTRY(WM_REFLECT_BASE + WM_DRAWITEM, pThis->DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam_)); *pResult_ = TRUE; return true;)
#define ON_WM_MEASUREITEM_REFLECT() \
    AFX_MSG_ENTRY(WM_REFLECT_BASE + WM_MEASUREITEM, pThis->MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam_)); *pResult_ = TRUE; return true;)

// ---- window messages with typed handlers ----
#define ON_WM_CREATE()      AFX_MSG_ENTRY(WM_CREATE, *pResult_ = pThis->OnCreate(reinterpret_cast<LPCREATESTRUCT>(lParam_)); return true;)
#define ON_WM_NCCREATE()    AFX_MSG_ENTRY(WM_NCCREATE, *pResult_ = pThis->OnNcCreate(reinterpret_cast<LPCREATESTRUCT>(lParam_)); return true;)
#define ON_WM_DESTROY()     AFX_MSG_ENTRY(WM_DESTROY, pThis->OnDestroy(); return true;)
#define ON_WM_NCDESTROY()   AFX_MSG_ENTRY(WM_NCDESTROY, pThis->OnNcDestroy(); return true;)
#define ON_WM_CLOSE()       AFX_MSG_ENTRY(WM_CLOSE, pThis->OnClose(); return true;)
#define ON_WM_PAINT()       AFX_MSG_ENTRY(WM_PAINT, pThis->OnPaint(); return true;)
#define ON_WM_NCPAINT()     AFX_MSG_ENTRY(WM_NCPAINT, pThis->OnNcPaint(); return true;)
#define ON_WM_ERASEBKGND()  AFX_MSG_ENTRY(WM_ERASEBKGND, *pResult_ = pThis->OnEraseBkgnd(CDC::FromHandle(reinterpret_cast<HDC>(wParam_))); return true;)
#define ON_WM_SIZE()        AFX_MSG_ENTRY(WM_SIZE, pThis->OnSize(static_cast<UINT>(wParam_), LOWORD(lParam_), HIWORD(lParam_)); return true;)
#define ON_WM_MOVE()        AFX_MSG_ENTRY(WM_MOVE, pThis->OnMove(static_cast<short>(LOWORD(lParam_)), static_cast<short>(HIWORD(lParam_))); return true;)
#define ON_WM_SIZING()      AFX_MSG_ENTRY(WM_SIZING, pThis->OnSizing(static_cast<UINT>(wParam_), reinterpret_cast<LPRECT>(lParam_)); *pResult_ = TRUE; return true;)
#define ON_WM_GETMINMAXINFO() AFX_MSG_ENTRY(WM_GETMINMAXINFO, pThis->OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(lParam_)); return true;)
#define ON_WM_WINDOWPOSCHANGED() AFX_MSG_ENTRY(WM_WINDOWPOSCHANGED, pThis->OnWindowPosChanged(reinterpret_cast<WINDOWPOS*>(lParam_)); return true;)
#define ON_WM_WINDOWPOSCHANGING() AFX_MSG_ENTRY(WM_WINDOWPOSCHANGING, pThis->OnWindowPosChanging(reinterpret_cast<WINDOWPOS*>(lParam_)); return true;)
#define ON_WM_SHOWWINDOW()  AFX_MSG_ENTRY(WM_SHOWWINDOW, pThis->OnShowWindow(static_cast<BOOL>(wParam_), static_cast<UINT>(lParam_)); return true;)
#define ON_WM_ENABLE()      AFX_MSG_ENTRY(WM_ENABLE, pThis->OnEnable(static_cast<BOOL>(wParam_)); return true;)
#define ON_WM_ACTIVATE()    AFX_MSG_ENTRY(WM_ACTIVATE, pThis->OnActivate(LOWORD(wParam_), CWnd::FromHandle(reinterpret_cast<HWND>(lParam_)), HIWORD(wParam_)); return true;)
#define ON_WM_SETFOCUS()    AFX_MSG_ENTRY(WM_SETFOCUS, pThis->OnSetFocus(CWnd::FromHandle(reinterpret_cast<HWND>(wParam_))); return true;)
#define ON_WM_KILLFOCUS()   AFX_MSG_ENTRY(WM_KILLFOCUS, pThis->OnKillFocus(CWnd::FromHandle(reinterpret_cast<HWND>(wParam_))); return true;)
#define ON_WM_CHAR()        AFX_MSG_ENTRY(WM_CHAR, pThis->OnChar(static_cast<UINT>(wParam_), LOWORD(lParam_), HIWORD(lParam_)); return true;)
#define ON_WM_SYSCHAR()     AFX_MSG_ENTRY(WM_SYSCHAR, pThis->OnSysChar(static_cast<UINT>(wParam_), LOWORD(lParam_), HIWORD(lParam_)); return true;)
#define ON_WM_KEYDOWN()     AFX_MSG_ENTRY(WM_KEYDOWN, pThis->OnKeyDown(static_cast<UINT>(wParam_), LOWORD(lParam_), HIWORD(lParam_)); return true;)
#define ON_WM_KEYUP()       AFX_MSG_ENTRY(WM_KEYUP, pThis->OnKeyUp(static_cast<UINT>(wParam_), LOWORD(lParam_), HIWORD(lParam_)); return true;)
#define ON_WM_SYSKEYDOWN()  AFX_MSG_ENTRY(WM_SYSKEYDOWN, pThis->OnSysKeyDown(static_cast<UINT>(wParam_), LOWORD(lParam_), HIWORD(lParam_)); return true;)
#define ON_WM_SYSKEYUP()    AFX_MSG_ENTRY(WM_SYSKEYUP, pThis->OnSysKeyUp(static_cast<UINT>(wParam_), LOWORD(lParam_), HIWORD(lParam_)); return true;)
#define ON_WM_GETDLGCODE()  AFX_MSG_ENTRY(WM_GETDLGCODE, *pResult_ = pThis->OnGetDlgCode(); return true;)
#define ON_WM_LBUTTONDOWN()   AFX_MSG_ENTRY(WM_LBUTTONDOWN, pThis->OnLButtonDown(static_cast<UINT>(wParam_), AFX_PT_); return true;)
#define ON_WM_LBUTTONUP()     AFX_MSG_ENTRY(WM_LBUTTONUP, pThis->OnLButtonUp(static_cast<UINT>(wParam_), AFX_PT_); return true;)
#define ON_WM_LBUTTONDBLCLK() AFX_MSG_ENTRY(WM_LBUTTONDBLCLK, pThis->OnLButtonDblClk(static_cast<UINT>(wParam_), AFX_PT_); return true;)
#define ON_WM_RBUTTONDOWN()   AFX_MSG_ENTRY(WM_RBUTTONDOWN, pThis->OnRButtonDown(static_cast<UINT>(wParam_), AFX_PT_); return true;)
#define ON_WM_RBUTTONUP()     AFX_MSG_ENTRY(WM_RBUTTONUP, pThis->OnRButtonUp(static_cast<UINT>(wParam_), AFX_PT_); return true;)
#define ON_WM_RBUTTONDBLCLK() AFX_MSG_ENTRY(WM_RBUTTONDBLCLK, pThis->OnRButtonDblClk(static_cast<UINT>(wParam_), AFX_PT_); return true;)
#define ON_WM_MBUTTONDOWN()   AFX_MSG_ENTRY(WM_MBUTTONDOWN, pThis->OnMButtonDown(static_cast<UINT>(wParam_), AFX_PT_); return true;)
#define ON_WM_MBUTTONUP()     AFX_MSG_ENTRY(WM_MBUTTONUP, pThis->OnMButtonUp(static_cast<UINT>(wParam_), AFX_PT_); return true;)
#define ON_WM_MOUSEMOVE()     AFX_MSG_ENTRY(WM_MOUSEMOVE, pThis->OnMouseMove(static_cast<UINT>(wParam_), AFX_PT_); return true;)
#define ON_WM_MOUSEWHEEL()    AFX_MSG_ENTRY(WM_MOUSEWHEEL, *pResult_ = pThis->OnMouseWheel(GET_KEYSTATE_WPARAM(wParam_), GET_WHEEL_DELTA_WPARAM(wParam_), AFX_PT_); return true;)
#define ON_WM_MOUSEACTIVATE() AFX_MSG_ENTRY(WM_MOUSEACTIVATE, *pResult_ = pThis->OnMouseActivate(CWnd::FromHandle(reinterpret_cast<HWND>(wParam_)), LOWORD(lParam_), HIWORD(lParam_)); return true;)
#define ON_WM_SETCURSOR()     AFX_MSG_ENTRY(WM_SETCURSOR, *pResult_ = pThis->OnSetCursor(CWnd::FromHandle(reinterpret_cast<HWND>(wParam_)), LOWORD(lParam_), HIWORD(lParam_)); return true;)
#define ON_WM_NCHITTEST()     AFX_MSG_ENTRY(WM_NCHITTEST, *pResult_ = pThis->OnNcHitTest(AFX_PT_); return true;)
#define ON_WM_CAPTURECHANGED() AFX_MSG_ENTRY(WM_CAPTURECHANGED, pThis->OnCaptureChanged(CWnd::FromHandle(reinterpret_cast<HWND>(lParam_))); return true;)
#define ON_WM_CANCELMODE()    AFX_MSG_ENTRY(WM_CANCELMODE, pThis->OnCancelMode(); return true;)
#define ON_WM_TIMER()         AFX_MSG_ENTRY(WM_TIMER, pThis->OnTimer(static_cast<UINT_PTR>(wParam_)); return true;)
#define ON_WM_HSCROLL()       AFX_MSG_ENTRY(WM_HSCROLL, pThis->OnHScroll(LOWORD(wParam_), HIWORD(wParam_), reinterpret_cast<CScrollBar*>(CWnd::FromHandle(reinterpret_cast<HWND>(lParam_)))); return true;)
#define ON_WM_VSCROLL()       AFX_MSG_ENTRY(WM_VSCROLL, pThis->OnVScroll(LOWORD(wParam_), HIWORD(wParam_), reinterpret_cast<CScrollBar*>(CWnd::FromHandle(reinterpret_cast<HWND>(lParam_)))); return true;)
#define ON_WM_CONTEXTMENU()   AFX_MSG_ENTRY(WM_CONTEXTMENU, pThis->OnContextMenu(CWnd::FromHandle(reinterpret_cast<HWND>(wParam_)), AFX_PT_); return true;)
#define ON_WM_SYSCOMMAND()    AFX_MSG_ENTRY(WM_SYSCOMMAND, pThis->OnSysCommand(static_cast<UINT>(wParam_), lParam_); return true;)
#define ON_WM_DRAWITEM()      AFX_MSG_ENTRY(WM_DRAWITEM, pThis->OnDrawItem(static_cast<int>(wParam_), reinterpret_cast<LPDRAWITEMSTRUCT>(lParam_)); *pResult_ = TRUE; return true;)
#define ON_WM_MEASUREITEM()   AFX_MSG_ENTRY(WM_MEASUREITEM, pThis->OnMeasureItem(static_cast<int>(wParam_), reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam_)); *pResult_ = TRUE; return true;)
// Colour requests of children: any WM_CTLCOLOR* message; nCtlColor is the CTLCOLOR_* kind.
#define ON_WM_CTLCOLOR() \
    AFX_MSG_ENTRY(WM_CTLCOLOR, *pResult_ = reinterpret_cast<LRESULT>(pThis->OnCtlColor(CDC::FromHandle(reinterpret_cast<HDC>(wParam_)), CWnd::FromHandle(reinterpret_cast<HWND>(lParam_)), nMsg_ - WM_CTLCOLORMSGBOX)); return true;)

// ---- notification shorthands ----
#define ON_BN_CLICKED(id, memberFxn)    ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_BN_DOUBLECLICKED(id, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn)     ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_UPDATE(id, memberFxn)     ON_CONTROL(EN_UPDATE, id, memberFxn)
#define ON_EN_SETFOCUS(id, memberFxn)   ON_CONTROL(EN_SETFOCUS, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn)  ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)
#define ON_CBN_SELENDOK(id, memberFxn)  ON_CONTROL(CBN_SELENDOK, id, memberFxn)
#define ON_CBN_DROPDOWN(id, memberFxn)  ON_CONTROL(CBN_DROPDOWN, id, memberFxn)
#define ON_CBN_CLOSEUP(id, memberFxn)   ON_CONTROL(CBN_CLOSEUP, id, memberFxn)
#define ON_CBN_EDITCHANGE(id, memberFxn) ON_CONTROL(CBN_EDITCHANGE, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_LBN_DBLCLK(id, memberFxn)    ON_CONTROL(LBN_DBLCLK, id, memberFxn)

// Run-time class names are not kept; these stay so that class declarations read as usual.
#define DECLARE_DYNAMIC(class_name)
#define DECLARE_DYNCREATE(class_name)
#define IMPLEMENT_DYNAMIC(class_name, base_class_name)
#define IMPLEMENT_DYNCREATE(class_name, base_class_name)
#define DYNAMIC_DOWNCAST(class_name, object) (dynamic_cast<class_name*>(object))
#define STATIC_DOWNCAST(class_name, object) (static_cast<class_name*>(object))
