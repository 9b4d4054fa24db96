// The default hooks of CKelValueEditEx::Behavior, reached through a field that redirects its
// messages to them.
#include "digitsfield.h"
#include "valueeditfixture.h"

using namespace kel_ve_test;

namespace
{
// Exposes the veto hook and lets a test veto characters at the control.
class CVetoField : public CDigitsField
{
public:
    char vetoed = 0;
    bool ShouldEnter(char c) const override { return c != vetoed; }
    bool AskBehavior(char c) const { return _ShouldEnter(c); }
    int lengthQueries = 0;

protected:
    // Hands the length query on through the behavior's default hook.
    afx_msg LRESULT OnGetTextLength(WPARAM, LPARAM)
    {
        ++lengthQueries;
        return _Default();
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CVetoField, CDigitsField)
    ON_MESSAGE(WM_GETTEXTLENGTH, &CVetoField::OnGetTextLength)
END_MESSAGE_MAP()

struct BehaviorTest : ::testing::Test
{
    CRecordingFrame frame;
    void SetUp() override { ASSERT_TRUE(frame.CreateFrame()); }
    void TearDown() override
    {
        frame.DestroyWindow();
        kel_test::PumpPending();
    }
};
}

TEST_F(BehaviorTest, CharactersGoToTheStockEditOutsideInPlaceMode)
{
    CDigitsField field;
    ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 10, 200, 34), &frame, 1));
    field.SetFocus();
    for (char c : std::string("42"))
        field.SendMessage(WM_CHAR, static_cast<WPARAM>(c), 1);
    field.SendMessage(WM_CHAR, VK_RETURN, 1);   // not in place: no focus move
    EXPECT_STREQ("42", field.GetText());
    EXPECT_EQ(field.m_hWnd, ::GetFocus());
}

TEST_F(BehaviorTest, ShouldEnterHookAsksTheControl)
{
    CVetoField field;
    ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 10, 200, 34), &frame, 1));
    field.vetoed = '7';
    EXPECT_FALSE(field.AskBehavior('7'));
    EXPECT_TRUE(field.AskBehavior('8'));
}

TEST_F(BehaviorTest, DefaultHookHandsTheCurrentMessageToTheStockEdit)
{
    CVetoField field;
    ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 10, 200, 34), &frame, 1));
    field.SetWindowText("123");
    // The hook hands the message being handled to the stock edit, which answers the length.
    field.lengthQueries = 0;
    EXPECT_EQ(3, field.SendMessage(WM_GETTEXTLENGTH));
    EXPECT_EQ(1, field.lengthQueries);
}

TEST_F(BehaviorTest, InPlaceEscapeThroughTheBehaviorCancelsAndKillFocusReports)
{
    HWND hList = ::CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | LVS_REPORT, 10, 10, 300, 150,
                                   frame.m_hWnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(77)), nullptr, nullptr);
    ASSERT_NE(nullptr, hList);
    CDigitsField* pField = new CDigitsField;   // owns itself once in place
    pField->DoInPlace(2, 4);
    ASSERT_TRUE(pField->Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 30, 200, 52), CWnd::FromHandle(hList), 3));
    HWND hField = pField->m_hWnd;
    ASSERT_EQ(hField, ::GetFocus());
    pField->SetWindowText("12");
    PostKeyDown(hField, VK_ESCAPE);
    kel_test::PumpPending();
    std::vector<NotifySeen> ends = frame.EndLabelEdits();
    ASSERT_EQ(1u, ends.size());
    EXPECT_TRUE(ends[0].textIsNull);
    EXPECT_EQ(2, ends[0].iItem);
    EXPECT_EQ(4, ends[0].iSubItem);
    EXPECT_EQ(hList, ::GetFocus());
    EXPECT_FALSE(::IsWindow(hField));
}

TEST_F(BehaviorTest, InPlaceReturnThroughTheBehaviorReportsTheRuledText)
{
    HWND hList = ::CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | LVS_REPORT, 10, 10, 300, 150,
                                   frame.m_hWnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(77)), nullptr, nullptr);
    ASSERT_NE(nullptr, hList);
    CDigitsField* pField = new CDigitsField;
    pField->DoInPlace(0, 1);
    ASSERT_TRUE(pField->Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 30, 200, 52), CWnd::FromHandle(hList), 3));
    HWND hField = pField->m_hWnd;
    pField->SetWindowText("1x2y3");   // the rules make it "123"
    PostKeyDown(hField, VK_RETURN);
    kel_test::PumpPending();
    std::vector<NotifySeen> ends = frame.EndLabelEdits();
    ASSERT_EQ(1u, ends.size());
    EXPECT_FALSE(ends[0].textIsNull);
    EXPECT_EQ("123", ends[0].text);
    EXPECT_FALSE(::IsWindow(hField));
}

TEST_F(BehaviorTest, PlainFieldClearTakesTheStockDeleteKey)
{
    CKelValueEditEx field;
    ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 10, 200, 34), &frame, 1));
    field.SetWindowText("abcdef");
    field.SetSel(2, 4);
    field.SendMessage(WM_CLEAR);
    EXPECT_STREQ("abef", field.GetText());
    field.SetSel(1, 1);
    field.SendMessage(WM_CLEAR);
    EXPECT_STREQ("abef", field.GetText());
}
