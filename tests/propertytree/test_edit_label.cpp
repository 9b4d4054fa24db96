// Editing a row's label in place, and the lifetimes of edit windows and label editors.
#include <gtest/gtest.h>

#include "dibsurface.h"
#include "editfixture.h"

#include <string>

using pttest::CountedItem;
using pttest::EditTest;
using Edit = CKelPropertyTreeItemEdit;

namespace
{
// Selects the row and paints the list, so that the row carries the label highlight that
// painting writes for a selected row.
void Highlight(CKelPropertyTreeItem* row)
{
    CKelPropertyTree* tree = row->GetItemOwner();
    tree->SelectItems(row, 1);
    CWnd* list = tree->GetCtrlParent();
    list->Invalidate();
    list->UpdateWindow();
}

Edit* EditorOf(CKelPropertyTreeItem* row)
{
    return static_cast<Edit*>(row->GetLabelEditor());
}
}

TEST_F(EditTest, EditLabelOpensABorderedEditorOverTheHighlightAndBlanksTheLabel)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Height"), group));
    Place();
    Highlight(row);
    const CRect h = row->GetLabelHighlightRect();
    ASSERT_FALSE(h.IsRectEmpty());
    row->SetLabelLimitText(20);
    row->EditLabel(row->GetLabelText(), row->GetLabelLimitText());
    kel_test::PumpPending();
    Edit* editor = EditorOf(row);
    ASSERT_NE(nullptr, editor);
    ASSERT_TRUE(::IsWindow(editor->m_hWnd));
    EXPECT_EQ(102, ::GetDlgCtrlID(editor->m_hWnd));
    EXPECT_EQ(tree.GetCtrlParent()->m_hWnd, ::GetParent(editor->m_hWnd));
    const DWORD style = static_cast<DWORD>(::GetWindowLongPtrA(editor->m_hWnd, GWL_STYLE));
    EXPECT_TRUE(style & ES_AUTOHSCROLL);
    // The border: the edit control moves the style bit into its own painting, so look at
    // the pixels of its left edge.
    CRect client;
    ::GetClientRect(editor->m_hWnd, &client);
    {
        kel_test::DibSurface dib(client.Width(), client.Height(), RGB(0, 0, 255));
        ::SendMessageA(editor->m_hWnd, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dib.DC().m_hDC), PRF_CLIENT);
        const COLORREF edge = dib.Pixel(0, client.Height() / 2);
        EXPECT_NE(GetSysColor(COLOR_WINDOW), edge);
        EXPECT_NE(RGB(0, 0, 255), edge);
    }
    EXPECT_TRUE(::IsWindowVisible(editor->m_hWnd));
    EXPECT_EQ(editor->m_hWnd, ::GetFocus());
    EXPECT_EQ("Height", WindowText(editor->m_hWnd));
    EXPECT_EQ(CString("Height"), editor->GetItemText(1));
    EXPECT_EQ(CString(" "), row->GetLabelText());
    EXPECT_EQ(row, editor->GetItemLabelOwner());
    EXPECT_EQ(&tree, editor->GetItemOwner());
    EXPECT_TRUE(editor->IsEditBoxSizeAutoAdapt());
    EXPECT_EQ(Edit::VALUE_FORMAT_TEXT, editor->GetValueFormat());
    EXPECT_EQ(20u, editor->GetLimitText());
    EXPECT_EQ(20, ::SendMessageA(editor->m_hWnd, EM_GETLIMITTEXT, 0, 0));
    DWORD start = 1, end = 0;
    ::SendMessageA(editor->m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(0u, start);
    EXPECT_EQ(6u, end);
    // Placed on the highlight, ten pixels wider.
    CRect rc;
    ::GetWindowRect(editor->m_hWnd, &rc);
    tree.GetCtrlParent()->ScreenToClient(&rc);
    EXPECT_EQ(h.left, rc.left);
    EXPECT_EQ(h.top, rc.top);
    EXPECT_EQ(h.bottom, rc.bottom);
    EXPECT_EQ(h.right - h.left + 10, rc.Width());
}

TEST_F(EditTest, EditLabelOnARowWithoutHighlightDoesNothing)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Plain"), group));
    Place();
    const long windows = AfxGetLiveCount(afxLiveWindows);
    row->EditLabel(row->GetLabelText(), 0);
    EXPECT_EQ(nullptr, row->GetLabelEditor());
    EXPECT_EQ(CString("Plain"), row->GetLabelText());
    EXPECT_EQ(windows, AfxGetLiveCount(afxLiveWindows));
}

TEST_F(EditTest, LabelEditCancelledByEscapeGivesTheOldLabelBack)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Old name"), group));
    Place();
    Highlight(row);
    ClearCodes();
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    Edit* editor = EditorOf(row);
    ASSERT_NE(nullptr, editor);
    EXPECT_EQ(CString(" "), row->GetLabelText());   // a blank meanwhile
    Type(editor->m_hWnd, "New name");
    Press(editor->m_hWnd, VK_ESCAPE);
    EXPECT_EQ(CString("Old name"), row->GetLabelText());
    EXPECT_FALSE(::IsWindowVisible(editor->m_hWnd));
    EXPECT_EQ(0, CountCode(PTN_ITEM_CHANGED));
}

TEST_F(EditTest, LabelEditCommittedByReturnRenamesAndNotifiesForTheRow)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Old name"), group));
    Place();
    Highlight(row);
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    Edit* editor = EditorOf(row);
    ASSERT_NE(nullptr, editor);
    ClearCodes();
    Type(editor->m_hWnd, "Wall A");
    Press(editor->m_hWnd, VK_RETURN);
    EXPECT_EQ(CString("Wall A"), row->GetLabelText());
    // The change is told for the row whose label it is, and only once.
    ASSERT_EQ(1, CountCode(PTN_ITEM_CHANGED));
    for (size_t i = 0; i < parent.codes.size(); ++i)
    {
        if (parent.codes[i] == PTN_ITEM_CHANGED)
        {
            EXPECT_EQ(row, parent.items[i]);
        }
    }
    EXPECT_FALSE(::IsWindowVisible(editor->m_hWnd));
    EXPECT_EQ(tree.GetCtrlParent()->m_hWnd, ::GetFocus());
}

TEST_F(EditTest, LabelEditCommittedByFocusLossRenames)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Old"), group));
    Place();
    Highlight(row);
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    Edit* editor = EditorOf(row);
    ASSERT_NE(nullptr, editor);
    ClearCodes();
    Type(editor->m_hWnd, "Renamed");
    FocusList();
    EXPECT_EQ(CString("Renamed"), row->GetLabelText());
    ExpectCodes({PTN_ITEM_CHANGED, PTN_FOCUS_GAINED}, "label commit at focus loss");
}

TEST_F(EditTest, UnchangedLabelCommitsWithoutNotification)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Same"), group));
    Place();
    Highlight(row);
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    ClearCodes();
    Press(EditorOf(row)->m_hWnd, VK_RETURN);
    EXPECT_EQ(CString("Same"), row->GetLabelText());
    EXPECT_EQ(0, CountCode(PTN_ITEM_CHANGED));
}

TEST_F(EditTest, LabelEditorGrowsWithItsTextWithinTheList)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("A"), group));
    Place();
    Highlight(row);
    const long highlightLeft = row->GetLabelHighlightRect().left;
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    Edit* editor = EditorOf(row);
    ASSERT_NE(nullptr, editor);
    CKelPropertyTreeList* list = tree.GetCtrlParent();
    Type(editor->m_hWnd, "Wx");
    CRect rc;
    ::GetWindowRect(editor->m_hWnd, &rc);
    list->ScreenToClient(&rc);
    int measured = 0;
    {
        CClientDC dc(editor);
        CSelectObjectScope font(&dc, editor->GetFont());
        measured = dc.GetTextExtent(CString("WxMMM")).cx;
    }
    EXPECT_EQ(highlightLeft, rc.left);
    EXPECT_EQ(measured, rc.Width());
    // A long text stops at the list's right edge, less the scroll bar and the border.
    Type(editor->m_hWnd, "a very long label text that cannot fit into the list at all");
    ::GetWindowRect(editor->m_hWnd, &rc);
    list->ScreenToClient(&rc);
    CRect listRect;
    list->GetWindowRect(&listRect);
    list->ScreenToClient(&listRect);
    EXPECT_EQ(listRect.right - GetSystemMetrics(SM_CXVSCROLL) - GetSystemMetrics(SM_CXBORDER), rc.right);
}

TEST_F(EditTest, ValueEditDoesNotGrowWithItsText)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT);
    Activate(row);
    CRect before, after;
    ::GetWindowRect(row->m_hWnd, &before);
    Type(row->m_hWnd, "Wide text typed into the value");
    ::GetWindowRect(row->m_hWnd, &after);
    EXPECT_EQ(before, after);
}

TEST_F(EditTest, ListEditLabelNeedsLabelEditEnabledAndAWritableRow)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Focus"), group));
    Place();
    Highlight(row);
    tree.SetFocusedItem(row);
    ASSERT_EQ(row, tree.GetFocusedItem());
    CKelPropertyTreeList* list = tree.GetCtrlParent();
    list->EditLabel(nullptr);   // label edit is off
    EXPECT_EQ(nullptr, row->GetLabelEditor());
    tree.EnableLabelEdit(1);
    row->ReadOnly(1);
    list->EditLabel(row);
    EXPECT_EQ(nullptr, row->GetLabelEditor());
    row->ReadOnly(0);
    row->SetLabelLimitText(7);
    list->EditLabel(nullptr);   // the focused row
    kel_test::PumpPending();
    ASSERT_NE(nullptr, row->GetLabelEditor());
    EXPECT_EQ("Focus", WindowText(EditorOf(row)->m_hWnd));
    EXPECT_EQ(7u, EditorOf(row)->GetLimitText());
}

TEST_F(EditTest, ListEditLabelWithoutFocusDoesNothing)
{
    tree.EnableLabelEdit(1);
    tree.GetCtrlParent()->EditLabel(nullptr);
    EXPECT_EQ(nullptr, tree.GetFocusedItem());
}

// ---- lifetimes ----

TEST_F(EditTest, NewLabelEditorReplacesTheOldOne)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Name"), group));
    Place();
    Highlight(row);
    const long windows = AfxGetLiveCount(afxLiveWindows);
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    HWND first = EditorOf(row)->m_hWnd;
    Press(first, VK_RETURN);
    EXPECT_EQ(windows + 1, AfxGetLiveCount(afxLiveWindows));   // the editor stays, hidden
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    EXPECT_FALSE(::IsWindow(first));
    ASSERT_NE(nullptr, row->GetLabelEditor());
    EXPECT_NE(first, EditorOf(row)->m_hWnd);
    EXPECT_EQ(windows + 1, AfxGetLiveCount(afxLiveWindows));
    EXPECT_EQ("Name", WindowText(EditorOf(row)->m_hWnd));
}

TEST_F(EditTest, ReplacingAnOpenLabelEditorKeepsTheLabel)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Keep"), group));
    Place();
    Highlight(row);
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    Type(EditorOf(row)->m_hWnd, "typed");
    ClearCodes();
    // Asked again while the first editor is open: the label goes back, then a new editor opens.
    row->EditLabel("Keep", 0);
    kel_test::PumpPending();
    EXPECT_EQ(0, CountCode(PTN_ITEM_CHANGED));
    ASSERT_NE(nullptr, row->GetLabelEditor());
    Press(EditorOf(row)->m_hWnd, VK_ESCAPE);
    EXPECT_EQ(CString("Keep"), row->GetLabelText());
}

TEST_F(EditTest, LabelEditorDiesWithItsRowWithoutCommitting)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Doomed"), group));
    Place();
    Highlight(row);
    const long windows = AfxGetLiveCount(afxLiveWindows);
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    HWND editor = EditorOf(row)->m_hWnd;
    Type(editor, "typed");
    ClearCodes();
    tree.Delete(row);
    kel_test::PumpPending();
    EXPECT_FALSE(::IsWindow(editor));
    EXPECT_EQ(1, CountedItem::s_destroyedCount);
    EXPECT_EQ(windows, AfxGetLiveCount(afxLiveWindows));
    for (unsigned code : parent.codes)
        EXPECT_NE(static_cast<unsigned>(PTN_ITEM_CHANGED), code);
}

TEST_F(EditTest, DeletingRowsWithLiveEditWindowsLeaksNothing)
{
    const long windows = AfxGetLiveCount(afxLiveWindows);
    const long gdi = AfxGetLiveCount(afxLiveGdiObjects);
    const long dcs = AfxGetLiveCount(afxLiveDCs);
    Edit* open = AddEdit(Edit::VALUE_FORMAT_DOUBLE, "open");
    Edit* closed = AddEdit(Edit::VALUE_FORMAT_TEXT, "closed");
    Edit* never = AddEdit(Edit::VALUE_FORMAT_INTEGER, "never");
    (void)never;
    Activate(closed);
    Type(closed->m_hWnd, "x");
    Press(closed->m_hWnd, VK_RETURN);
    Activate(open);
    Type(open->m_hWnd, "2");
    EXPECT_EQ(windows + 2, AfxGetLiveCount(afxLiveWindows));
    HWND openWnd = open->m_hWnd, closedWnd = closed->m_hWnd;
    ClearCodes();
    tree.Delete(open);   // focused and uncommitted
    kel_test::PumpPending();
    EXPECT_FALSE(::IsWindow(openWnd));
    EXPECT_EQ(nullptr, tree.GetItemLastActivated());
    EXPECT_EQ(0, CountCode(PTN_ITEM_CHANGED));   // a dying row does not commit
    tree.DeleteAllItems();
    kel_test::PumpPending();
    EXPECT_FALSE(::IsWindow(closedWnd));
    EXPECT_EQ(windows, AfxGetLiveCount(afxLiveWindows));
    EXPECT_EQ(gdi, AfxGetLiveCount(afxLiveGdiObjects));
    EXPECT_EQ(dcs, AfxGetLiveCount(afxLiveDCs));
}

TEST_F(EditTest, LabelEditOnAnEditRowLeavesItsValueAlone)
{
    CString value = "v1";
    Edit* row = AddEdit(Edit::VALUE_FORMAT_TEXT, "Edit row");
    row->SetItemDataExchange(&value);
    row->UpdateData();
    Highlight(row);
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    Edit* editor = EditorOf(row);
    ASSERT_NE(nullptr, editor);
    ASSERT_NE(static_cast<Edit*>(row), editor);
    Type(editor->m_hWnd, "Renamed row");
    Press(editor->m_hWnd, VK_RETURN);
    EXPECT_EQ(CString("Renamed row"), row->GetLabelText());
    EXPECT_EQ(CString("v1"), row->GetItemText(1));
    EXPECT_EQ(CString("v1"), value);
}

TEST_F(EditTest, ClosingTheTreeWindowEndsTheLiveEditWithoutTakingItsText)
{
    const long windows = AfxGetLiveCount(afxLiveWindows);
    int i = 1;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    row->SetItemDataExchange(&i);
    row->UpdateData();
    Activate(row);
    Type(row->m_hWnd, "8");
    HWND edit = row->m_hWnd;
    ClearCodes();
    tree.DestroyWindow();   // as when the dialog around it closes
    kel_test::PumpPending();
    EXPECT_FALSE(::IsWindow(edit));
    EXPECT_EQ(nullptr, row->m_hWnd);
    EXPECT_EQ(1, i);
    EXPECT_EQ(CString("1"), row->GetItemText(1));
    EXPECT_FALSE(row->IsActivated());
    EXPECT_EQ(nullptr, tree.GetItemLastActivated());
    EXPECT_EQ(0, CountCode(PTN_ITEM_CHANGED));
    tree.DeleteAllItems();
    EXPECT_EQ(windows - 2, AfxGetLiveCount(afxLiveWindows));   // the tree and its list are gone too
}

TEST_F(EditTest, ClosingTheTreeWindowUnderALabelEditorGivesTheLabelBack)
{
    CountedItem* row = static_cast<CountedItem*>(tree.InsertItem(new CountedItem("Label"), group));
    Place();
    Highlight(row);
    row->EditLabel(row->GetLabelText(), 0);
    kel_test::PumpPending();
    Type(EditorOf(row)->m_hWnd, "half typed");
    tree.DestroyWindow();
    kel_test::PumpPending();
    EXPECT_EQ(CString("Label"), row->GetLabelText());
    EXPECT_EQ(0, CountCode(PTN_ITEM_CHANGED));
}
