// Property sheets and pages: modal through the framework's loop, modeless, pages from
// templates built in memory and from the program's resources.
#include <afxwin.h>
#include <gtest/gtest.h>

#include "dlgtemplate.h"
#include "test_framework_res.h"
#include "testsupport.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace
{
const WORD kPageEditId = 300;
const UINT WM_APP_RUN_STEP = WM_APP + 11;
const UINT_PTR kWatchdogTimer = 3;
const int kWatchdogResult = -2;   // what a sheet that nobody ended returns

// A page template as pages are laid out: a child with a caption, a label and an edit.
kel_test::DlgTemplateBuilder MakePageTemplate(const char* title)
{
    kel_test::DlgTemplateBuilder b(title, DS_SETFONT | WS_CHILD | WS_CAPTION, 0, 0, 180, 80);
    b.AddItem(0x0082, "Value:", 0xFFFF, WS_CHILD | WS_VISIBLE | SS_LEFT, 7, 9, 40, 10);
    b.AddEdit(kPageEditId, 50, 7, 120, 14);
    return b;
}

// A page that logs what the sheet asks of it. A step given by the test runs once, from a
// message the page posts itself when it first becomes active, i.e. inside the sheet's loop.
class CLoggingPage : public CPropertyPage
{
public:
    CLoggingPage(const char* name, std::vector<std::string>* pLog) : m_name(name), m_pLog(pLog) {}
    CLoggingPage(UINT nIDTemplate, UINT nIDCaption, const char* name, std::vector<std::string>* pLog)
        : CPropertyPage(nIDTemplate, nIDCaption), m_name(name), m_pLog(pLog)
    {
    }

    std::function<void()> step;
    bool editThereAtInit = false;
    HWND hWndSeen = nullptr;
    int killRefusals = 0;    // how many PSN_KILLACTIVE to refuse before accepting
    int applyRefusals = 0;   // how many PSN_APPLY to refuse before accepting

    BOOL OnInitDialog() override
    {
        Log("OnInitDialog");
        hWndSeen = m_hWnd;
        editThereAtInit = ::GetDlgItem(m_hWnd, kPageEditId) != nullptr ||
                          ::GetDlgItem(m_hWnd, IDC_KELFW_TEST_PAGE_EDIT) != nullptr;
        return CPropertyPage::OnInitDialog();
    }
    BOOL OnSetActive() override
    {
        Log("OnSetActive");
        if (step && !m_stepPosted)
        {
            m_stepPosted = true;
            PostMessage(WM_APP_RUN_STEP);
        }
        return CPropertyPage::OnSetActive();
    }
    BOOL OnKillActive() override
    {
        if (killRefusals > 0)
        {
            --killRefusals;
            Log("OnKillActive:refused");
            return FALSE;
        }
        Log("OnKillActive");
        return CPropertyPage::OnKillActive();
    }
    BOOL OnApply() override
    {
        if (applyRefusals > 0)
        {
            --applyRefusals;
            Log("OnApply:refused");
            return FALSE;
        }
        Log("OnApply");
        return CPropertyPage::OnApply();
    }
    void OnOK() override
    {
        Log("OnOK");
        CPropertyPage::OnOK();
    }
    void OnReset() override
    {
        Log("OnReset");
        CPropertyPage::OnReset();
    }
    void OnCancel() override
    {
        Log("OnCancel");
        CPropertyPage::OnCancel();
    }

protected:
    afx_msg LRESULT OnRunStep(WPARAM, LPARAM)
    {
        step();
        return 0;
    }

public:
    // Lets the same page run another step when it next becomes active.
    void RearmStep() { m_stepPosted = false; }
    DECLARE_MESSAGE_MAP()

private:
    void Log(const char* what) { m_pLog->push_back(m_name + ":" + what); }
    std::string m_name;
    std::vector<std::string>* m_pLog;
    bool m_stepPosted = false;
};
BEGIN_MESSAGE_MAP(CLoggingPage, CPropertyPage)
    ON_MESSAGE(WM_APP_RUN_STEP, &CLoggingPage::OnRunStep)
END_MESSAGE_MAP()

// A sheet that ends itself with a distinctive result if the test's input never ends it.
class CGuardedSheet : public CPropertySheet
{
public:
    explicit CGuardedSheet(LPCTSTR pszCaption, CWnd* pParent = nullptr) : CPropertySheet(pszCaption, pParent) {}
    BOOL OnInitDialog() override
    {
        SetTimer(kWatchdogTimer, 5000);
        return CPropertySheet::OnInitDialog();
    }

protected:
    afx_msg void OnTimer(UINT_PTR nIDEvent)
    {
        if (nIDEvent != kWatchdogTimer)
            return;
        KillTimer(kWatchdogTimer);
        EndDialog(kWatchdogResult);
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CGuardedSheet, CPropertySheet)
    ON_WM_TIMER()
END_MESSAGE_MAP()

class CSheetOwner : public CWnd
{
public:
    bool CreateOwner()
    {
        return CreateEx(0, nullptr, "sheet owner", WS_POPUP | WS_CAPTION | WS_VISIBLE, 40, 40, 360, 260, nullptr,
                        nullptr) != FALSE;
    }
};

struct PropertySheetTest : ::testing::Test
{
    CSheetOwner owner;
    long windowsBefore = 0;
    std::vector<std::string> log;
    void SetUp() override
    {
        windowsBefore = AfxGetLiveCount(afxLiveWindows);
        ASSERT_TRUE(owner.CreateOwner());
        kel_test::PumpPending();
    }
    void TearDown() override
    {
        if (owner.m_hWnd != nullptr)
            owner.DestroyWindow();
        kel_test::PumpPending();
        EXPECT_EQ(windowsBefore, AfxGetLiveCount(afxLiveWindows));
    }
};

std::string TabText(CPropertySheet& sheet, int index)
{
    char text[64] = {};
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = sizeof(text);
    ::SendMessageA(sheet.GetTabControl()->GetSafeHwnd(), TCM_GETITEMA, static_cast<WPARAM>(index),
                   reinterpret_cast<LPARAM>(&item));
    return text;
}
}

TEST_F(PropertySheetTest, ModalSheetCreatesSecondPageOnActivationAndPressedOkAppliesBoth)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    kel_test::DlgTemplateBuilder tmplTwo = MakePageTemplate("Display");
    CLoggingPage one("one", &log), two("two", &log);
    one.ConstructIndirect(tmplOne.Get());
    two.ConstructIndirect(tmplTwo.Get());
    CGuardedSheet sheet("Drawing options", &owner);
    sheet.AddPage(&one);
    sheet.AddPage(&two);

    bool ownerEnabledWhileRunning = true;
    int activeAfterSwitch = -1;
    CPropertyPage* pActiveAfterSwitch = nullptr;
    one.step = [&] {
        ownerEnabledWhileRunning = owner.IsWindowEnabled() != FALSE;
        log.push_back("step:SetActivePage(1)");
        sheet.SetActivePage(1);
        activeAfterSwitch = sheet.GetActiveIndex();
        pActiveAfterSwitch = sheet.GetActivePage();
        log.push_back("step:press OK");
        ::PostMessageA(sheet.m_hWnd, PSM_PRESSBUTTON, PSBTN_OK, 0);
    };

    INT_PTR result = sheet.DoModal();

    EXPECT_EQ(IDOK, result);
    std::vector<std::string> expected = {
        "one:OnInitDialog", "one:OnSetActive",                       // the sheet opens on page one
        "step:SetActivePage(1)", "one:OnKillActive",                 // switching asks page one first,
        "two:OnInitDialog", "two:OnSetActive",                       // then creates page two
        "step:press OK", "two:OnKillActive",                         // OK checks the active page
        "one:OnApply", "one:OnOK", "two:OnApply", "two:OnOK"};       // and applies every created page
    EXPECT_EQ(expected, log);
    EXPECT_EQ(1, activeAfterSwitch);
    EXPECT_EQ(&two, pActiveAfterSwitch);
    EXPECT_TRUE(one.editThereAtInit);
    EXPECT_TRUE(two.editThereAtInit);
    EXPECT_FALSE(ownerEnabledWhileRunning);
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_EQ(nullptr, sheet.m_hWnd);
    EXPECT_EQ(nullptr, one.m_hWnd);
    EXPECT_EQ(nullptr, two.m_hWnd);
    EXPECT_FALSE(::IsWindow(one.hWndSeen));
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(two.hWndSeen));
}

TEST_F(PropertySheetTest, ModalSheetClickedOkButtonEndsWithIdOk)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    kel_test::DlgTemplateBuilder tmplTwo = MakePageTemplate("Display");
    CLoggingPage one("one", &log), two("two", &log);
    one.ConstructIndirect(tmplOne.Get());
    two.ConstructIndirect(tmplTwo.Get());
    CGuardedSheet sheet("Drawing options", &owner);
    sheet.AddPage(&one);
    sheet.AddPage(&two);
    one.step = [&] {
        // As a mouse click on the sheet's own OK button would.
        HWND hOk = ::GetDlgItem(sheet.m_hWnd, IDOK);
        ASSERT_NE(nullptr, hOk);
        ::PostMessageA(hOk, BM_CLICK, 0, 0);
    };

    EXPECT_EQ(IDOK, sheet.DoModal());
    // Only page one was ever created, so only it is applied.
    std::vector<std::string> expected = {"one:OnInitDialog", "one:OnSetActive", "one:OnKillActive", "one:OnApply",
                                         "one:OnOK"};
    EXPECT_EQ(expected, log);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST_F(PropertySheetTest, ModalSheetCancelResetsCreatedPagesAndEndsWithIdCancel)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    kel_test::DlgTemplateBuilder tmplTwo = MakePageTemplate("Display");
    CLoggingPage one("one", &log), two("two", &log);
    one.ConstructIndirect(tmplOne.Get());
    two.ConstructIndirect(tmplTwo.Get());
    CGuardedSheet sheet("Drawing options", &owner);
    sheet.AddPage(&one);
    sheet.AddPage(&two);
    one.step = [&] { sheet.PostMessage(PSM_PRESSBUTTON, PSBTN_CANCEL, 0); };

    EXPECT_EQ(IDCANCEL, sheet.DoModal());
    std::vector<std::string> expected = {"one:OnInitDialog", "one:OnSetActive", "one:OnReset", "one:OnCancel"};
    EXPECT_EQ(expected, log);
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_EQ(nullptr, one.m_hWnd);
}

TEST_F(PropertySheetTest, ModalSheetEscapeKeyOnPageEditCancelsThroughPreTranslation)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    CLoggingPage one("one", &log);
    one.ConstructIndirect(tmplOne.Get());
    CGuardedSheet sheet("Drawing options", &owner);
    sheet.AddPage(&one);
    one.step = [&] { ::PostMessageA(::GetDlgItem(one.m_hWnd, kPageEditId), WM_KEYDOWN, VK_ESCAPE, 1); };

    EXPECT_EQ(IDCANCEL, sheet.DoModal());
    std::vector<std::string> expected = {"one:OnInitDialog", "one:OnSetActive", "one:OnReset", "one:OnCancel"};
    EXPECT_EQ(expected, log);
}

TEST_F(PropertySheetTest, PagesFromResourcesTakeTheirTemplateAndCaption)
{
    CLoggingPage one(IDD_KELFW_TEST_PAGE_ONE, IDS_KELFW_TEST_PAGE_ONE, "one", &log);
    CLoggingPage two(IDD_KELFW_TEST_PAGE_TWO, 0, "two", &log);
    CGuardedSheet sheet("Layer properties");
    sheet.AddPage(&one);
    sheet.AddPage(&two);
    ASSERT_TRUE(sheet.Create(&owner));
    EXPECT_TRUE(one.editThereAtInit);
    EXPECT_EQ("Layers", TabText(sheet, 0));    // the caption id names the tab
    EXPECT_EQ("Display", TabText(sheet, 1));   // else the template's caption does
    CString text;
    one.GetDlgItem(IDC_KELFW_TEST_PAGE_EDIT)->GetWindowText(text);
    EXPECT_STREQ("", text);
    sheet.DestroyWindow();
    EXPECT_EQ(nullptr, one.m_hWnd);
}

TEST_F(PropertySheetTest, ModelessSheetCountsPagesAndFollowsActivePage)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    kel_test::DlgTemplateBuilder tmplTwo = MakePageTemplate("Display");
    CLoggingPage one("one", &log), two("two", &log);
    one.ConstructIndirect(tmplOne.Get());
    two.ConstructIndirect(tmplTwo.Get());
    CPropertySheet sheet("Print settings");
    sheet.AddPage(&one);
    sheet.AddPage(&two);
    EXPECT_EQ(2, sheet.GetPageCount());
    EXPECT_EQ(1, sheet.GetPageIndex(&two));

    ASSERT_TRUE(sheet.Create(&owner));
    HWND hSheet = sheet.m_hWnd;
    EXPECT_EQ(&sheet, CWnd::FromHandlePermanent(hSheet));
    EXPECT_EQ(owner.m_hWnd, ::GetWindow(hSheet, GW_OWNER));
    EXPECT_TRUE(owner.IsWindowEnabled());
    CString caption;
    sheet.GetWindowText(caption);
    EXPECT_NE(-1, caption.Find("Print settings"));
    EXPECT_EQ(2, sheet.GetPageCount());
    EXPECT_EQ(0, sheet.GetActiveIndex());
    EXPECT_EQ(&one, sheet.GetActivePage());
    EXPECT_NE(nullptr, one.m_hWnd);
    EXPECT_EQ(nullptr, two.m_hWnd);   // pages are created when first shown
    EXPECT_EQ(&sheet, one.GetParentSheet());

    EXPECT_TRUE(sheet.SetActivePage(&two));
    EXPECT_EQ(1, sheet.GetActiveIndex());
    EXPECT_EQ(&two, sheet.GetActivePage());
    ASSERT_NE(nullptr, two.m_hWnd);
    EXPECT_EQ(&two, CWnd::FromHandlePermanent(two.m_hWnd));
    std::vector<std::string> expected = {"one:OnInitDialog", "one:OnSetActive", "one:OnKillActive",
                                         "two:OnInitDialog", "two:OnSetActive"};
    EXPECT_EQ(expected, log);

    EXPECT_TRUE(sheet.DestroyWindow());
    EXPECT_FALSE(::IsWindow(hSheet));
    EXPECT_EQ(nullptr, sheet.m_hWnd);
    EXPECT_EQ(nullptr, one.m_hWnd);
    EXPECT_EQ(nullptr, two.m_hWnd);
}

TEST_F(PropertySheetTest, PageAddedToLiveSheetGetsATabAndRemovedPageLosesIt)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    kel_test::DlgTemplateBuilder tmplTwo = MakePageTemplate("Display");
    CLoggingPage one("one", &log), two("two", &log);
    one.ConstructIndirect(tmplOne.Get());
    two.ConstructIndirect(tmplTwo.Get());
    CPropertySheet sheet("Print settings");
    sheet.AddPage(&one);
    ASSERT_TRUE(sheet.Create(&owner));
    HWND hTab = sheet.GetTabControl()->GetSafeHwnd();
    EXPECT_EQ(1, ::SendMessageA(hTab, TCM_GETITEMCOUNT, 0, 0));

    sheet.AddPage(&two);
    EXPECT_EQ(2, sheet.GetPageCount());
    EXPECT_EQ(2, ::SendMessageA(hTab, TCM_GETITEMCOUNT, 0, 0));
    EXPECT_EQ("Display", TabText(sheet, 1));
    EXPECT_TRUE(sheet.SetActivePage(1));
    EXPECT_EQ(&two, sheet.GetActivePage());

    sheet.RemovePage(&one);
    EXPECT_EQ(1, sheet.GetPageCount());
    EXPECT_EQ(1, ::SendMessageA(hTab, TCM_GETITEMCOUNT, 0, 0));
    EXPECT_EQ(nullptr, one.m_hWnd);   // the sheet destroyed the removed page's window
    EXPECT_EQ(&two, sheet.GetActivePage());
    sheet.DestroyWindow();
}

TEST_F(PropertySheetTest, PageRefusingToLoseActivationKeepsItsPlace)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    kel_test::DlgTemplateBuilder tmplTwo = MakePageTemplate("Display");
    CLoggingPage one("one", &log), two("two", &log);
    one.ConstructIndirect(tmplOne.Get());
    two.ConstructIndirect(tmplTwo.Get());
    CPropertySheet sheet("Print settings");
    sheet.AddPage(&one);
    sheet.AddPage(&two);
    ASSERT_TRUE(sheet.Create(&owner));
    one.killRefusals = 1;
    EXPECT_FALSE(sheet.SetActivePage(1));
    EXPECT_EQ(0, sheet.GetActiveIndex());
    EXPECT_EQ(nullptr, two.m_hWnd);
    EXPECT_TRUE(sheet.SetActivePage(1));
    EXPECT_EQ(1, sheet.GetActiveIndex());
    std::vector<std::string> expected = {"one:OnInitDialog", "one:OnSetActive", "one:OnKillActive:refused",
                                         "one:OnKillActive", "two:OnInitDialog", "two:OnSetActive"};
    EXPECT_EQ(expected, log);
    sheet.DestroyWindow();
}

TEST_F(PropertySheetTest, ModalSheetStaysOpenWhileAPageRefusesToApply)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    CLoggingPage one("one", &log);
    one.ConstructIndirect(tmplOne.Get());
    one.applyRefusals = 1;
    CGuardedSheet sheet("Drawing options", &owner);
    sheet.AddPage(&one);
    bool openAfterRefusal = false;
    one.step = [&] {
        sheet.PressButton(PSBTN_OK);   // refused: the sheet stays
        openAfterRefusal = ::SendMessageA(sheet.m_hWnd, PSM_GETCURRENTPAGEHWND, 0, 0) != 0;
        sheet.PostMessage(PSM_PRESSBUTTON, PSBTN_OK, 0);
    };
    EXPECT_EQ(IDOK, sheet.DoModal());
    EXPECT_TRUE(openAfterRefusal);
    std::vector<std::string> expected = {"one:OnInitDialog", "one:OnSetActive", "one:OnKillActive",
                                         "one:OnApply:refused", "one:OnKillActive", "one:OnApply", "one:OnOK"};
    EXPECT_EQ(expected, log);
}

TEST_F(PropertySheetTest, ModalSheetReturnKeyOnPageEditPressesOk)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    CLoggingPage one("one", &log);
    one.ConstructIndirect(tmplOne.Get());
    CGuardedSheet sheet("Drawing options", &owner);
    sheet.AddPage(&one);
    one.step = [&] { ::PostMessageA(::GetDlgItem(one.m_hWnd, kPageEditId), WM_KEYDOWN, VK_RETURN, 1); };
    EXPECT_EQ(IDOK, sheet.DoModal());
    std::vector<std::string> expected = {"one:OnInitDialog", "one:OnSetActive", "one:OnKillActive", "one:OnApply",
                                         "one:OnOK"};
    EXPECT_EQ(expected, log);
}

TEST_F(PropertySheetTest, SetModifiedEnablesApplyNowWhichAppliesWithoutClosing)
{
    const int kApplyNowId = 0x3021;   // the sheet's Apply button
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    CLoggingPage one("one", &log);
    one.ConstructIndirect(tmplOne.Get());
    CPropertySheet sheet("Print settings");
    sheet.AddPage(&one);
    ASSERT_TRUE(sheet.Create(&owner));
    HWND hApply = ::GetDlgItem(sheet.m_hWnd, kApplyNowId);
    ASSERT_NE(nullptr, hApply);
    EXPECT_FALSE(::IsWindowEnabled(hApply));
    one.SetModified(TRUE);
    EXPECT_TRUE(::IsWindowEnabled(hApply));
    one.SetModified(FALSE);
    EXPECT_FALSE(::IsWindowEnabled(hApply));
    one.SetModified(TRUE);

    log.clear();
    sheet.PressButton(PSBTN_APPLYNOW);
    // Windows and Wine differ in whether the page is activated again after applying; both
    // apply it once and keep the sheet open.
    EXPECT_EQ(1, std::count(log.begin(), log.end(), "one:OnApply"));
    EXPECT_EQ(1, std::count(log.begin(), log.end(), "one:OnOK"));
    EXPECT_FALSE(::IsWindowEnabled(hApply));
    EXPECT_NE(0, ::SendMessageA(sheet.m_hWnd, PSM_GETCURRENTPAGEHWND, 0, 0));
    sheet.DestroyWindow();
}

TEST_F(PropertySheetTest, SameSheetAndPagesRunModalTwice)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    CLoggingPage one("one", &log);
    one.ConstructIndirect(tmplOne.Get());
    CGuardedSheet sheet("Drawing options", &owner);
    sheet.AddPage(&one);
    one.step = [&] { sheet.PostMessage(PSM_PRESSBUTTON, PSBTN_CANCEL, 0); };
    EXPECT_EQ(IDCANCEL, sheet.DoModal());
    one.RearmStep();
    one.step = [&] { sheet.PostMessage(PSM_PRESSBUTTON, PSBTN_OK, 0); };
    EXPECT_EQ(IDOK, sheet.DoModal());
    std::vector<std::string> expected = {"one:OnInitDialog", "one:OnSetActive", "one:OnReset", "one:OnCancel",
                                         "one:OnInitDialog", "one:OnSetActive", "one:OnKillActive", "one:OnApply",
                                         "one:OnOK"};
    EXPECT_EQ(expected, log);
    EXPECT_EQ(nullptr, sheet.m_hWnd);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST_F(PropertySheetTest, ModalSheetEndsWhenDestroyedWithItsOwner)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    CLoggingPage one("one", &log);
    one.ConstructIndirect(tmplOne.Get());
    CGuardedSheet sheet("Drawing options", &owner);
    sheet.AddPage(&one);
    HWND hSheet = nullptr;
    one.step = [&] {
        hSheet = ::GetParent(one.m_hWnd);
        owner.DestroyWindow();   // owned windows go with their owner
    };
    EXPECT_EQ(-1, sheet.DoModal());
    EXPECT_FALSE(::IsWindow(hSheet));
    EXPECT_EQ(nullptr, sheet.m_hWnd);
    EXPECT_EQ(nullptr, one.m_hWnd);
}

TEST_F(PropertySheetTest, CaptionFromStringResourceAndSetTitle)
{
    kel_test::DlgTemplateBuilder tmplOne = MakePageTemplate("General");
    CLoggingPage one("one", &log);
    one.ConstructIndirect(tmplOne.Get());
    CPropertySheet sheet(IDS_KELFW_TEST_PAGE_TWO, &owner);
    sheet.AddPage(&one);
    ASSERT_TRUE(sheet.Create());
    CString caption;
    sheet.GetWindowText(caption);
    EXPECT_STREQ("Line styles", caption);
    sheet.SetTitle("Line style list");
    sheet.GetWindowText(caption);
    EXPECT_STREQ("Line style list", caption);
    sheet.DestroyWindow();
}
