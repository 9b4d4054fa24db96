// In-place mode: an edit over a list cell that reports to the list's parent with
// LVN_ENDLABELEDITA, cancels on Escape, and deletes itself once its window is gone.
#include "valueeditfixture.h"

using namespace kel_ve_test;

namespace
{
const int kListId = 500;
const int kEditId = 7;

// An in-place edit that counts its destructions.
class CCountedEdit : public CKelValueEditEx
{
public:
    CCountedEdit(int item, int subItem, int* pDeleted) : m_pDeleted(pDeleted) { DoInPlace(item, subItem); }
    explicit CCountedEdit(int* pDeleted) : m_pDeleted(pDeleted) {}
    ~CCountedEdit() override { ++*m_pDeleted; }

private:
    int* m_pDeleted;
};

struct InPlaceTest : ::testing::Test
{
    CRecordingFrame frame;
    HWND hList = nullptr;
    HFONT hListFont = nullptr;
    int deleted = 0;

    void SetUp() override
    {
        ASSERT_TRUE(frame.CreateFrame());
        hList = ::CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | WS_BORDER | LVS_REPORT, 10, 10, 380, 180,
                                  frame.m_hWnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kListId)), nullptr, nullptr);
        ASSERT_NE(nullptr, hList);
        hListFont = ::CreateFontA(-15, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Tahoma");
        ::SendMessageA(hList, WM_SETFONT, reinterpret_cast<WPARAM>(hListFont), FALSE);
        LVCOLUMNA col = {};
        col.mask = LVCF_TEXT | LVCF_WIDTH;
        col.cx = 180;
        col.pszText = const_cast<char*>("Name");
        ::SendMessageA(hList, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&col));
        col.pszText = const_cast<char*>("Length");
        ::SendMessageA(hList, LVM_INSERTCOLUMNA, 1, reinterpret_cast<LPARAM>(&col));
        kel_test::PumpPending();
        frame.notifies.clear();
    }
    void TearDown() override
    {
        frame.DestroyWindow();
        kel_test::PumpPending();
        ::DeleteObject(hListFont);
    }
    // Opens an in-place edit over row 3, column 1 of the list, as a list owner would.
    CCountedEdit* OpenEdit(const char* text)
    {
        CCountedEdit* pEdit = new CCountedEdit(3, 1, &deleted);
        if (!pEdit->Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, CRect(180, 40, 360, 62),
                           CWnd::FromHandle(hList), kEditId))
            return nullptr;
        pEdit->SetWindowText(text);
        return pEdit;
    }
};
}

TEST_F(InPlaceTest, CreationTakesTheListsFontAndTheFocus)
{
    CCountedEdit* pEdit = OpenEdit("12.5");
    ASSERT_NE(nullptr, pEdit);
    HWND hEdit = pEdit->m_hWnd;
    EXPECT_EQ(hEdit, ::GetFocus());
    EXPECT_EQ(reinterpret_cast<LRESULT>(hListFont), ::SendMessageA(hEdit, WM_GETFONT, 0, 0));
    EXPECT_TRUE(frame.EndLabelEdits().empty());   // nothing is reported while the edit is open
    ::DestroyWindow(hEdit);
}

TEST_F(InPlaceTest, EscapeDeliversNullTextToTheGrandparent)
{
    CCountedEdit* pEdit = OpenEdit("12.5");
    ASSERT_NE(nullptr, pEdit);
    HWND hEdit = pEdit->m_hWnd;
    PostKeyDown(hEdit, VK_ESCAPE);
    kel_test::PumpPending();

    ASSERT_FALSE(frame.notifies.empty());
    // The end of the edit is the first thing the list's owner hears, and it hears it once.
    EXPECT_EQ(static_cast<UINT>(LVN_ENDLABELEDITA), frame.notifies[0].code);
    std::vector<NotifySeen> ends = frame.EndLabelEdits();
    ASSERT_EQ(1u, ends.size());
    const NotifySeen& seen = ends[0];
    EXPECT_TRUE(seen.textIsNull);
    EXPECT_EQ(4, seen.cchTextMax);   // the length of the text, even though none is passed
    EXPECT_EQ(static_cast<WPARAM>(kListId), seen.wParam);
    EXPECT_EQ(hList, seen.hwndFrom);
    EXPECT_EQ(static_cast<UINT_PTR>(kEditId), seen.idFrom);
    EXPECT_EQ(0u, seen.mask);
    EXPECT_EQ(3, seen.iItem);
    EXPECT_EQ(1, seen.iSubItem);
    EXPECT_EQ(0, seen.lParam);
    // The focus went to the list, and the edit closed itself.
    EXPECT_EQ(hList, ::GetFocus());
    EXPECT_FALSE(::IsWindow(hEdit));
    EXPECT_EQ(1, deleted);
}

TEST_F(InPlaceTest, ReturnDeliversTheText)
{
    CCountedEdit* pEdit = OpenEdit("");
    ASSERT_NE(nullptr, pEdit);
    HWND hEdit = pEdit->m_hWnd;
    kel_test::PostChars(hEdit, "2.75");
    PostKeyDown(hEdit, VK_RETURN);
    kel_test::PumpPending();

    std::vector<NotifySeen> ends = frame.EndLabelEdits();
    ASSERT_EQ(1u, ends.size());
    EXPECT_FALSE(ends[0].textIsNull);
    EXPECT_EQ("2.75", ends[0].text);
    EXPECT_EQ(4, ends[0].cchTextMax);
    EXPECT_EQ(3, ends[0].iItem);
    EXPECT_EQ(1, ends[0].iSubItem);
    EXPECT_FALSE(::IsWindow(hEdit));
    EXPECT_EQ(1, deleted);
}

TEST_F(InPlaceTest, FocusLossWithoutEscapeDeliversTheTextAlsoWhenEmpty)
{
    CCountedEdit* pEdit = OpenEdit("");
    ASSERT_NE(nullptr, pEdit);
    HWND hEdit = pEdit->m_hWnd;
    frame.SetFocus();   // the user clicked elsewhere
    kel_test::PumpPending();

    std::vector<NotifySeen> ends = frame.EndLabelEdits();
    ASSERT_EQ(1u, ends.size());
    EXPECT_FALSE(ends[0].textIsNull);
    EXPECT_EQ("", ends[0].text);
    EXPECT_EQ(0, ends[0].cchTextMax);
    EXPECT_FALSE(::IsWindow(hEdit));
    EXPECT_EQ(1, deleted);
}

TEST_F(InPlaceTest, EditDeletesItselfOnceAndNotAgainWithItsParents)
{
    CCountedEdit* pEdit = OpenEdit("1");
    ASSERT_NE(nullptr, pEdit);
    HWND hEdit = pEdit->m_hWnd;
    EXPECT_EQ(0, deleted);
    ::DestroyWindow(hEdit);
    EXPECT_EQ(1, deleted);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(hEdit));
    frame.DestroyWindow();
    kel_test::PumpPending();
    EXPECT_EQ(1, deleted);
}

TEST_F(InPlaceTest, EditDestroyedWithItsListDeletesItself)
{
    CCountedEdit* pEdit = OpenEdit("1");
    ASSERT_NE(nullptr, pEdit);
    ::DestroyWindow(hList);
    kel_test::PumpPending();
    EXPECT_EQ(1, deleted);
}

TEST_F(InPlaceTest, OwnerThatDestroysTheEditWhileNotifiedLeavesNothingBehind)
{
    CCountedEdit* pEdit = OpenEdit("9");
    ASSERT_NE(nullptr, pEdit);
    HWND hEdit = pEdit->m_hWnd;
    frame.context = hEdit;
    frame.onEndLabelEdit = [](CRecordingFrame* pFrame, const NotifySeen&) {
        ::DestroyWindow(static_cast<HWND>(pFrame->context));
    };
    frame.SetFocus();
    kel_test::PumpPending();
    EXPECT_EQ(1u, frame.EndLabelEdits().size());
    EXPECT_FALSE(::IsWindow(hEdit));
    EXPECT_EQ(1, deleted);
}

TEST_F(InPlaceTest, FieldNotInPlaceIsNotDeletedByItsWindow)
{
    CCountedEdit* pEdit = new CCountedEdit(&deleted);
    ASSERT_TRUE(pEdit->Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 200, 200, 224), &frame, 8));
    pEdit->SetFocus();
    frame.SetFocus();   // no notification outside in-place mode
    kel_test::PumpPending();
    EXPECT_TRUE(frame.EndLabelEdits().empty());
    pEdit->DestroyWindow();
    kel_test::PumpPending();
    EXPECT_EQ(0, deleted);
    delete pEdit;
    EXPECT_EQ(1, deleted);
}

TEST_F(InPlaceTest, DoInPlaceTurnsAFieldIntoAnInPlaceEdit)
{
    CCountedEdit* pEdit = new CCountedEdit(&deleted);
    pEdit->DoInPlace(5, 0);
    ASSERT_TRUE(pEdit->Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(0, 20, 170, 42), CWnd::FromHandle(hList), 9));
    EXPECT_EQ(pEdit->m_hWnd, ::GetFocus());   // Initialize ran at creation
    PostKeyDown(pEdit->m_hWnd, VK_ESCAPE);
    kel_test::PumpPending();
    std::vector<NotifySeen> ends = frame.EndLabelEdits();
    ASSERT_EQ(1u, ends.size());
    EXPECT_TRUE(ends[0].textIsNull);
    EXPECT_EQ(5, ends[0].iItem);
    EXPECT_EQ(0, ends[0].iSubItem);
    EXPECT_EQ(1, deleted);
}
