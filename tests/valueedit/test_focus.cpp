// Focus of a value field: the first click selects all, Return outside in-place mode moves the
// focus before any default action.
#include "digitsfield.h"
#include "valueeditfixture.h"

#include "dlgtemplate.h"

#include <algorithm>

using namespace kel_ve_test;

namespace
{
// Logs the keys that reach the stock part of the field.
class CKeyLogField : public CDigitsField
{
public:
    std::vector<UINT> chars;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message == WM_CHAR)
            chars.push_back(static_cast<UINT>(wParam));
        return CDigitsField::WindowProc(message, wParam, lParam);
    }
};

struct FocusTest : ::testing::Test
{
    CRecordingFrame frame;
    CKeyLogField field;
    CEdit other;
    void SetUp() override
    {
        ASSERT_TRUE(frame.CreateFrame());
        ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, CRect(10, 10, 210, 34), &frame, 100));
        ASSERT_TRUE(other.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 50, 210, 74), &frame, 101));
        field.SetWindowText("123456789");
        other.SetFocus();
        kel_test::PumpPending();
    }
    void TearDown() override
    {
        frame.DestroyWindow();
        kel_test::PumpPending();
    }
    void Click(CPoint pt)
    {
        field.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(pt.x, pt.y));
        field.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(pt.x, pt.y));
        kel_test::PumpPending();
    }
};
}

TEST_F(FocusTest, FirstClickSelectsAllAndSecondClickSetsTheCaret)
{
    CPoint pt = field.PosFromChar(4);
    pt.y += 3;
    Click(pt);
    ASSERT_EQ(field.m_hWnd, ::GetFocus());
    EXPECT_EQ(std::make_pair(0, 9), Selection(field));

    Click(pt);
    std::pair<int, int> sel = Selection(field);
    EXPECT_EQ(sel.first, sel.second);   // a caret, no selection
    EXPECT_EQ(4, sel.first);
}

TEST_F(FocusTest, TakingTheFocusSelectsAllAndTheParentHearsOfIt)
{
    field.SetSel(3, 3);
    frame.commandCodes.clear();
    field.SetFocus();
    kel_test::PumpPending();
    EXPECT_EQ(std::make_pair(0, 9), Selection(field));
    EXPECT_EQ(1, std::count(frame.commandCodes.begin(), frame.commandCodes.end(), static_cast<UINT>(EN_SETFOCUS)));
}

TEST_F(FocusTest, ReturnWithoutDefaultButtonMovesTheFocusToTheParentAndMarksTheText)
{
    field.SetFocus();
    field.SetModify(FALSE);
    field.chars.clear();
    PostKeyDown(field.m_hWnd, VK_RETURN);
    kel_test::PumpPending();
    EXPECT_EQ(frame.m_hWnd, ::GetFocus());
    EXPECT_TRUE(field.GetModify());
    EXPECT_TRUE(field.keyDowns.empty());   // the key never reached the field
    EXPECT_TRUE(field.chars.empty());
}

TEST_F(FocusTest, EscapeOutsideInPlaceModeIsLeftToTheField)
{
    field.SetFocus();
    field.keyDowns.clear();
    PostKeyDown(field.m_hWnd, VK_ESCAPE);
    kel_test::PumpPending();
    EXPECT_EQ(field.m_hWnd, ::GetFocus());
    EXPECT_EQ(std::vector<UINT>{VK_ESCAPE}, field.keyDowns);
    EXPECT_FALSE(field.IsCancelled());
}

namespace
{
const int kFieldId = 100;

// A dialog with a field and a default OK button that counts its OK commands.
class CCountingDialog : public CDialog
{
public:
    int oks = 0;
    void OnOK() override { ++oks; }
    void OnCancel() override {}
};
}

TEST(ValueEditReturn, ReturnMovesTheFocusToTheDefaultButtonAndTheNextReturnPressesIt)
{
    kel_test::DlgTemplateBuilder tpl("return test", DS_SETFONT | WS_POPUP | WS_CAPTION | WS_VISIBLE, 20, 20, 200, 80);
    tpl.AddEdit(kFieldId, 10, 10, 120, 14);
    tpl.AddButton("OK", IDOK, BS_DEFPUSHBUTTON, 10, 40, 50, 14);
    tpl.AddButton("Other", 102, BS_PUSHBUTTON, 70, 40, 50, 14);
    CCountingDialog dlg;
    ASSERT_TRUE(dlg.CreateIndirect(tpl.Get()));
    CKeyLogField field;
    ASSERT_TRUE(field.SubclassDlgItem(kFieldId, &dlg));
    dlg.SetForegroundWindow();
    dlg.SetActiveWindow();
    field.SetFocus();
    kel_test::PumpPending();
    ASSERT_EQ(field.m_hWnd, ::GetFocus());
    field.SetModify(FALSE);

    PostKeyDown(field.m_hWnd, VK_RETURN);
    kel_test::PumpPending();
    HWND hOk = ::GetDlgItem(dlg.m_hWnd, IDOK);
    EXPECT_EQ(hOk, ::GetFocus());
    EXPECT_EQ(0, dlg.oks);   // swallowed: the focus moved, nothing was pressed
    EXPECT_TRUE(field.GetModify());
    EXPECT_TRUE(field.chars.empty());

    PostKeyDown(hOk, VK_RETURN);
    kel_test::PumpPending();
    EXPECT_EQ(1, dlg.oks);
    field.UnsubclassWindow();
    dlg.DestroyWindow();
    kel_test::PumpPending();
}

TEST(ValueEditClick, FirstClickSelectsAllUnderAParentThatReflectsNothing)
{
    // Under a parent of the framework the reflected EN_SETFOCUS selects all as well; a plain
    // window parent reflects nothing, so here the click handler alone decides.
    CRecordingFrame frame;
    ASSERT_TRUE(frame.CreateFrame());
    HWND hPlain = ::CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_VISIBLE, 0, 0, 300, 100, frame.m_hWnd, nullptr,
                                    nullptr, nullptr);
    ASSERT_NE(nullptr, hPlain);
    CKelValueEditEx field;
    ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, CRect(10, 10, 210, 34),
                             CWnd::FromHandle(hPlain), 100));
    field.SetWindowText("123456789");
    frame.SetFocus();
    kel_test::PumpPending();

    CPoint pt = field.PosFromChar(4);
    pt.y += 3;
    field.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(pt.x, pt.y));
    field.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(pt.x, pt.y));
    kel_test::PumpPending();
    ASSERT_EQ(field.m_hWnd, ::GetFocus());
    EXPECT_EQ(std::make_pair(0, 9), Selection(field));

    field.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(pt.x, pt.y));
    field.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(pt.x, pt.y));
    EXPECT_EQ(std::make_pair(4, 4), Selection(field));
    field.DestroyWindow();
    frame.DestroyWindow();
}
