// The edit row's activation cycle under real windows: activation, commit by Return, by focus
// loss and cancel by Escape, the caller's variable, the parent's notifications, range and
// partner checks with the host's message.
#include <gtest/gtest.h>

#include "dibsurface.h"
#include "editfixture.h"

#include <string>

using pttest::EditTest;
using Edit = CKelPropertyTreeItemEdit;

namespace
{
const unsigned kFocus = PTN_FOCUS_GAINED;
const unsigned kChanged = PTN_ITEM_CHANGED;
}

TEST_F(EditTest, ActivationLaysTheEditOverTheValueColumnAndFocusesIt)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemValue(CString("wall"));
    Activate(row);
    ASSERT_TRUE(::IsWindow(row->m_hWnd));
    EXPECT_EQ(tree.GetCtrlParent()->m_hWnd, ::GetParent(row->m_hWnd));
    EXPECT_EQ(static_cast<int>(row->GetCtrlID()), ::GetDlgCtrlID(row->m_hWnd));
    const DWORD style = static_cast<DWORD>(::GetWindowLongPtrA(row->m_hWnd, GWL_STYLE));
    EXPECT_TRUE(style & WS_CHILD);
    EXPECT_TRUE(style & ES_AUTOHSCROLL);
    CRect window, client;   // no frame and no border: the edit fills the value column
    ::GetWindowRect(row->m_hWnd, &window);
    ::GetClientRect(row->m_hWnd, &client);
    EXPECT_EQ(window.Width(), client.Width());
    {
        kel_test::DibSurface dib(client.Width(), client.Height(), RGB(0, 0, 255));
        ::SendMessageA(row->m_hWnd, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dib.DC().m_hDC), PRF_CLIENT);
        EXPECT_EQ(GetSysColor(COLOR_WINDOW), dib.Pixel(0, client.Height() / 2));
    }
    EXPECT_TRUE(::IsWindowVisible(row->m_hWnd));
    EXPECT_EQ(row->m_hWnd, ::GetFocus());
    CRect rc;
    ::GetWindowRect(row->m_hWnd, &rc);
    tree.GetCtrlParent()->ScreenToClient(&rc);
    EXPECT_EQ(CRect(row->GetAttributeRect()), rc);
    EXPECT_EQ("wall", WindowText(row->m_hWnd));
    DWORD start = 0, end = 0;
    ::SendMessageA(row->m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(0u, start);
    EXPECT_EQ(4u, end);
    EXPECT_EQ(reinterpret_cast<WPARAM>(CKelPropertyTree::GetNormalFont()->GetSafeHandle()),
              static_cast<WPARAM>(::SendMessageA(row->m_hWnd, WM_GETFONT, 0, 0)));
    EXPECT_TRUE(row->IsActivated());
    EXPECT_EQ(row, tree.GetItemLastActivated());
    EXPECT_EQ(0, ::SendMessageA(row->m_hWnd, EM_GETPASSWORDCHAR, 0, 0));
}

TEST_F(EditTest, SecondActivationReusesTheWindowAndResetsTheLastChar)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    Activate(row);
    HWND first = row->m_hWnd;
    Press(row->m_hWnd, VK_ESCAPE);
    EXPECT_EQ(static_cast<unsigned>(VK_ESCAPE), row->GetLastChar());
    EXPECT_FALSE(::IsWindowVisible(first));
    Activate(row);
    EXPECT_EQ(first, row->m_hWnd);
    EXPECT_EQ(0u, row->GetLastChar());
    EXPECT_TRUE(::IsWindowVisible(row->m_hWnd));
    EXPECT_EQ(0, row->IsCommitted());
}

TEST_F(EditTest, PasswordRowEditsBehindAsterisks)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetAsPassword(1);
    Activate(row);
    EXPECT_EQ('*', ::SendMessageA(row->m_hWnd, EM_GETPASSWORDCHAR, 0, 0));
}

TEST_F(EditTest, LimitTextAppliesToTextFormatsOnly)
{
    Edit* text = AddEdit(Edit::VALUE_FORMAT_TEXT);
    text->SetLimitText(3);
    Activate(text);
    Type(text->m_hWnd, "abcdef");
    EXPECT_EQ("abc", WindowText(text->m_hWnd));
    Press(text->m_hWnd, VK_ESCAPE);

    Edit* number = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    number->SetLimitText(3);
    Activate(number);
    Type(number->m_hWnd, "123456");
    EXPECT_EQ("123456", WindowText(number->m_hWnd));
}

TEST_F(EditTest, OnMoveFollowsTheAttributeRectAndRefreshTakesTheValue)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    Activate(row);
    row->OffsetItemRect(0, 20);
    row->OnMove();
    CRect rc;
    ::GetWindowRect(row->m_hWnd, &rc);
    tree.GetCtrlParent()->ScreenToClient(&rc);
    EXPECT_EQ(CRect(row->GetAttributeRect()), rc);
    row->SetItemValue(CString("refreshed"));
    EXPECT_EQ("", WindowText(row->m_hWnd));
    row->OnRefresh();
    EXPECT_EQ("refreshed", WindowText(row->m_hWnd));
}

TEST_F(EditTest, GetDlgCodeWantsAllKeys)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    Activate(row);
    const LRESULT code = ::SendMessageA(row->m_hWnd, WM_GETDLGCODE, 0, 0);
    EXPECT_TRUE(code & DLGC_WANTALLKEYS);
    EXPECT_TRUE(code & DLGC_WANTCHARS);   // the edit's own answer stays
}

TEST_F(EditTest, ReturnEscapeAndCtrlKeysAreTakenBeforeAnyDialog)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    Activate(row);
    MSG msg = {};
    msg.hwnd = row->m_hWnd;
    msg.message = WM_KEYDOWN;
    msg.wParam = 'A';
    msg.lParam = MAKELPARAM(1, ::MapVirtualKeyA('A', MAPVK_VK_TO_VSC));
    EXPECT_FALSE(row->PreTranslateMessage(&msg));
    BYTE keys[256] = {};
    ASSERT_TRUE(::GetKeyboardState(keys));
    BYTE saved[256];
    memcpy(saved, keys, sizeof(keys));
    keys[VK_CONTROL] = 0x80;
    ASSERT_TRUE(::SetKeyboardState(keys));
    EXPECT_TRUE(row->PreTranslateMessage(&msg));   // Ctrl+A belongs to the edit
    ::SetKeyboardState(saved);
    kel_test::PumpPending();
    msg.wParam = VK_ESCAPE;
    msg.lParam = MAKELPARAM(1, ::MapVirtualKeyA(VK_ESCAPE, MAPVK_VK_TO_VSC));
    EXPECT_TRUE(row->PreTranslateMessage(&msg));
    kel_test::PumpPending();   // the translated Escape ends the edit
    EXPECT_FALSE(::IsWindowVisible(row->m_hWnd));
    EXPECT_TRUE(row->IsCommitted());
}

// ---- the variable and the notifications ----

TEST_F(EditTest, ReturnCommitsDoubleOnlyAtCommitAndNotifiesOnce)
{
    double width = 2.0;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
    row->SetItemDataExchange(&width);
    row->UpdateData();
    Activate(row);
    ClearCodes();
    Type(row->m_hWnd, "3,5");
    EXPECT_EQ("3,5", WindowText(row->m_hWnd));
    EXPECT_EQ(2.0, width);
    EXPECT_EQ(CString("2.000000"), row->GetItemText(1));
    EXPECT_EQ(CString("3,5"), row->GetItemText(0));
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_EQ(3.5, width);
    EXPECT_EQ(CString("3.500000"), row->GetItemText(1));
    // Hiding the focused edit hands the focus to the list before the change goes out.
    ExpectCodes({kFocus, kChanged}, "Return commit");
    ASSERT_EQ(2u, parent.items.size());
    EXPECT_EQ(row, parent.items[1]);
    EXPECT_FALSE(::IsWindowVisible(row->m_hWnd));
    EXPECT_EQ(tree.GetCtrlParent()->m_hWnd, ::GetFocus());
    EXPECT_FALSE(row->IsActivated());
    EXPECT_EQ(nullptr, tree.GetItemLastActivated());
    // A second commit of the same activation does nothing.
    width = -1;
    row->CommitChanges(1);
    EXPECT_EQ(-1.0, width);
    EXPECT_EQ(1, CountCode(kChanged));
}

TEST_F(EditTest, FocusLossCommitsIntInsideTheFocusChange)
{
    int count = 4;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    row->SetItemDataExchange(&count);
    row->UpdateData();
    Activate(row);
    ClearCodes();
    Type(row->m_hWnd, "12");
    EXPECT_EQ(4, count);
    FocusList();
    EXPECT_EQ(12, count);
    EXPECT_EQ(CString("12"), row->GetItemText(1));
    // The commit runs while the edit loses the focus, before the list hears it gained it.
    ExpectCodes({kChanged, kFocus}, "focus loss commit");
    EXPECT_FALSE(::IsWindowVisible(row->m_hWnd));
    EXPECT_TRUE(row->IsCommitted());
}

TEST_F(EditTest, EscapeLeavesCStringAndValueAndSendsNoChange)
{
    CString name = "door";
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemDataExchange(&name);
    row->UpdateData();
    Activate(row);
    ClearCodes();
    Type(row->m_hWnd, "window");
    Press(row->m_hWnd, VK_ESCAPE);
    EXPECT_EQ(CString("door"), name);
    EXPECT_EQ(CString("door"), row->GetItemText(1));
    ExpectCodes({kFocus}, "Escape");
    EXPECT_FALSE(::IsWindowVisible(row->m_hWnd));
    EXPECT_TRUE(row->IsCommitted());
    // The focus loss that follows the Escape commits nothing.
    parent.SetFocus();
    kel_test::PumpPending();
    EXPECT_EQ(CString("door"), name);
    EXPECT_EQ(0, CountCode(kChanged));
}

TEST_F(EditTest, StdStringChangesAtReturnOnly)
{
    std::string text = "alpha";
    Edit* row = AddEdit(Edit::VALUE_FORMAT_STD_STRING);
    row->SetItemDataExchange(&text);
    row->UpdateData();
    Activate(row);
    ClearCodes();
    Type(row->m_hWnd, "beta");
    EXPECT_EQ("alpha", text);
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_EQ("beta", text);
    ExpectCodes({kFocus, kChanged}, "Return commit of a std::string");
}

TEST_F(EditTest, EqualTextCommitsWithoutNotification)
{
    CString name = "same";
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemDataExchange(&name);
    row->UpdateData();
    Activate(row);
    ClearCodes();
    Type(row->m_hWnd, "same");
    Press(row->m_hWnd, VK_RETURN);
    ExpectCodes({kFocus}, "unchanged text");
    EXPECT_TRUE(row->IsCommitted());
}

TEST_F(EditTest, EqualNumberInOtherTextCommitsWithoutNotification)
{
    double d = 1.5;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
    row->SetItemDataExchange(&d);
    row->UpdateData();   // 1.500000
    Activate(row);
    ClearCodes();
    Type(row->m_hWnd, "1,50");
    Press(row->m_hWnd, VK_RETURN);
    ExpectCodes({kFocus}, "same number, other text");
    EXPECT_EQ(CString("1.500000"), row->GetItemText(1));
    EXPECT_EQ(1.5, d);
}

TEST_F(EditTest, CommaInDoubleFormatCommitsAsPointInSixDecimals)
{
    double d = 0;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
    row->SetItemDataExchange(&d);
    Activate(row);
    Type(row->m_hWnd, "1,5");
    EXPECT_EQ("1,5", WindowText(row->m_hWnd));   // accepted while typing
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_EQ(CString("1.500000"), row->GetItemText(1));
    EXPECT_EQ(1.5, d);
}

TEST_F(EditTest, LoneMinusStaysAndCommitsAsZero)
{
    double d = 7;
    Edit* dbl = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
    dbl->SetItemDataExchange(&d);
    dbl->UpdateData();
    Activate(dbl);
    Type(dbl->m_hWnd, "-");
    EXPECT_EQ("-", WindowText(dbl->m_hWnd));
    Press(dbl->m_hWnd, VK_RETURN);
    EXPECT_EQ(0.0, d);
    EXPECT_EQ(CString("0.000000"), dbl->GetItemText(1));

    int i = 7;
    Edit* integer = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    integer->SetItemDataExchange(&i);
    integer->UpdateData();
    Activate(integer);
    Type(integer->m_hWnd, "-");
    EXPECT_EQ("-", WindowText(integer->m_hWnd));
    Press(integer->m_hWnd, VK_RETURN);
    EXPECT_EQ(0, i);
}

TEST_F(EditTest, MinMaxFiveFiveLeavesEveryNumberAllowed)
{
    int i = 0;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    row->SetMinMax(5, 5);
    row->SetValidatingMsgBoxTextID(900);
    row->SetItemDataExchange(&i);
    Activate(row);
    Type(row->m_hWnd, "123");
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_EQ(123, i);
    EXPECT_TRUE(s_boxCalls.empty());
}

TEST_F(EditTest, CancelChangesPutsTheValueBackWithoutNotification)
{
    CString name = "old";
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemDataExchange(&name);
    row->UpdateData();
    Activate(row);
    ClearCodes();
    Type(row->m_hWnd, "new");
    row->CancelChanges();
    kel_test::PumpPending();
    EXPECT_EQ(CString("old"), name);
    EXPECT_EQ(CString("old"), row->GetItemText(1));
    EXPECT_EQ("old", WindowText(row->m_hWnd));
    EXPECT_FALSE(::IsWindowVisible(row->m_hWnd));
    EXPECT_EQ(0, CountCode(kChanged));
    EXPECT_FALSE(row->IsActivated());
}

TEST_F(EditTest, UndoRestoresTheValueBeforeTheLastCommit)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    row->SetItemValue(CString("first"));
    Activate(row);
    Type(row->m_hWnd, "second");
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_EQ(CString("second"), row->GetItemText(1));
    row->Undo();
    EXPECT_EQ(CString("first"), row->GetItemText(1));
    EXPECT_EQ("first", WindowText(row->m_hWnd));
}

TEST_F(EditTest, CommitNotifyCodeThroughTheTreeCommitsTheLiveEdit)
{
    int i = 1;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    row->SetItemDataExchange(&i);
    row->UpdateData();
    Activate(row);
    Type(row->m_hWnd, "9");
    ClearCodes();
    EXPECT_EQ(0, tree.SendNotify(PTN_COMMIT_NOTIFY, row));
    EXPECT_EQ(9, i);
    EXPECT_EQ(1, CountCode(kChanged));
    EXPECT_TRUE(row->IsCommitted());
}

// ---- range checks and the host's message ----

TEST_F(EditTest, OutOfRangeAtReturnKeepsTheEditOpenWithTheOldTextAndTellsTheHost)
{
    double d = 5;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
    row->SetMinMax(0.5, 10);
    row->SetValidatingMsgBoxTextID(4711);
    row->SetItemDataExchange(&d);
    row->UpdateData();
    Activate(row);
    ClearCodes();
    // The host's box takes the focus as a modal box would.
    s_stealFocusTo = tree.GetCtrlParent()->m_hWnd;
    Type(row->m_hWnd, "12");
    Press(row->m_hWnd, VK_RETURN);
    ASSERT_EQ(1u, s_boxCalls.size());
    EXPECT_EQ(4711, s_boxCalls[0].textID);
    EXPECT_EQ(std::string("0.500\x1e" "10.000\x1e\x1f"), s_boxCalls[0].text);
    EXPECT_EQ("5.000000", WindowText(row->m_hWnd));   // the old text is back
    EXPECT_TRUE(::IsWindowVisible(row->m_hWnd));
    EXPECT_EQ(row->m_hWnd, ::GetFocus());              // and the focus
    EXPECT_TRUE(row->IsActivated());
    EXPECT_FALSE(row->IsCommitted());
    EXPECT_EQ(5.0, d);
    EXPECT_EQ(0, CountCode(kChanged));
    // The edit goes on: a number in range commits.
    s_stealFocusTo = nullptr;
    ::SendMessageA(row->m_hWnd, EM_SETSEL, 0, -1);
    Type(row->m_hWnd, "7");
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_EQ(7.0, d);
    EXPECT_EQ(1, CountCode(kChanged));
}

TEST_F(EditTest, OutOfRangeIntegerPacksWholeNumbers)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    row->SetMinMax(1, 9);
    row->SetValidatingMsgBoxTextID(12);
    row->SetItemValue(CString("3"));
    Activate(row);
    Type(row->m_hWnd, "10");
    Press(row->m_hWnd, VK_RETURN);
    ASSERT_EQ(1u, s_boxCalls.size());
    EXPECT_EQ(12, s_boxCalls[0].textID);
    EXPECT_EQ(std::string("1\x1e" "9\x1e\x1f"), s_boxCalls[0].text);
    EXPECT_EQ("3", WindowText(row->m_hWnd));
}

TEST_F(EditTest, TooLongTextPacksTheMaximumLengthForTextAndStdString)
{
    for (Edit::ValueFormat f : {Edit::VALUE_FORMAT_TEXT, Edit::VALUE_FORMAT_STD_STRING})
    {
        s_boxCalls.clear();
        Edit* row = AddEdit(f);
        row->SetMinMax(0, 5);
        row->SetValidatingMsgBoxTextID(33);
        row->SetItemValue(CString("ok"));
        Activate(row);
        Type(row->m_hWnd, "sixsix");
        Press(row->m_hWnd, VK_RETURN);
        ASSERT_EQ(1u, s_boxCalls.size()) << "format " << f;
        EXPECT_EQ(33, s_boxCalls[0].textID);
        EXPECT_EQ(std::string("5.000\x1e\x1f"), s_boxCalls[0].text);
        EXPECT_EQ("ok", WindowText(row->m_hWnd));
        EXPECT_FALSE(row->IsCommitted());
        // Five characters pass.
        ::SendMessageA(row->m_hWnd, EM_SETSEL, 0, -1);
        Type(row->m_hWnd, "five5");
        Press(row->m_hWnd, VK_RETURN);
        EXPECT_TRUE(row->IsCommitted()) << "format " << f;
        EXPECT_EQ(CString("five5"), row->GetItemText(1));
    }
}

TEST_F(EditTest, NoHostMessageWithoutTextIdOrWithoutExternalBox)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    row->SetMinMax(1, 9);
    Activate(row);
    Type(row->m_hWnd, "10");
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_TRUE(s_boxCalls.empty());   // text ID 0
    EXPECT_FALSE(row->IsCommitted());
    row->SetValidatingMsgBoxTextID(5);
    tree.SetExternalMessageBox(nullptr);
    Type(row->m_hWnd, "10");
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_TRUE(s_boxCalls.empty());
    EXPECT_FALSE(row->IsCommitted());
}

TEST_F(EditTest, OutOfRangeAtFocusLossClosesTheEditAndKeepsTheOldValue)
{
    double d = 5;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
    row->SetMinMax(0, 10);
    row->SetValidatingMsgBoxTextID(77);
    row->SetItemDataExchange(&d);
    row->UpdateData();
    Activate(row);
    ClearCodes();
    Type(row->m_hWnd, "12");
    FocusList();
    ASSERT_EQ(1u, s_boxCalls.size());
    EXPECT_EQ(std::string("0.000\x1e" "10.000\x1e\x1f"), s_boxCalls[0].text);
    EXPECT_FALSE(::IsWindowVisible(row->m_hWnd));
    EXPECT_TRUE(row->IsCommitted());
    EXPECT_EQ(5.0, d);
    EXPECT_EQ(CString("5.000000"), row->GetItemText(1));
    ExpectCodes({kFocus}, "failed commit at focus loss");
}

// ---- partner conditions ----

namespace
{
struct JoinCase
{
    unsigned flags;
    const char* typed;
    bool passes;
};
}

TEST_F(EditTest, JoinConditionsCompareWithThePartnersStoredValue)
{
    Edit* partner = AddEdit(Edit::VALUE_FORMAT_DOUBLE, "partner");
    partner->SetItemValue(CString("5.000000"));
    const JoinCase cases[] = {
        {Edit::JOIN_GREATER, "6", true},
        {Edit::JOIN_GREATER, "5", false},
        {Edit::JOIN_GREATER, "4", false},
        {Edit::JOIN_GREATER | Edit::JOIN_EQUAL, "5", true},
        {Edit::JOIN_GREATER | Edit::JOIN_EQUAL, "4", false},
        {Edit::JOIN_LESS, "4", true},
        {Edit::JOIN_LESS, "5", false},
        {Edit::JOIN_LESS, "6", false},
        {Edit::JOIN_LESS | Edit::JOIN_EQUAL, "5", true},
        {Edit::JOIN_LESS | Edit::JOIN_EQUAL, "6", false},
        {Edit::JOIN_EQUAL, "5", true},
        {Edit::JOIN_EQUAL, "5,0", true},
        {Edit::JOIN_EQUAL, "6", false},
        {Edit::JOIN_EQUAL, "4", false},
        {0, "5", false},   // joined with no condition at all: nothing passes
        {0, "6", false},
    };
    for (const JoinCase& c : cases)
    {
        Edit* row = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
        row->SetItemValue(CString("1.000000"));
        row->JoinConditionWith(partner, c.flags);
        Activate(row);
        Type(row->m_hWnd, c.typed);
        Press(row->m_hWnd, VK_RETURN);
        EXPECT_EQ(c.passes, row->IsCommitted() != 0) << "flags " << c.flags << " typed " << c.typed;
        EXPECT_EQ(c.passes, !::IsWindowVisible(row->m_hWnd)) << "flags " << c.flags << " typed " << c.typed;
        if (!c.passes)
        {
            // No message for a partner condition, and the typed text stays for correction.
            EXPECT_TRUE(s_boxCalls.empty());
            EXPECT_EQ(c.typed, WindowText(row->m_hWnd));
            Press(row->m_hWnd, VK_ESCAPE);
        }
        tree.Delete(row);
    }
}

TEST_F(EditTest, JoinWithGreaterAndLessIsIgnoredSoAnyNumberPasses)
{
    Edit* partner = AddEdit(Edit::VALUE_FORMAT_DOUBLE, "partner");
    partner->SetItemValue(CString("5.000000"));
    Edit* row = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
    row->JoinConditionWith(partner, Edit::JOIN_GREATER | Edit::JOIN_LESS);
    Activate(row);
    Type(row->m_hWnd, "5");
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_TRUE(row->IsCommitted());
}

TEST_F(EditTest, FailedJoinAtFocusLossKeepsTheOldValue)
{
    double d = 1;
    Edit* partner = AddEdit(Edit::VALUE_FORMAT_DOUBLE, "partner");
    partner->SetItemValue(CString("5.000000"));
    Edit* row = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
    row->SetItemDataExchange(&d);
    row->UpdateData();
    row->JoinConditionWith(partner, Edit::JOIN_LESS);
    Activate(row);
    ClearCodes();
    Type(row->m_hWnd, "8");
    FocusList();
    EXPECT_TRUE(row->IsCommitted());
    EXPECT_EQ(1.0, d);
    EXPECT_EQ(CString("1.000000"), row->GetItemText(1));
    EXPECT_EQ(0, CountCode(kChanged));
}

// ---- inside a dialog ----

#include "dlgtemplate.h"

namespace
{
// A dialog with default OK and Cancel buttons that counts what reaches them.
class CCountingDialog : public CDialog
{
public:
    int oks = 0;
    int cancels = 0;
    void OnOK() override { ++oks; }
    void OnCancel() override { ++cancels; }
};
}

TEST(EditInDialog, ReturnAndEscapeEndTheEditAndNeverReachTheDialogsButtons)
{
    kel_test::DlgTemplateBuilder tpl("edit row in a dialog", DS_SETFONT | WS_POPUP | WS_CAPTION | WS_VISIBLE, 20, 20,
                                     260, 160);
    tpl.AddButton("OK", IDOK, BS_DEFPUSHBUTTON, 10, 130, 50, 14);
    tpl.AddButton("Cancel", IDCANCEL, BS_PUSHBUTTON, 70, 130, 50, 14);
    CCountingDialog dlg;
    ASSERT_TRUE(dlg.CreateIndirect(tpl.Get()));
    ASSERT_TRUE(kel_test::TakeForeground(dlg.m_hWnd));
    {
        CKelPropertyTree tree;
        ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | PTS_NOTIFY, CRect(5, 5, 355, 185), &dlg, 300));
        CKelPropertyTreeItem* group = tree.InsertItem(new CKelPropertyTreeItem());
        group->Expand(1);
        int value = 1;
        Edit* row = new Edit();
        row->SetValueFormat(Edit::VALUE_FORMAT_INTEGER);
        tree.InsertItem(row, group);
        row->SetItemDataExchange(&value);
        row->UpdateData();
        tree.SetPopulated(1);
        pttest::LayoutRows(tree);
        RECT rc = {tree.GetColumn() + 5, 22, 300, 39};
        row->SetAttributeRect(rc);

        row->Activate();
        kel_test::PumpPending();
        ASSERT_EQ(row->m_hWnd, ::GetFocus());
        EditTest::Type(row->m_hWnd, "42");
        EditTest::Press(row->m_hWnd, VK_RETURN);
        EXPECT_EQ(42, value);
        EXPECT_EQ(0, dlg.oks);
        EXPECT_FALSE(::IsWindowVisible(row->m_hWnd));

        row->Activate();
        kel_test::PumpPending();
        EditTest::Type(row->m_hWnd, "7");
        EditTest::Press(row->m_hWnd, VK_ESCAPE);
        EXPECT_EQ(42, value);
        EXPECT_EQ(0, dlg.cancels);
        EXPECT_FALSE(::IsWindowVisible(row->m_hWnd));

        tree.DeleteAllItems();
        tree.DestroyWindow();
    }
    dlg.DestroyWindow();
    kel_test::PumpPending();
}

TEST_F(EditTest, DoubleValueGivenToALiveIntegerRowIsIgnored)
{
    int i = 3;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    row->SetItemDataExchange(&i);
    row->UpdateData();
    Activate(row);
    row->SetItemValue(2.5);
    row->OnRefresh();
    EXPECT_EQ("3", WindowText(row->m_hWnd));
    EXPECT_EQ(CString("3"), row->GetItemText(1));
    ClearCodes();
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_EQ(3, i);
    EXPECT_EQ(0, CountCode(PTN_ITEM_CHANGED));
    row->SetItemValue(4);   // the integer form is taken
    EXPECT_EQ(CString("4"), row->GetItemText(1));
}
