// Window objects: creation hook, handle map, message maps, Default(), reflection,
// pre-translation and PostNcDestroy, each proven on real windows.
#include <afxwin.h>
#include <gtest/gtest.h>

#include "testsupport.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace
{
// A plain top-level window to be the parent of the controls under test.
class CTestFrame : public CWnd
{
public:
    bool CreateFrame()
    {
        return CreateEx(0, nullptr, "test frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 320, 240, nullptr,
                        nullptr) != FALSE;
    }
    std::vector<std::string> log;
    UINT lastParentCode = 0;

protected:
    afx_msg void OnEditSetFocus() { log.push_back("parent:EN_SETFOCUS"); }
    afx_msg void OnEditChange() { log.push_back("parent:EN_CHANGE"); }
    afx_msg void OnNotifyFromChild(NMHDR* pNMHDR, LRESULT* pResult)
    {
        lastParentCode = pNMHDR->code;
        log.push_back("parent:WM_NOTIFY");
        *pResult = 7;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CTestFrame, CWnd)
    ON_EN_SETFOCUS(100, &CTestFrame::OnEditSetFocus)
    ON_EN_CHANGE(100, &CTestFrame::OnEditChange)
    ON_NOTIFY(NM_CLICK, 100, &CTestFrame::OnNotifyFromChild)
    ON_NOTIFY(NM_DBLCLK, 100, &CTestFrame::OnNotifyFromChild)
END_MESSAGE_MAP()

// An edit that records what reaches its C++ handlers.
class CSpyEdit : public CEdit
{
public:
    std::vector<std::string> log;
    bool passChangeToParent = false;
    HBRUSH brush = nullptr;
    int ctlColorCalls = 0;
    UINT lastCtlColorKind = 0xFFFF;

protected:
    afx_msg BOOL OnNcCreate(LPCREATESTRUCT lpcs)
    {
        log.push_back("WM_NCCREATE");
        return CEdit::OnNcCreate(lpcs);
    }
    afx_msg int OnCreate(LPCREATESTRUCT lpcs)
    {
        log.push_back(std::string("WM_CREATE:") + (lpcs->lpszClass && !IS_INTRESOURCE(lpcs->lpszClass) ? lpcs->lpszClass : "?"));
        return CEdit::OnCreate(lpcs);
    }
    afx_msg void OnSetFocusReflect() { log.push_back("child:EN_SETFOCUS"); }
    afx_msg BOOL OnChangeReflect()
    {
        log.push_back("child:EN_CHANGE");
        return passChangeToParent ? FALSE : TRUE;
    }
    afx_msg void OnClickReflect(NMHDR*, LRESULT* pResult)
    {
        log.push_back("child:NM_CLICK");
        *pResult = 42;
    }
    afx_msg HBRUSH CtlColor(CDC*, UINT nCtlColor)
    {
        ++ctlColorCalls;
        lastCtlColorKind = nCtlColor;
        return brush;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CSpyEdit, CEdit)
    ON_WM_NCCREATE()
    ON_WM_CREATE()
    ON_CONTROL_REFLECT(EN_SETFOCUS, &CSpyEdit::OnSetFocusReflect)
    ON_CONTROL_REFLECT_EX(EN_CHANGE, &CSpyEdit::OnChangeReflect)
    ON_NOTIFY_REFLECT(NM_CLICK, &CSpyEdit::OnClickReflect)
    ON_WM_CTLCOLOR_REFLECT()
END_MESSAGE_MAP()

struct WndTest : ::testing::Test
{
    CTestFrame frame;
    long windowsBefore = 0;
    void SetUp() override
    {
        windowsBefore = AfxGetLiveCount(afxLiveWindows);
        ASSERT_TRUE(frame.CreateFrame());
    }
    void TearDown() override
    {
        if (frame.m_hWnd)
            frame.DestroyWindow();
        kel_test::PumpPending();
        EXPECT_EQ(windowsBefore, AfxGetLiveCount(afxLiveWindows));
    }
};
}

TEST_F(WndTest, StockEditReceivesNcCreateAndCreateInCppHandlers)
{
    CSpyEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(5, 5, 150, 30), &frame, 100));
    ASSERT_EQ(2u, edit.log.size());
    EXPECT_EQ("WM_NCCREATE", edit.log[0]);
    EXPECT_EQ("WM_CREATE:EDIT", edit.log[1]);
    char cls[32] = {};
    GetClassNameA(edit.m_hWnd, cls, sizeof(cls));
    EXPECT_STREQ("edit", CharLowerA(cls));
    // The stock procedure still runs underneath: the edit takes text.
    edit.SetWindowText("abc");
    CString text;
    edit.GetWindowText(text);
    EXPECT_STREQ("abc", text);
}

TEST_F(WndTest, ReflectedSetFocusReachesChildAndNotParent)
{
    CSpyEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(5, 5, 150, 30), &frame, 100));
    edit.log.clear();
    frame.SetActiveWindow();
    edit.SetFocus();
    kel_test::PumpPending();
    ASSERT_EQ(::GetFocus(), edit.m_hWnd);
    EXPECT_EQ(std::vector<std::string>{"child:EN_SETFOCUS"}, edit.log);
    EXPECT_TRUE(frame.log.empty());
}

TEST_F(WndTest, ReflectExDecliningPassesNotificationOnToParent)
{
    CSpyEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(5, 5, 150, 30), &frame, 100));
    edit.log.clear();
    edit.passChangeToParent = false;
    edit.SetWindowText("x");   // the stock edit sends EN_CHANGE
    EXPECT_EQ(std::vector<std::string>{"child:EN_CHANGE"}, edit.log);
    EXPECT_TRUE(frame.log.empty());

    edit.log.clear();
    edit.passChangeToParent = true;
    edit.SetWindowText("y");
    EXPECT_EQ(std::vector<std::string>{"child:EN_CHANGE"}, edit.log);
    EXPECT_EQ(std::vector<std::string>{"parent:EN_CHANGE"}, frame.log);
}

TEST_F(WndTest, ReflectedNotifyReachesChildWithItsResult)
{
    CSpyEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, CRect(5, 5, 150, 30), &frame, 100));
    edit.log.clear();
    NMHDR nm = {edit.m_hWnd, 100, static_cast<UINT>(NM_CLICK)};
    LRESULT r = frame.SendMessage(WM_NOTIFY, 100, reinterpret_cast<LPARAM>(&nm));
    EXPECT_EQ(42, r);
    EXPECT_EQ(std::vector<std::string>{"child:NM_CLICK"}, edit.log);
    EXPECT_TRUE(frame.log.empty());

    // A code the child does not reflect goes to the parent's own map.
    nm.code = static_cast<UINT>(NM_DBLCLK);
    r = frame.SendMessage(WM_NOTIFY, 100, reinterpret_cast<LPARAM>(&nm));
    EXPECT_EQ(7, r);
    EXPECT_EQ(static_cast<UINT>(NM_DBLCLK), frame.lastParentCode);
}

TEST_F(WndTest, ReflectedCtlColorGivesChildBrushToStockPainting)
{
    CSpyEdit edit;
    CBrush red(RGB(255, 0, 0));
    edit.brush = static_cast<HBRUSH>(red.GetSafeHandle());
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, CRect(5, 5, 150, 40), &frame, 100));
    // Direct request, as the stock edit sends it to its parent.
    HDC hdc = ::GetDC(edit.m_hWnd);
    LRESULT r = frame.SendMessage(WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(hdc), reinterpret_cast<LPARAM>(edit.m_hWnd));
    ::ReleaseDC(edit.m_hWnd, hdc);
    EXPECT_EQ(reinterpret_cast<LRESULT>(edit.brush), r);
    EXPECT_EQ(static_cast<UINT>(CTLCOLOR_EDIT), edit.lastCtlColorKind);

    // The real path: the edit paints its background with the reflected brush.
    edit.ctlColorCalls = 0;
    edit.RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    kel_test::PumpPending();
    EXPECT_GT(edit.ctlColorCalls, 0);
    HDC hdcMem = CreateCompatibleDC(nullptr);
    HBITMAP hbm = CreateCompatibleBitmap(::GetDC(nullptr), 145, 35);
    HGDIOBJ old = SelectObject(hdcMem, hbm);
    edit.SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(hdcMem), PRF_CLIENT | PRF_ERASEBKGND);
    COLORREF px = GetPixel(hdcMem, 140, 30);
    SelectObject(hdcMem, old);
    DeleteObject(hbm);
    DeleteDC(hdcMem);
    EXPECT_EQ(RGB(255, 0, 0), px);
}

namespace
{
// A base class map and a derived one that overrides one entry and inherits another.
class CBaseKeys : public CWnd
{
public:
    std::vector<std::string> log;

protected:
    afx_msg void OnChar(UINT nChar, UINT, UINT) { log.push_back("base:char:" + std::string(1, static_cast<char>(nChar))); }
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT) { log.push_back("base:keydown:" + std::to_string(nChar) + "x" + std::to_string(nRepCnt)); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CBaseKeys, CWnd)
    ON_WM_CHAR()
    ON_WM_KEYDOWN()
END_MESSAGE_MAP()

class CDerivedKeys : public CBaseKeys
{
protected:
    afx_msg void OnChar(UINT nChar, UINT, UINT) { log.push_back("derived:char:" + std::string(1, static_cast<char>(nChar))); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CDerivedKeys, CBaseKeys)
    ON_WM_CHAR()
END_MESSAGE_MAP()
}

TEST_F(WndTest, DerivedMessageMapOverridesOneEntryAndChainsTheRest)
{
    CDerivedKeys wnd;
    ASSERT_TRUE(wnd.Create(nullptr, "keys", WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), &frame, 7));
    wnd.SendMessage(WM_CHAR, 'q', 1);
    wnd.SendMessage(WM_KEYDOWN, VK_F2, 3);
    std::vector<std::string> expected = {"derived:char:q", "base:keydown:113x3"};
    EXPECT_EQ(expected, wnd.log);
}

namespace
{
// Lets only digits reach the stock edit: Default() hands them on.
class CDigitsEdit : public CEdit
{
protected:
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
    {
        if (nChar >= '0' && nChar <= '9')
            CEdit::OnChar(nChar, nRepCnt, nFlags);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CDigitsEdit, CEdit)
    ON_WM_CHAR()
END_MESSAGE_MAP()
}

TEST_F(WndTest, DefaultHandsMessageToStockProcedure)
{
    CDigitsEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(5, 5, 150, 30), &frame, 101));
    for (char c : std::string("a1b2c3"))
        edit.SendMessage(WM_CHAR, static_cast<WPARAM>(c), 1);
    CString text;
    edit.GetWindowText(text);
    EXPECT_STREQ("123", text);
}

TEST_F(WndTest, HandleMapForgetsDestroyedWindow)
{
    long before = AfxGetLiveCount(afxLiveWindows);
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, CRect(5, 5, 150, 30), &frame, 102));
    HWND hWnd = edit.m_hWnd;
    EXPECT_EQ(&edit, CWnd::FromHandlePermanent(hWnd));
    EXPECT_EQ(before + 1, AfxGetLiveCount(afxLiveWindows));
    edit.DestroyWindow();
    EXPECT_EQ(nullptr, edit.m_hWnd);
    EXPECT_FALSE(::IsWindow(hWnd));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(hWnd));
    EXPECT_EQ(before, AfxGetLiveCount(afxLiveWindows));
}

namespace
{
// Deletes itself once its window is gone, counting how often that happened.
class CSelfDeleting : public CWnd
{
public:
    explicit CSelfDeleting(int* pDeleted) : m_pDeleted(pDeleted) {}
    ~CSelfDeleting() override { ++*m_pDeleted; }

protected:
    void PostNcDestroy() override { delete this; }

private:
    int* m_pDeleted;
};
}

TEST_F(WndTest, PostNcDestroyLetsHeapObjectDeleteItselfOnce)
{
    int deleted = 0;
    CSelfDeleting* pWnd = new CSelfDeleting(&deleted);
    ASSERT_TRUE(pWnd->Create(nullptr, "temp", WS_CHILD | WS_VISIBLE, CRect(0, 0, 20, 20), &frame, 9));
    HWND hWnd = pWnd->m_hWnd;
    EXPECT_EQ(0, deleted);
    ::DestroyWindow(hWnd);
    EXPECT_EQ(1, deleted);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(hWnd));
    // Destroying the parent afterwards does not touch the gone object again.
    frame.DestroyWindow();
    EXPECT_EQ(1, deleted);
}

TEST_F(WndTest, FromHandleGivesTemporaryWrapperForForeignWindowUntilTempMapIsDeleted)
{
    HWND hStatic = CreateWindowExA(0, "STATIC", "foreign", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, frame.m_hWnd, nullptr,
                                   nullptr, nullptr);
    ASSERT_NE(nullptr, hStatic);
    long before = AfxGetLiveCount(afxLiveWindows);
    CWnd* pTemp = CWnd::FromHandle(hStatic);
    ASSERT_NE(nullptr, pTemp);
    EXPECT_EQ(hStatic, pTemp->m_hWnd);
    EXPECT_EQ(pTemp, CWnd::FromHandle(hStatic));      // the same wrapper while it lives
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(hStatic));
    EXPECT_EQ(before, AfxGetLiveCount(afxLiveWindows));   // temporaries are not owners
    CString text;
    pTemp->GetWindowText(text);
    EXPECT_STREQ("foreign", text);
    AfxDeleteTempMaps();
    EXPECT_TRUE(::IsWindow(hStatic));   // deleting the wrapper leaves the window alone
    ::DestroyWindow(hStatic);
}

TEST_F(WndTest, SubclassWindowTakesOverAndUnsubclassGivesBack)
{
    HWND hEdit = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20, frame.m_hWnd,
                                 reinterpret_cast<HMENU>(103), nullptr, nullptr);
    ASSERT_NE(nullptr, hEdit);
    WNDPROC original = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(hEdit, GWLP_WNDPROC));
    CDigitsEdit edit;
    ASSERT_TRUE(edit.SubclassDlgItem(103, &frame));
    EXPECT_EQ(hEdit, edit.m_hWnd);
    EXPECT_NE(original, reinterpret_cast<WNDPROC>(GetWindowLongPtrA(hEdit, GWLP_WNDPROC)));
    ::SendMessageA(hEdit, WM_CHAR, 'z', 1);
    ::SendMessageA(hEdit, WM_CHAR, '5', 1);
    char text[16] = {};
    GetWindowTextA(hEdit, text, sizeof(text));
    EXPECT_STREQ("5", text);
    EXPECT_EQ(hEdit, edit.UnsubclassWindow());
    EXPECT_EQ(original, reinterpret_cast<WNDPROC>(GetWindowLongPtrA(hEdit, GWLP_WNDPROC)));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(hEdit));
    ::SendMessageA(hEdit, WM_CHAR, 'z', 1);
    GetWindowTextA(hEdit, text, sizeof(text));
    EXPECT_STREQ("5z", text);
    // A second object cannot take a window that is already mapped.
    CDigitsEdit first, second;
    ASSERT_TRUE(first.SubclassWindow(hEdit));
    EXPECT_FALSE(second.SubclassWindow(hEdit));
    first.DestroyWindow();
}

namespace
{
// Records pre-translation; optionally eats the message.
class CPreTranslator : public CWnd
{
public:
    CPreTranslator(std::vector<std::string>* pLog, const char* name, bool eat) : m_pLog(pLog), m_name(name), m_eat(eat) {}
    BOOL PreTranslateMessage(MSG* pMsg) override
    {
        if (pMsg->message == WM_KEYDOWN)
            m_pLog->push_back(m_name);
        return m_eat && pMsg->message == WM_KEYDOWN;
    }
    int keyDowns = 0;

protected:
    afx_msg void OnKeyDown(UINT, UINT, UINT) { ++keyDowns; }
    DECLARE_MESSAGE_MAP()

private:
    std::vector<std::string>* m_pLog;
    std::string m_name;
    bool m_eat;
};
BEGIN_MESSAGE_MAP(CPreTranslator, CWnd)
    ON_WM_KEYDOWN()
END_MESSAGE_MAP()
}

TEST_F(WndTest, PumpPreTranslatesFromTargetUpToTopWindow)
{
    std::vector<std::string> log;
    CPreTranslator outer(&log, "outer", false), inner(&log, "inner", false);
    ASSERT_TRUE(outer.Create(nullptr, "outer", WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 200), &frame, 20));
    ASSERT_TRUE(inner.Create(nullptr, "inner", WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), &outer, 21));
    kel_test::PumpPending();
    log.clear();
    inner.PostMessage(WM_KEYDOWN, 'A', 1);
    EXPECT_TRUE(AfxPumpMessage());
    EXPECT_EQ((std::vector<std::string>{"inner", "outer"}), log);
    EXPECT_EQ(1, inner.keyDowns);
}

TEST_F(WndTest, PreTranslateThatEatsStopsWalkAndDispatch)
{
    std::vector<std::string> log;
    CPreTranslator outer(&log, "outer", false), inner(&log, "inner", true);
    ASSERT_TRUE(outer.Create(nullptr, "outer", WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 200), &frame, 20));
    ASSERT_TRUE(inner.Create(nullptr, "inner", WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 100), &outer, 21));
    kel_test::PumpPending();
    log.clear();
    inner.PostMessage(WM_KEYDOWN, 'A', 1);
    EXPECT_TRUE(AfxPumpMessage());
    EXPECT_EQ(std::vector<std::string>{"inner"}, log);
    EXPECT_EQ(0, inner.keyDowns);
}

namespace
{
class CThrower : public CWnd
{
public:
    int after = 0;

protected:
    afx_msg LRESULT OnBoom(WPARAM, LPARAM) { throw std::runtime_error("boom"); }
    afx_msg LRESULT OnFine(WPARAM wParam, LPARAM) { ++after; return static_cast<LRESULT>(wParam) * 2; }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CThrower, CWnd)
    ON_MESSAGE(WM_APP + 1, &CThrower::OnBoom)
    ON_MESSAGE(WM_APP + 2, &CThrower::OnFine)
END_MESSAGE_MAP()
}

TEST_F(WndTest, ExceptionInHandlerStopsAtWindowProcedure)
{
    CThrower wnd;
    ASSERT_TRUE(wnd.Create(nullptr, "t", WS_CHILD, CRect(0, 0, 10, 10), &frame, 30));
    EXPECT_EQ(0, wnd.SendMessage(WM_APP + 1));
    // The dispatch state is intact afterwards.
    EXPECT_EQ(42, wnd.SendMessage(WM_APP + 2, 21));
    EXPECT_EQ(1, wnd.after);
}

TEST_F(WndTest, EditWrapperSelectionAndClipboardRoundTrip)
{
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, CRect(5, 5, 200, 30), &frame, 104));
    edit.SetWindowText("hello world");
    edit.SetSel(0, 5);
    int start = -1, end = -1;
    edit.GetSel(start, end);
    EXPECT_EQ(0, start);
    EXPECT_EQ(5, end);
    edit.Cut();
    CString text;
    edit.GetWindowText(text);
    EXPECT_STREQ(" world", text);
    edit.SetSel(6, 6);
    edit.Paste();
    edit.GetWindowText(text);
    EXPECT_STREQ(" worldhello", text);
    edit.SetSel(0, -1);
    edit.ReplaceSel("x");
    edit.GetWindowText(text);
    EXPECT_STREQ("x", text);
    edit.SetLimitText(3);
    EXPECT_EQ(3u, edit.GetLimitText());
}
