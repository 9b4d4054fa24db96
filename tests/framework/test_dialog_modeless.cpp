// Modeless dialogs: from the program's resources and from templates built in memory, their
// lifetime, and focus moved between their controls by call and by the Tab key.
#include <afxwin.h>
#include <gtest/gtest.h>

#include "dialogfixture.h"
#include "dlgtemplate.h"
#include "test_framework_res.h"
#include "testsupport.h"

#include <string>
#include <vector>

using fwtest::DialogTest;
using fwtest::kEditId;
using fwtest::kLabelId;
using fwtest::MakeEditTemplate;

namespace
{
class CModelessDialog : public CDialog
{
public:
    int initCount = 0;
    std::vector<std::string> log;
    BOOL OnInitDialog() override
    {
        ++initCount;
        return CDialog::OnInitDialog();
    }
    void OnCancel() override
    {
        log.push_back("OnCancel");
        CDialog::OnCancel();
    }
};
}

TEST_F(DialogTest, ModelessCreateFromResourceLivesUntilDestroyWindow)
{
    CModelessDialog dlg;
    ASSERT_TRUE(dlg.Create(IDD_KELFW_TEST_EDIT, &owner));
    HWND hWnd = dlg.m_hWnd;
    ASSERT_TRUE(::IsWindow(hWnd));
    EXPECT_EQ(1, dlg.initCount);
    EXPECT_EQ(&dlg, CWnd::FromHandlePermanent(hWnd));
    EXPECT_EQ(owner.m_hWnd, ::GetWindow(hWnd, GW_OWNER));
    EXPECT_TRUE(owner.IsWindowEnabled());   // a modeless dialog leaves its owner alone
    CString text;
    dlg.GetWindowText(text);
    EXPECT_STREQ("Resource dialog", text);
    EXPECT_NE(nullptr, dlg.GetDlgItem(IDC_KELFW_TEST_EDIT));

    // Dialog keys work through the pre-translation of an ordinary message pump too.
    dlg.ShowWindow(SW_SHOW);
    kel_test::PumpPending();
    ::PostMessageA(::GetDlgItem(hWnd, IDC_KELFW_TEST_EDIT), WM_KEYDOWN, VK_ESCAPE, 1);
    kel_test::PumpPending();
    EXPECT_EQ(std::vector<std::string>{"OnCancel"}, dlg.log);
    EXPECT_TRUE(::IsWindow(hWnd));   // EndDialog only hides a modeless dialog
    EXPECT_FALSE(::IsWindowVisible(hWnd));

    EXPECT_TRUE(dlg.DestroyWindow());
    EXPECT_FALSE(::IsWindow(hWnd));
    EXPECT_EQ(nullptr, dlg.m_hWnd);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(hWnd));
}

TEST_F(DialogTest, ModelessCreateIndirectFromMemoryTemplate)
{
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Find and replace");
    long before = AfxGetLiveCount(afxLiveWindows);
    CModelessDialog dlg;
    ASSERT_TRUE(dlg.CreateIndirect(tmpl.Get(), &owner));
    HWND hWnd = dlg.m_hWnd;
    EXPECT_EQ(1, dlg.initCount);
    EXPECT_EQ(before + 1, AfxGetLiveCount(afxLiveWindows));
    EXPECT_EQ(&dlg, CWnd::FromHandlePermanent(hWnd));
    EXPECT_EQ(owner.m_hWnd, ::GetWindow(hWnd, GW_OWNER));
    CString text;
    dlg.GetWindowText(text);
    EXPECT_STREQ("Find and replace", text);
    dlg.GetDlgItemText(kLabelId, text);
    EXPECT_STREQ("Symbol name:", text);
    EXPECT_TRUE(dlg.DestroyWindow());
    EXPECT_FALSE(::IsWindow(hWnd));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(hWnd));
    EXPECT_EQ(before, AfxGetLiveCount(afxLiveWindows));
}

TEST_F(DialogTest, ModelessDialogObjectGoingOutOfScopeDestroysItsWindow)
{
    kel_test::DlgTemplateBuilder tmpl = MakeEditTemplate("Scoped");
    HWND hWnd = nullptr;
    {
        CModelessDialog dlg;
        ASSERT_TRUE(dlg.CreateIndirect(tmpl.Get(), &owner));
        hWnd = dlg.m_hWnd;
        ASSERT_TRUE(::IsWindow(hWnd));
    }
    EXPECT_FALSE(::IsWindow(hWnd));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(hWnd));
}

TEST_F(DialogTest, ModelessDialogMovesFocusBetweenControlsByCallAndByTabKey)
{
    CModelessDialog dlg;
    ASSERT_TRUE(dlg.Create(IDD_KELFW_TEST_EDIT, &owner));
    dlg.ShowWindow(SW_SHOW);
    HWND hEdit = ::GetDlgItem(dlg.m_hWnd, IDC_KELFW_TEST_EDIT);
    HWND hOk = ::GetDlgItem(dlg.m_hWnd, IDOK);
    HWND hCancel = ::GetDlgItem(dlg.m_hWnd, IDCANCEL);

    std::vector<HWND> focus;
    bool held = kel_test::RunHoldingForeground(dlg.m_hWnd, [&] {
        focus.clear();
        dlg.GotoDlgCtrl(CWnd::FromHandle(hEdit));
        focus.push_back(::GetFocus());
        dlg.NextDlgCtrl();
        focus.push_back(::GetFocus());
        dlg.PrevDlgCtrl();
        focus.push_back(::GetFocus());
        // Tab reaches the dialog keys only through pre-translation in the message pump.
        ::PostMessageA(hEdit, WM_KEYDOWN, VK_TAB, 1);
        kel_test::PumpPending();
        focus.push_back(::GetFocus());
        ::PostMessageA(hOk, WM_KEYDOWN, VK_TAB, 1);
        kel_test::PumpPending();
        focus.push_back(::GetFocus());
    });
    ASSERT_TRUE(held) << "the window lost the foreground";
    std::vector<HWND> expected = {hEdit, hOk, hEdit, hOk, hCancel};
    EXPECT_EQ(expected, focus);
    dlg.DestroyWindow();
}
