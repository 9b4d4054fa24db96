// Number fields in place over a list cell: the number reaches the list's owner as the rules
// shaped it, and an owner that destroys the edit at once leaves nothing behind.
#include "numericprobe.h"

#include <behaviors.h>

using namespace kel_ve_test;

namespace
{
using Num = CKelValueEditEx::NumericBehavior;
const int kListId = 500;
const int kEditId = 7;

// An in-place number field that counts its destructions.
class CCountedNumericEdit : public CKelValueNumericEdit
{
public:
    CCountedNumericEdit(int* pDeleted) : CKelValueNumericEdit(3, 2), m_pDeleted(pDeleted) { DoInPlace(2, 1); }
    ~CCountedNumericEdit() override { ++*m_pDeleted; }

private:
    int* m_pDeleted;
};

struct NumericInPlaceTest : ::testing::Test
{
    CRecordingFrame frame;
    HWND hList = nullptr;
    int deleted = 0;

    void SetUp() override
    {
        ASSERT_TRUE(frame.CreateFrame("number field in place"));
        hList = ::CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | WS_BORDER | LVS_REPORT, 10, 10, 380, 180,
                                  frame.m_hWnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kListId)), nullptr, nullptr);
        ASSERT_NE(nullptr, hList);
        kel_test::PumpPending();
        frame.notifies.clear();
    }
    void TearDown() override
    {
        frame.DestroyWindow();
        kel_test::PumpPending();
    }
    CCountedNumericEdit* OpenEdit()
    {
        CCountedNumericEdit* pEdit = new CCountedNumericEdit(&deleted);
        if (!pEdit->Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, CRect(180, 40, 360, 62),
                           CWnd::FromHandle(hList), kEditId))
            return nullptr;
        return pEdit;
    }
    // The owner destroys the edit while it is told of the end.
    void DestroyOnEnd(HWND hEdit)
    {
        frame.context = hEdit;
        frame.onEndLabelEdit = [](CRecordingFrame* pFrame, const NotifySeen&) {
            ::DestroyWindow(static_cast<HWND>(pFrame->context));
        };
    }
};
}

TEST_F(NumericInPlaceTest, ReturnDeliversTheNumberAsTheRulesShapedIt)
{
    CCountedNumericEdit* pEdit = OpenEdit();
    ASSERT_NE(nullptr, pEdit);
    HWND hEdit = pEdit->m_hWnd;
    ASSERT_EQ(hEdit, ::GetFocus());
    Type(*pEdit, "12a34.567");
    EXPECT_STREQ("123.56", pEdit->GetText());
    PostKeyDown(hEdit, VK_RETURN);
    kel_test::PumpPending();

    std::vector<NotifySeen> ends = frame.EndLabelEdits();
    ASSERT_EQ(1u, ends.size());
    EXPECT_EQ("123.56", ends[0].text);
    EXPECT_EQ(2, ends[0].iItem);
    EXPECT_EQ(1, ends[0].iSubItem);
    EXPECT_FALSE(::IsWindow(hEdit));
    EXPECT_EQ(1, deleted);
}

TEST_F(NumericInPlaceTest, EscapeDeliversNullText)
{
    CCountedNumericEdit* pEdit = OpenEdit();
    ASSERT_NE(nullptr, pEdit);
    HWND hEdit = pEdit->m_hWnd;
    Type(*pEdit, "42");
    PostKeyDown(hEdit, VK_ESCAPE);
    kel_test::PumpPending();
    std::vector<NotifySeen> ends = frame.EndLabelEdits();
    ASSERT_EQ(1u, ends.size());
    EXPECT_TRUE(ends[0].textIsNull);
    EXPECT_FALSE(::IsWindow(hEdit));
    EXPECT_EQ(1, deleted);
}

TEST_F(NumericInPlaceTest, OwnerThatDestroysTheEditOnReturnLeavesNothingBehind)
{
    CCountedNumericEdit* pEdit = OpenEdit();
    ASSERT_NE(nullptr, pEdit);
    HWND hEdit = pEdit->m_hWnd;
    DestroyOnEnd(hEdit);
    Type(*pEdit, "7.5");
    PostKeyDown(hEdit, VK_RETURN);
    kel_test::PumpPending();
    ASSERT_EQ(1u, frame.EndLabelEdits().size());
    EXPECT_EQ("7.5", frame.EndLabelEdits()[0].text);
    EXPECT_FALSE(::IsWindow(hEdit));
    EXPECT_EQ(1, deleted);
}

TEST_F(NumericInPlaceTest, OwnerThatDestroysTheEditOnFocusLossSkipsTheRangeCheck)
{
    CCountedNumericEdit* pEdit = OpenEdit();
    ASSERT_NE(nullptr, pEdit);
    HWND hEdit = pEdit->m_hWnd;
    pEdit->SetRange(10.0, 20.0);
    DestroyOnEnd(hEdit);
    Type(*pEdit, "5");
    kel_test::BoxAnswerer answerer(BoxCaption().c_str(), IDOK, 600);
    frame.SetFocus();
    kel_test::PumpFor(1000);
    EXPECT_FALSE(answerer.Wait().found);   // the edit was gone before it could check
    ASSERT_EQ(1u, frame.EndLabelEdits().size());
    EXPECT_EQ("5", frame.EndLabelEdits()[0].text);
    EXPECT_FALSE(::IsWindow(hEdit));
    EXPECT_EQ(1, deleted);
}
