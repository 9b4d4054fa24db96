// Modal dialogs, from templates built in memory and from the program's resources, driven
// through the framework's modal loop with real messages.
#include <afxwin.h>
#include <gtest/gtest.h>

#include "dialogfixture.h"
#include "dlgtemplate.h"
#include "test_framework_res.h"
#include "testsupport.h"

#include <string>
#include <vector>

using fwtest::CDialogOwner;
using fwtest::DialogTest;
using fwtest::kEditId;
using fwtest::kLabelId;
using fwtest::MakeEditTemplate;

namespace
{
const UINT WM_APP_FINISH = WM_APP + 7;
const UINT_PTR kPressTimer = 1;
const UINT_PTR kWatchdogTimer = 2;
const int kWatchdogResult = -2;   // what a dialog that nobody ended returns
// A timer that is due is a message too, so the loop may see one before it ever went idle
// and showed its dialog; handlers that act "once shown" wait up to this many ticks.
const int kTicksToWaitForShow = 50;

// Ends itself from a timer that fires once the modal loop has shown it and gone idle.
class CTimerEndingDialog : public CDialog
{
public:
    int initCount = 0;
    bool mappedAtInit = false;
    bool editThereAtInit = false;
    CString labelAtInit;
    HWND hWndSeen = nullptr;
    HWND ownerSeen = nullptr;
    bool ownerEnabledWhileRunning = true;
    bool visibleWhenEnded = false;
    bool activeWhileRunning = false;
    HWND hWndOwnerToWatch = nullptr;

    BOOL OnInitDialog() override
    {
        ++initCount;
        hWndSeen = m_hWnd;
        mappedAtInit = CWnd::FromHandlePermanent(m_hWnd) == this;
        editThereAtInit = ::GetDlgItem(m_hWnd, kEditId) != nullptr;
        GetDlgItemText(kLabelId, labelAtInit);
        SetTimer(kPressTimer, 20);
        return CDialog::OnInitDialog();
    }

protected:
    afx_msg void OnTimer(UINT_PTR nIDEvent)
    {
        if (nIDEvent != kPressTimer)
            return;
        if (!IsWindowVisible() && ++m_ticks < kTicksToWaitForShow)
            return;
        KillTimer(kPressTimer);
        ownerSeen = ::GetWindow(m_hWnd, GW_OWNER);
        ownerEnabledWhileRunning = ::IsWindowEnabled(hWndOwnerToWatch) != FALSE;
        visibleWhenEnded = IsWindowVisible() != FALSE;
        activeWhileRunning = ::GetActiveWindow() == m_hWnd;
        EndDialog(42);
    }
    DECLARE_MESSAGE_MAP()

private:
    int m_ticks = 0;
};
BEGIN_MESSAGE_MAP(CTimerEndingDialog, CDialog)
    ON_WM_TIMER()
END_MESSAGE_MAP()
}

TEST_F(DialogTest, ModalFromMemoryTemplateInitialisesOnceWithControlsAndEndsWithItsCode)
{
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Place symbol");
    CTimerEndingDialog dlg;
    dlg.hWndOwnerToWatch = owner.m_hWnd;
    ASSERT_TRUE(dlg.InitModalIndirect(tmpl.Get(), &owner));
    EXPECT_TRUE(owner.IsWindowEnabled());

    INT_PTR result = dlg.DoModal();

    EXPECT_EQ(42, result);
    EXPECT_EQ(1, dlg.initCount);
    EXPECT_TRUE(dlg.mappedAtInit);       // the object had the window before WM_INITDIALOG
    EXPECT_TRUE(dlg.editThereAtInit);    // the template's controls exist by then
    EXPECT_STREQ("Symbol name:", dlg.labelAtInit);
    EXPECT_TRUE(dlg.visibleWhenEnded);   // the loop showed the dialog when it went idle
    // The owner was disabled while the dialog ran and is enabled again.
    EXPECT_EQ(owner.m_hWnd, dlg.ownerSeen);
    EXPECT_FALSE(dlg.ownerEnabledWhileRunning);
    EXPECT_TRUE(owner.IsWindowEnabled());
    // The window is gone and the handle map forgot it.
    ASSERT_NE(nullptr, dlg.hWndSeen);
    EXPECT_FALSE(::IsWindow(dlg.hWndSeen));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(dlg.hWndSeen));
    EXPECT_EQ(nullptr, dlg.m_hWnd);
}

namespace
{
// Ends itself from a message posted during WM_INITDIALOG and handled through ON_MESSAGE.
class CMessageEndingDialog : public CDialog
{
public:
    HWND hWndSeen = nullptr;
    bool ownerEnabledWhileRunning = true;
    HWND hWndOwnerToWatch = nullptr;
    int finishCount = 0;

    BOOL OnInitDialog() override
    {
        hWndSeen = m_hWnd;
        PostMessage(WM_APP_FINISH, 42, 0);
        return TRUE;
    }

protected:
    afx_msg LRESULT OnFinish(WPARAM wParam, LPARAM)
    {
        ++finishCount;
        ownerEnabledWhileRunning = ::IsWindowEnabled(hWndOwnerToWatch) != FALSE;
        EndDialog(static_cast<int>(wParam));
        return 0;
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CMessageEndingDialog, CDialog)
    ON_MESSAGE(WM_APP_FINISH, &CMessageEndingDialog::OnFinish)
END_MESSAGE_MAP()
}

TEST_F(DialogTest, PostedMessageHandledByMessageMapEndsModalDialog)
{
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Rename layer");
    CMessageEndingDialog dlg;
    dlg.hWndOwnerToWatch = owner.m_hWnd;
    dlg.InitModalIndirect(tmpl.Get(), &owner);
    EXPECT_EQ(42, dlg.DoModal());
    EXPECT_EQ(1, dlg.finishCount);
    EXPECT_FALSE(dlg.ownerEnabledWhileRunning);
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_FALSE(::IsWindow(dlg.hWndSeen));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(dlg.hWndSeen));
}

TEST_F(DialogTest, ModalWithoutParentIsOwnedByActiveWindowAndDisablesIt)
{
    ASSERT_TRUE(kel_test::TakeForeground(owner.m_hWnd));
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Tidy up");
    CMessageEndingDialog dlg;
    dlg.hWndOwnerToWatch = owner.m_hWnd;
    dlg.InitModalIndirect(tmpl.Get(), nullptr);
    EXPECT_EQ(42, dlg.DoModal());
    EXPECT_FALSE(dlg.ownerEnabledWhileRunning);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

namespace
{
// Records pre-translation of key presses; the dialog subclasses it over its edit.
class CKeySpyEdit : public CEdit
{
public:
    std::vector<std::string>* pLog = nullptr;
    BOOL PreTranslateMessage(MSG* pMsg) override
    {
        if (pMsg->message == WM_KEYDOWN && pLog != nullptr)
            pLog->push_back("edit:keydown:" + std::to_string(pMsg->wParam));
        return CEdit::PreTranslateMessage(pMsg);
    }
};

// The resource dialog. Once the loop is idle it posts the given input to its edit, as the
// keyboard would; OnOK accepts only a non-empty name.
class CResourceDialog : public CDialog
{
public:
    CResourceDialog(CWnd* pParent, std::vector<MSG> input) : CDialog(IDD_KELFW_TEST_EDIT, pParent), m_input(input) {}

    CKeySpyEdit m_edit;
    std::vector<std::string> log;
    CString labelText;
    CString name;
    bool subclassed = false;
    bool editFocusedBeforeInput = false;
    int okCount = 0;
    UINT defIdToSet = 0;   // when set, OnInitDialog makes this button the default
    DWORD defIdAfterSet = 0;

    BOOL OnInitDialog() override
    {
        CDialog::OnInitDialog();
        if (defIdToSet != 0)
        {
            SetDefID(defIdToSet);
            defIdAfterSet = GetDefID();
        }
        m_edit.pLog = &log;
        subclassed = m_edit.SubclassDlgItem(IDC_KELFW_TEST_EDIT, this) != FALSE;
        GetDlgItemText(IDC_KELFW_TEST_LABEL, labelText);
        SetTimer(kPressTimer, 20);
        SetTimer(kWatchdogTimer, 5000);
        return TRUE;   // the first tab stop, the edit, gets the focus
    }
    BOOL PreTranslateMessage(MSG* pMsg) override
    {
        if (pMsg->message == WM_KEYDOWN)
            log.push_back("dialog:keydown:" + std::to_string(pMsg->wParam));
        return CDialog::PreTranslateMessage(pMsg);
    }
    void DoDataExchange(CDataExchange* pDX) override
    {
        HWND hEdit = pDX->PrepareCtrl(IDC_KELFW_TEST_EDIT);
        if (!pDX->m_bSaveAndValidate)
            return;
        char text[64] = {};
        ::GetWindowTextA(hEdit, text, sizeof(text));
        if (text[0] == '\0')
        {
            log.push_back("validation failed");
            pDX->Fail();
            return;
        }
        name = text;
    }
    void OnOK() override
    {
        ++okCount;
        log.push_back("OnOK");
        CDialog::OnOK();
    }
    void OnCancel() override
    {
        log.push_back("OnCancel");
        CDialog::OnCancel();
    }

protected:
    afx_msg void OnTimer(UINT_PTR nIDEvent)
    {
        if (nIDEvent == kWatchdogTimer)
        {
            // The input did not end the dialog: end it so that the test fails instead of hanging.
            KillTimer(kWatchdogTimer);
            EndDialog(kWatchdogResult);
            return;
        }
        if (nIDEvent != kPressTimer)
            return;
        if (!IsWindowVisible() && ++m_ticks < kTicksToWaitForShow)
            return;
        KillTimer(kPressTimer);
        editFocusedBeforeInput = ::GetFocus() == m_edit.m_hWnd;
        for (const MSG& msg : m_input)
            m_edit.PostMessage(msg.message, msg.wParam, msg.lParam);
    }
    DECLARE_MESSAGE_MAP()

private:
    std::vector<MSG> m_input;
    int m_ticks = 0;
};
BEGIN_MESSAGE_MAP(CResourceDialog, CDialog)
    ON_WM_TIMER()
END_MESSAGE_MAP()

MSG Key(WPARAM vk)
{
    MSG msg = {};
    msg.message = WM_KEYDOWN;
    msg.wParam = vk;
    msg.lParam = 1;
    return msg;
}

MSG Char(char c)
{
    MSG msg = {};
    msg.message = WM_CHAR;
    msg.wParam = static_cast<WPARAM>(c);
    msg.lParam = 1;
    return msg;
}
}

TEST_F(DialogTest, ResourceTemplateReturnKeyGoesThroughPreTranslationToOnOK)
{
    // OnOK accepts only a name, so the edit gets some typed text before Return.
    CResourceDialog dlg(&owner, {Char('L'), Char('1'), Key(VK_RETURN)});

    INT_PTR result = dlg.DoModal();

    EXPECT_EQ(IDOK, result);
    EXPECT_TRUE(dlg.subclassed);
    EXPECT_STREQ("Layer name:", dlg.labelText);   // the static's text comes from the template
    EXPECT_STREQ("L1", dlg.name);
    // The control pre-translates first, then the dialog, whose dialog keys turn Return
    // into IDOK.
    std::vector<std::string> expected = {"edit:keydown:13", "dialog:keydown:13", "OnOK"};
    EXPECT_EQ(expected, dlg.log);
    EXPECT_EQ(nullptr, dlg.m_edit.m_hWnd);   // the subclassed edit went with the dialog
}

TEST_F(DialogTest, ShownModalDialogHasFocusOnItsFirstTabStop)
{
    bool editFocused = false;
    INT_PTR result = 0;
    bool held = kel_test::RunHoldingForeground(owner.m_hWnd, [&] {
        CResourceDialog dlg(&owner, {Key(VK_ESCAPE)});
        result = dlg.DoModal();
        editFocused = dlg.editFocusedBeforeInput;
    });
    ASSERT_TRUE(held) << "the window lost the foreground";
    EXPECT_EQ(IDCANCEL, result);
    EXPECT_TRUE(editFocused);
}

TEST_F(DialogTest, FailedDataExchangeKeepsDialogOpenUntilInputIsValid)
{
    CResourceDialog dlg(&owner, {Key(VK_RETURN), Char('A'), Key(VK_RETURN)});
    EXPECT_EQ(IDOK, dlg.DoModal());
    EXPECT_EQ(2, dlg.okCount);
    std::vector<std::string> expected = {"edit:keydown:13", "dialog:keydown:13", "OnOK", "validation failed",
                                         "edit:keydown:13", "dialog:keydown:13", "OnOK"};
    EXPECT_EQ(expected, dlg.log);
    EXPECT_STREQ("A", dlg.name);
}

TEST_F(DialogTest, ResourceTemplateEscapeKeyGivesCancel)
{
    CResourceDialog dlg(&owner, {Key(VK_ESCAPE)});
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    std::vector<std::string> expected = {"edit:keydown:27", "dialog:keydown:27", "OnCancel"};
    EXPECT_EQ(expected, dlg.log);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

namespace
{
// Ends itself before it was ever shown.
class CEndsInInitDialog : public CDialog
{
public:
    explicit CEndsInInitDialog(CWnd* pParent) : CDialog(IDD_KELFW_TEST_EDIT, pParent) {}
    int initCount = 0;
    int shownCount = 0;
    HWND hWndSeen = nullptr;
    BOOL OnInitDialog() override
    {
        ++initCount;
        hWndSeen = m_hWnd;
        EndDialog(7);
        return TRUE;
    }

protected:
    afx_msg void OnShowWindow(BOOL bShow, UINT nStatus)
    {
        if (bShow)
            ++shownCount;
        CDialog::OnShowWindow(bShow, nStatus);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CEndsInInitDialog, CDialog)
    ON_WM_SHOWWINDOW()
END_MESSAGE_MAP()
}

TEST_F(DialogTest, EndDialogInsideOnInitDialogReturnsAtOnceWithItsCode)
{
    CEndsInInitDialog dlg(&owner);
    EXPECT_EQ(7, dlg.DoModal());
    EXPECT_EQ(1, dlg.initCount);
    EXPECT_EQ(0, dlg.shownCount);   // the loop never ran, so the dialog was never shown
    EXPECT_FALSE(::IsWindow(dlg.hWndSeen));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(dlg.hWndSeen));
    EXPECT_TRUE(owner.IsWindowEnabled());
}


TEST_F(DialogTest, ModalWithMissingTemplateReturnsMinusOneAndLeavesOwnerEnabled)
{
    CDialog dlg(static_cast<UINT>(0x7ABC), &owner);
    EXPECT_EQ(-1, dlg.DoModal());
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_EQ(nullptr, dlg.m_hWnd);
}

TEST_F(DialogTest, OwnerIsActiveAgainAfterModalDialogEnds)
{
    // Another top-level window stands behind the owner, as another program's window would:
    // the dialog must hand activation back to its owner, not to it.
    CDialogOwner other;
    ASSERT_TRUE(other.CreateOwner());
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Units");
    INT_PTR result = 0;
    bool activeWhileRunning = false;
    HWND activeAfter = nullptr;
    bool held = kel_test::RunHoldingForeground(owner.m_hWnd, [&] {
        CTimerEndingDialog dlg;
        dlg.hWndOwnerToWatch = owner.m_hWnd;
        dlg.InitModalIndirect(tmpl.Get(), &owner);
        result = dlg.DoModal();
        activeWhileRunning = dlg.activeWhileRunning;
        kel_test::PumpPending();
        activeAfter = ::GetActiveWindow();
    });
    ASSERT_TRUE(held) << "the window lost the foreground";
    EXPECT_EQ(42, result);
    EXPECT_TRUE(activeWhileRunning);
    EXPECT_EQ(owner.m_hWnd, activeAfter);
    other.DestroyWindow();
}

TEST_F(DialogTest, SetDefIdMakesReturnPressThatButton)
{
    CResourceDialog dlg(&owner, {Key(VK_RETURN)});
    dlg.defIdToSet = IDCANCEL;
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    EXPECT_EQ(static_cast<DWORD>(MAKELONG(IDCANCEL, DC_HASDEFID)), dlg.defIdAfterSet);
    std::vector<std::string> expected = {"edit:keydown:13", "dialog:keydown:13", "OnCancel"};
    EXPECT_EQ(expected, dlg.log);
}

TEST_F(DialogTest, SameDialogObjectRunsModalTwice)
{
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Twice");
    CMessageEndingDialog dlg;
    dlg.hWndOwnerToWatch = owner.m_hWnd;
    dlg.InitModalIndirect(tmpl.Get(), &owner);
    EXPECT_EQ(42, dlg.DoModal());
    HWND hFirst = dlg.hWndSeen;
    EXPECT_EQ(42, dlg.DoModal());
    EXPECT_EQ(2, dlg.finishCount);
    EXPECT_FALSE(::IsWindow(hFirst));
    EXPECT_FALSE(::IsWindow(dlg.hWndSeen));
    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST_F(DialogTest, OwnerDisabledBeforeModalDialogStaysDisabledAfter)
{
    owner.EnableWindow(FALSE);
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Disabled owner");
    CMessageEndingDialog dlg;
    dlg.hWndOwnerToWatch = owner.m_hWnd;
    dlg.InitModalIndirect(tmpl.Get(), &owner);
    EXPECT_EQ(42, dlg.DoModal());
    EXPECT_FALSE(owner.IsWindowEnabled());   // the dialog gives back only what it took
    owner.EnableWindow(TRUE);
}

TEST_F(DialogTest, ChildWindowAsParentMakesItsTopLevelWindowTheOwner)
{
    CWnd child;
    ASSERT_TRUE(child.Create(nullptr, "child", WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), &owner, 5));
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Owned by the top");
    CTimerEndingDialog dlg;
    dlg.hWndOwnerToWatch = owner.m_hWnd;
    dlg.InitModalIndirect(tmpl.Get(), &child);
    EXPECT_EQ(42, dlg.DoModal());
    EXPECT_EQ(owner.m_hWnd, dlg.ownerSeen);
    EXPECT_FALSE(dlg.ownerEnabledWhileRunning);
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_TRUE(child.IsWindowEnabled());
}

namespace
{
// Runs a second modal dialog from inside its own modal loop, then ends itself.
class CNestingDialog : public CDialog
{
public:
    LPCDLGTEMPLATE pInnerTemplate = nullptr;
    INT_PTR innerResult = 0;
    HWND innerOwner = nullptr;
    bool disabledWhileInnerRan = false;
    bool enabledAfterInner = false;

    BOOL OnInitDialog() override
    {
        SetTimer(kPressTimer, 20);
        return TRUE;
    }

protected:
    afx_msg void OnTimer(UINT_PTR nIDEvent)
    {
        if (nIDEvent != kPressTimer)
            return;
        KillTimer(kPressTimer);
        CTimerEndingDialog inner;
        inner.hWndOwnerToWatch = m_hWnd;
        inner.InitModalIndirect(pInnerTemplate, this);
        innerResult = inner.DoModal();
        innerOwner = inner.ownerSeen;
        disabledWhileInnerRan = !inner.ownerEnabledWhileRunning;
        enabledAfterInner = IsWindowEnabled() != FALSE;
        EndDialog(9);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CNestingDialog, CDialog)
    ON_WM_TIMER()
END_MESSAGE_MAP()
}

TEST_F(DialogTest, ModalDialogRunFromModalDialogDisablesItAndReturnsToIt)
{
    kel_test::DlgTemplateBuilder outerTmpl = MakeEditTemplate("Outer");
    kel_test::DlgTemplateBuilder innerTmpl = MakeEditTemplate("Inner");
    CNestingDialog outer;
    outer.pInnerTemplate = innerTmpl.Get();
    outer.InitModalIndirect(outerTmpl.Get(), &owner);
    EXPECT_EQ(9, outer.DoModal());
    EXPECT_EQ(42, outer.innerResult);
    EXPECT_NE(nullptr, outer.innerOwner);
    EXPECT_NE(owner.m_hWnd, outer.innerOwner);   // the outer dialog owned the inner one
    EXPECT_TRUE(outer.disabledWhileInnerRan);
    EXPECT_TRUE(outer.enabledAfterInner);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

namespace
{
// Asks the thread to quit from inside its modal loop.
class CQuittingDialog : public CDialog
{
public:
    HWND hWndSeen = nullptr;
    BOOL OnInitDialog() override
    {
        hWndSeen = m_hWnd;
        SetTimer(kPressTimer, 20);
        return TRUE;
    }

protected:
    afx_msg void OnTimer(UINT_PTR nIDEvent)
    {
        if (nIDEvent != kPressTimer)
            return;
        KillTimer(kPressTimer);
        ::PostQuitMessage(3);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CQuittingDialog, CDialog)
    ON_WM_TIMER()
END_MESSAGE_MAP()
}

TEST_F(DialogTest, QuitDuringModalLoopEndsDialogAndIsLeftForOuterLoop)
{
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Quitting");
    CQuittingDialog dlg;
    dlg.InitModalIndirect(tmpl.Get(), &owner);
    EXPECT_EQ(-1, dlg.DoModal());
    EXPECT_FALSE(::IsWindow(dlg.hWndSeen));
    EXPECT_TRUE(owner.IsWindowEnabled());
    MSG msg = {};
    ASSERT_TRUE(::PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(3u, msg.wParam);
}

namespace
{
// Closes itself through the system menu's Close, as the caption's close button does.
class CClosingDialog : public CDialog
{
public:
    std::vector<std::string> log;
    BOOL OnInitDialog() override
    {
        SetTimer(kPressTimer, 20);
        return TRUE;
    }
    void OnCancel() override
    {
        log.push_back("OnCancel");
        CDialog::OnCancel();
    }

protected:
    afx_msg void OnTimer(UINT_PTR nIDEvent)
    {
        if (nIDEvent != kPressTimer)
            return;
        KillTimer(kPressTimer);
        PostMessage(WM_SYSCOMMAND, SC_CLOSE, 0);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CClosingDialog, CDialog)
    ON_WM_TIMER()
END_MESSAGE_MAP()
}

TEST_F(DialogTest, ClosingModalDialogFromSystemMenuCancels)
{
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Closing");
    CClosingDialog dlg;
    dlg.InitModalIndirect(tmpl.Get(), &owner);
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    EXPECT_EQ(std::vector<std::string>{"OnCancel"}, dlg.log);
}

namespace
{
// Destroys its owner, and with it itself, from inside its modal loop.
class COwnerKillingDialog : public CDialog
{
public:
    HWND hWndSeen = nullptr;
    HWND hWndOwnerToDestroy = nullptr;
    BOOL OnInitDialog() override
    {
        hWndSeen = m_hWnd;
        SetTimer(kPressTimer, 20);
        return TRUE;
    }

protected:
    afx_msg void OnTimer(UINT_PTR nIDEvent)
    {
        if (nIDEvent != kPressTimer)
            return;
        KillTimer(kPressTimer);
        ::DestroyWindow(hWndOwnerToDestroy);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(COwnerKillingDialog, CDialog)
    ON_WM_TIMER()
END_MESSAGE_MAP()

COwnerKillingDialog* g_pDialogToRescue = nullptr;
void CALLBACK RescueDialog(HWND, UINT, UINT_PTR, DWORD)
{
    // Only reached when the loop went on without its window: end it so the test fails
    // instead of hanging.
    if (g_pDialogToRescue != nullptr)
        g_pDialogToRescue->EndDialog(kWatchdogResult);
}
}

TEST_F(DialogTest, ModalLoopEndsWhenItsDialogIsDestroyedUnderIt)
{
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Orphaned");
    COwnerKillingDialog dlg;
    dlg.hWndOwnerToDestroy = owner.m_hWnd;
    dlg.InitModalIndirect(tmpl.Get(), &owner);
    g_pDialogToRescue = &dlg;
    UINT_PTR rescue = ::SetTimer(nullptr, 0, 3000, &RescueDialog);
    INT_PTR result = dlg.DoModal();
    ::KillTimer(nullptr, rescue);
    g_pDialogToRescue = nullptr;
    EXPECT_EQ(-1, result);   // ended by neither EndDialog nor the rescue
    EXPECT_EQ(nullptr, owner.m_hWnd);
    EXPECT_FALSE(::IsWindow(dlg.hWndSeen));
    EXPECT_EQ(nullptr, dlg.m_hWnd);
}
