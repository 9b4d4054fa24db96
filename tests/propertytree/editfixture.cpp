// Helpers of the edit row tests.
#include "editfixture.h"

namespace pttest
{
std::vector<MessageBoxCall> EditTest::s_boxCalls;
HWND EditTest::s_stealFocusTo = nullptr;

std::string CodeList(const std::vector<unsigned>& codes)
{
    std::string s;
    for (unsigned c : codes)
        s += std::to_string(c) + " ";
    return s;
}

void EditTest::SetUp()
{
    CountedItem::Reset();
    s_boxCalls.clear();
    s_stealFocusTo = nullptr;
    ASSERT_TRUE(parent.CreateParent());
    ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE | PTS_NOTIFY, CRect(0, 0, 360, 220), &parent, 1234));
    ASSERT_TRUE(kel_test::TakeForeground(parent.m_hWnd));
    group = tree.InsertItem(new CKelPropertyTreeItem());
    group->SetLabelText("group");
    group->Expand(1);
    tree.SetPopulated(1);
    tree.SetExternalMessageBox(&EditTest::ExternalBox);
    kel_test::PumpPending();
}

void EditTest::TearDown()
{
    parent.onNotify = nullptr;
    tree.DeleteAllItems();
    tree.DestroyWindow();
    parent.DestroyWindow();
    kel_test::PumpPending();
}

CKelPropertyTreeItemEdit* EditTest::AddEdit(CKelPropertyTreeItemEdit::ValueFormat format, const char* label,
                                            CKelPropertyTreeItem* parentRow)
{
    CKelPropertyTreeItemEdit* row = new CKelPropertyTreeItemEdit();
    row->SetLabelText(label);
    row->SetValueFormat(format);
    tree.InsertItem(row, parentRow ? parentRow : group);
    Place();
    return row;
}

// The value column of a row: from the column plus 5 to the client's right edge, from 2 below
// the row's top to 1 above its bottom, in the list's client coordinates; the client is the
// list's client rectangle inset by 2, and rows start at y 0.
void EditTest::Place()
{
    LayoutRows(tree);
    CRect client;
    tree.GetCtrlParent()->GetClientRect(&client);
    client.DeflateRect(2, 2);
    const long v = tree.GetOrigin().y;
    for (CKelPropertyTreeItem* p = tree.GetVisibleList(); p; p = p->GetNextVisible())
    {
        const long y = p->GetLocation().y;
        RECT rc = {tree.GetColumn() + 5, y + 2 - v, client.right, y + p->GetHeight() - 1 - v};
        p->SetAttributeRect(rc);
    }
}

void EditTest::Activate(CKelPropertyTreeItem* row)
{
    row->Activate();
    kel_test::PumpPending();
}

void EditTest::Type(HWND hWnd, const char* text)
{
    kel_test::PostChars(hWnd, text);
    kel_test::PumpPending();
}

void EditTest::Press(HWND hWnd, UINT vk)
{
    kel_test::PostKeyDown(hWnd, vk);
    kel_test::PumpPending();
}

void EditTest::FocusList()
{
    tree.GetCtrlParent()->SetFocus();
    kel_test::PumpPending();
}

std::string EditTest::WindowText(HWND hWnd)
{
    char buf[512] = {};
    ::GetWindowTextA(hWnd, buf, sizeof(buf));
    return buf;
}

void EditTest::ClearCodes()
{
    parent.codes.clear();
    parent.items.clear();
}

void EditTest::ExpectCodes(const std::vector<unsigned>& expected, const char* what)
{
    EXPECT_EQ(expected, parent.codes) << what << "\nexpected: " << CodeList(expected)
                                      << "\nseen:     " << CodeList(parent.codes);
}

int EditTest::CountCode(unsigned code) const
{
    int n = 0;
    for (unsigned c : parent.codes)
        n += c == code ? 1 : 0;
    return n;
}

int EditTest::ExternalBox(int textID, char* text)
{
    MessageBoxCall call;
    call.textID = textID;
    call.text = text;
    s_boxCalls.push_back(call);
    if (s_stealFocusTo != nullptr)
        ::SetFocus(s_stealFocusTo);
    return 0;
}
}
