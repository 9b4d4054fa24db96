// The tree window: creation, notifications in order, insertion, deletion and item lifetimes,
// replacing and moving rows.
#include <gtest/gtest.h>

#include "ck_attrib.h"
#include "kx_bitmapcontainer.h"
#include "pttest.h"
#include "testsupport.h"
#include "treewindowfixture.h"

using pttest::CountedItem;
using pttest::LayoutRows;
using pttest::RecordingParent;
using pttest::TreeWindowTest;
using pttest::ValueItem;

TEST_F(TreeWindowTest, CreateMakesTheListSurfaceWithId100FillingTheClientArea)
{
    CKelPropertyTreeList* list = tree.GetCtrlParent();
    ASSERT_TRUE(::IsWindow(list->m_hWnd));
    EXPECT_EQ(100, list->GetDlgCtrlID());
    EXPECT_EQ(tree.m_hWnd, ::GetParent(list->m_hWnd));
    CRect treeClient, listRect;
    tree.GetClientRect(&treeClient);
    list->GetWindowRect(&listRect);
    EXPECT_EQ(treeClient.Width(), listRect.Width());
    EXPECT_EQ(treeClient.Height(), listRect.Height());
    EXPECT_EQ(static_cast<LRESULT>(133), list->SendMessage(WM_GETDLGCODE));
    tree.MoveWindow(0, 0, 250, 120);
    list->GetWindowRect(&listRect);
    EXPECT_EQ(250, listRect.Width());
    EXPECT_EQ(&parent, tree.GetParent());
}

TEST(TreeCreate, WithoutParentFails)
{
    CKelPropertyTree tree;
    EXPECT_FALSE(tree.Create(WS_CHILD, CRect(0, 0, 10, 10), nullptr, 1));
    EXPECT_EQ(nullptr, tree.m_hWnd);
}

TEST(TreeConstruction, InternalImageListHoldsFiveIconsOfSixteenPixels)
{
    CKelPropertyTree tree;
    CImageList* images = tree.GetInternalImageList();
    ASSERT_EQ(5, images->GetImageCount());
    int cx = 0, cy = 0;
    ImageList_GetIconSize(images->GetSafeHandle(), &cx, &cy);
    EXPECT_EQ(16, cx);
    EXPECT_EQ(16, cy);
    // The on image differs from the off image: draw both and compare the box's middle.
    HDC screen = GetDC(nullptr);
    HDC dc = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, 32, 16);
    ReleaseDC(nullptr, screen);
    HGDIOBJ old = SelectObject(dc, bmp);
    RECT all = {0, 0, 32, 16};
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    ImageList_Draw(images->GetSafeHandle(), PT_IMAGE_SWITCH_OFF, dc, 0, 0, ILD_NORMAL);
    ImageList_Draw(images->GetSafeHandle(), PT_IMAGE_SWITCH_ON, dc, 16, 0, ILD_NORMAL);
    int differing = 0;
    for (int y = 3; y < 13; ++y)
        for (int x = 3; x < 13; ++x)
            differing += GetPixel(dc, x, y) != GetPixel(dc, 16 + x, y);
    EXPECT_GT(differing, 5);
    EXPECT_EQ(RGB(0, 0, 0), GetPixel(dc, 1, 1));   // frame of the off box
    SelectObject(dc, old);
    DeleteObject(bmp);
    DeleteDC(dc);
}

TEST(TreeFonts, SharedByLiveTreesAndFreedWithTheLast)
{
    const long gdiBefore = AfxGetLiveCount(afxLiveGdiObjects);
    ASSERT_EQ(0, CKelPropertyTree::GetLiveTreeCount());
    EXPECT_EQ(nullptr, CKelPropertyTree::GetNormalFont());
    {
        CKelPropertyTree first;
        CFont* normal = CKelPropertyTree::GetNormalFont();
        ASSERT_NE(nullptr, normal);
        {
            CKelPropertyTree second;
            EXPECT_EQ(2, CKelPropertyTree::GetLiveTreeCount());
            EXPECT_EQ(normal, CKelPropertyTree::GetNormalFont());
        }
        EXPECT_EQ(normal, CKelPropertyTree::GetNormalFont());
        LOGFONT normalLf = {}, boldLf = {}, thinLf = {};
        normal->GetLogFont(&normalLf);
        CKelPropertyTree::GetBoldFont()->GetLogFont(&boldLf);
        CKelPropertyTree::GetThinNormalFont()->GetLogFont(&thinLf);
        EXPECT_EQ(700, boldLf.lfWeight);
        EXPECT_EQ(200, thinLf.lfWeight);
        EXPECT_EQ(normalLf.lfHeight, boldLf.lfHeight);
        EXPECT_STREQ(normalLf.lfFaceName, boldLf.lfFaceName);
        NONCLIENTMETRICSA ncm = {};
        ncm.cbSize = sizeof(ncm);
        SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(ncm), &ncm, 0);
        EXPECT_EQ(ncm.lfMenuFont.lfHeight, normalLf.lfHeight);
        if (ncm.lfMenuFont.lfCharSet <= 2)
        {
            EXPECT_TRUE(std::string(normalLf.lfFaceName) == "Tahoma" ||
                        std::string(normalLf.lfFaceName) == "MS Sans Serif")
                << normalLf.lfFaceName;
        }
    }
    EXPECT_EQ(0, CKelPropertyTree::GetLiveTreeCount());
    EXPECT_EQ(nullptr, CKelPropertyTree::GetNormalFont());
    EXPECT_EQ(gdiBefore, AfxGetLiveCount(afxLiveGdiObjects));
}

// ---- notifications ----

TEST_F(TreeWindowTest, NotificationCarriesSenderIdCodeAndItem)
{
    CKelPropertyTreeItem* row = Add("row");
    ASSERT_EQ(1u, parent.codes.size());
    EXPECT_EQ(static_cast<unsigned>(PTN_ITEM_INSERTED), parent.codes[0]);
    EXPECT_EQ(row, parent.items[0]);
    EXPECT_EQ(1234u, parent.ids[0]);
    EXPECT_EQ(tree.m_hWnd, parent.senders[0]);
}

TEST_F(TreeWindowTest, InsertedIsSentAtTheEndOfLinking)
{
    CKelPropertyTreeItem* top = Add("top");
    bool linked = false;
    parent.onNotify = [&](const PropertyTreeNotify* nm) {
        linked = nm->pItem->GetParent() == top && top->GetChild() == nm->pItem &&
                 nm->pItem->GetItemOwner() == &tree && nm->pItem->GetCtrlID() == 2;
    };
    Add("child", top);
    EXPECT_TRUE(linked);
}

TEST_F(TreeWindowTest, ChangeIsSentAfterTheVariableIsWrittenAndBeforeTheRefresh)
{
    ValueItem* row = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v")));
    LONG_PTR variable = 0;
    row->SetItemDataExchange(&variable);
    std::vector<std::string> callsAtNotify;
    LONG_PTR variableAtNotify = -1;
    parent.onNotify = [&](const PropertyTreeNotify*) {
        callsAtNotify = row->calls;
        variableAtNotify = variable;
    };
    row->Activate();
    row->Type(6);
    row->CommitChanges(1);
    std::vector<std::string> expected = {"OnActivate", "OnCommit"};
    EXPECT_EQ(expected, callsAtNotify);
    EXPECT_EQ(6, variableAtNotify);
    EXPECT_EQ("OnRefresh", row->calls.back());
}

TEST_F(TreeWindowTest, EveryTableCodeIsDeliveredAndTheGapsAreNot)
{
    CKelPropertyTreeItem* row = Add("row");
    Clear();
    for (unsigned code = 46140; code <= 46190; ++code)
        if (code != PTN_COMMIT_NOTIFY && code != PTN_COMMIT_SILENT)
            tree.SendNotify(code, row);
    std::vector<unsigned> expected;
    for (unsigned code = PTN_FIRST; code <= PTN_LAST; ++code)
        if (code != PTN_COMMIT_NOTIFY && code != PTN_COMMIT_SILENT && code != PTN_ITEMS_UPDATED && code != 46177)
            expected.push_back(code);
    ExpectCodes(expected);
}

TEST_F(TreeWindowTest, ParentAnswerIsReturned)
{
    CKelPropertyTreeItem* row = Add("row");
    parent.refuse.insert(PTN_ITEM_EXPANDING);
    EXPECT_EQ(1, tree.SendNotify(PTN_ITEM_EXPANDING, row));
    EXPECT_EQ(0, tree.SendNotify(PTN_ITEM_CLICKED, row));
}

TEST_F(TreeWindowTest, NothingSentWithoutNotifyStyleNotEvenCommits)
{
    ValueItem* row = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v")));
    tree.ModifyStyle(PTS_NOTIFY, 0);
    Clear();
    row->Activate();
    row->Type(3);
    tree.SendNotify(PTN_COMMIT_NOTIFY, row);
    tree.SendNotify(PTN_COMMIT_SILENT, row);
    tree.SendNotify(PTN_ITEM_CLICKED, row);
    EXPECT_TRUE(parent.codes.empty());
    EXPECT_EQ(0, row->IsCommitted());
    EXPECT_TRUE(row->IsActivated());
}

TEST_F(TreeWindowTest, NoMessagesOutSilencesEverything)
{
    tree.NoMessagesOut(1);
    Add("row");
    EXPECT_TRUE(parent.codes.empty());
}

TEST_F(TreeWindowTest, CommitCodesCommitTheRowAndAreNotDelivered)
{
    ValueItem* row = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v")));
    row->Activate();
    row->Type(3);
    Clear();
    EXPECT_EQ(0, tree.SendNotify(PTN_COMMIT_NOTIFY, row));
    ExpectCodes({PTN_ITEM_CHANGED});
    EXPECT_EQ(3, row->m_value);
    row->Activate();
    row->Type(4);
    Clear();
    tree.SendNotify(PTN_COMMIT_SILENT, row);
    EXPECT_TRUE(parent.codes.empty());
    EXPECT_EQ(4, row->m_value);
}

TEST_F(TreeWindowTest, EnterThenFocusLossGivesOneChangeNotification)
{
    ValueItem* row = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v")));
    LONG_PTR variable = 0;
    row->SetItemDataExchange(&variable);
    row->Activate();
    row->Type(8);
    Clear();
    row->CommitChanges(1);   // Enter
    row->CommitChanges(1);   // the loss of focus that follows
    ExpectCodes({PTN_ITEM_CHANGED});
    EXPECT_EQ(row, parent.items[0]);
    EXPECT_EQ(8, variable);
}

TEST_F(TreeWindowTest, UnchangedCommitSendsNothing)
{
    ValueItem* row = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v")));
    row->Activate();
    Clear();
    row->CommitChanges(1);
    EXPECT_TRUE(parent.codes.empty());
    EXPECT_TRUE(tree.GetCtrlParent()->AreScrollBarsDirty());
}

TEST_F(TreeWindowTest, SendNotify4ThisSendsForTheRow)
{
    CKelPropertyTreeItem* row = Add("row");
    Clear();
    row->SendNotify4This(PTN_SPECIAL_BUTTON);
    ExpectCodes({PTN_SPECIAL_BUTTON});
    EXPECT_EQ(row, parent.items[0]);
}

TEST_F(TreeWindowTest, SwitchChangeNotifiesOnlyWhenPopulated)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* row = Add("row");
    row->SetItemSwitching(1, 0);
    Clear();
    row->SetItemSwitchStatus(1, 0);
    EXPECT_TRUE(parent.codes.empty());
    tree.SetPopulated(1);
    row->SetItemSwitchStatus(0, 0);
    ExpectCodes({PTN_SWITCH_CHANGED});
    Clear();
    row->SetItemSwitchStatus(1, 1);   // no notify asked for
    EXPECT_TRUE(parent.codes.empty());
}

TEST_F(TreeWindowTest, ExchangeOMDataNeedsTheRecord)
{
    EXPECT_EQ(0, tree.GetOMFlag());
    EXPECT_EQ(nullptr, tree.ExchangeExternalOMData(5));
    EXPECT_EQ(0, parent.exchanges);
}

TEST(TreeExchange, ModulesOneAndFourExchangeTheRecordWithTheParent)
{
    for (KEL_ML_TREE_USED_AT_MODULE_ID module : {KEL_ML_TREE_MODULE_1, KEL_ML_TREE_MODULE_4})
    {
        RecordingParent parent;
        ASSERT_TRUE(parent.CreateParent());
        CKelPropertyTree tree;
        ASSERT_TRUE(tree.Create(WS_CHILD | PTS_NOTIFY, CRect(0, 0, 100, 100), &parent, 7, module));
        ASSERT_NE(nullptr, tree.GetExternalOMData());
        parent.omOptions = 2;
        EXPECT_EQ(2, tree.GetOMFlag());
        EXPECT_EQ(0, parent.lastRequestedResID);
        CExternalOMData* data = tree.ExchangeExternalOMData(33);
        EXPECT_EQ(tree.GetExternalOMData(), data);
        EXPECT_EQ(33, parent.lastRequestedResID);
        EXPECT_EQ(2, parent.exchanges);
        tree.DestroyWindow();
        parent.DestroyWindow();
    }
    RecordingParent parent;
    ASSERT_TRUE(parent.CreateParent());
    CKelPropertyTree tree;
    ASSERT_TRUE(tree.Create(WS_CHILD, CRect(0, 0, 100, 100), &parent, 7, KEL_ML_TREE_MODULE_2));
    EXPECT_EQ(nullptr, tree.GetExternalOMData());
    tree.DestroyWindow();
    parent.DestroyWindow();
}

// ---- insertion and deletion ----

TEST(TreeWithoutWindow, InsertItemStillLinks)
{
    CKelPropertyTree tree;
    CKelPropertyTreeItem* a = tree.InsertItem(new CKelPropertyTreeItem());
    CKelPropertyTreeItem* b = tree.InsertItem(new CKelPropertyTreeItem());
    CKelPropertyTreeItem* c = tree.InsertItem(new CKelPropertyTreeItem(), a);
    EXPECT_EQ(a, tree.GetRootItem()->GetChild());
    EXPECT_EQ(b, a->GetSibling());
    EXPECT_EQ(c, a->GetChild());
    EXPECT_EQ(a, c->GetParent());
    EXPECT_EQ(&tree, c->GetItemOwner());
    EXPECT_EQ(1u, a->GetCtrlID());
    EXPECT_EQ(3u, c->GetCtrlID());
    EXPECT_EQ(nullptr, tree.InsertItem(nullptr));
    EXPECT_TRUE(tree.GetRootItem()->IsExpanded());
    EXPECT_EQ(&tree, tree.GetRootItem()->GetItemOwner());
}

TEST_F(TreeWindowTest, InsertionRecomputesTheParentSwitch)
{
    tree.SetTreeItemsSwitchable(1, 1);
    CKelPropertyTreeItem* p = Add("p");
    p->SetItemSwitching(1, 0);
    p->SetAutoCheckSubItems(true);
    CountedItem* child = new CountedItem("c");
    child->SetKelPropertyOwner(&tree);
    child->SetItemSwitching(1, 0);
    child->SetItemSwitchStatus(1, 1);
    tree.InsertItem(child, p);
    EXPECT_EQ(1u, p->GetItemSwitchStatus());
}

TEST_F(TreeWindowTest, DeletingASubtreeAsksFirstAndDestroysEveryItemOnce)
{
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* a1 = Add("a1", a);
    CKelPropertyTreeItem* b = Add("b", top);
    CKelPropertyTreeItem* other = Add("other");
    ASSERT_EQ(5, CountedItem::s_live);
    Clear();
    tree.DeleteItem(top);
    ExpectCodes({PTN_ITEM_DELETING, PTN_ITEM_DELETING, PTN_ITEM_DELETING, PTN_ITEM_DELETING});
    std::vector<CKelPropertyTreeItem*> order = {top, a, a1, b};
    EXPECT_EQ(order, parent.items);
    EXPECT_EQ(1, CountedItem::s_live);
    EXPECT_EQ(0, CountedItem::s_doubleDestroyed);
    EXPECT_EQ(4, CountedItem::s_destroyedCount);
    for (CKelPropertyTreeItem* gone : {top, a, a1, b})
        EXPECT_TRUE(CountedItem::s_destroyed.count(gone));
    EXPECT_EQ(other, tree.GetRootItem()->GetChild());
    EXPECT_EQ(nullptr, other->GetSibling());
}

TEST_F(TreeWindowTest, ParentCanKeepARowAndItsAncestorsStay)
{
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* b = Add("b", top);
    parent.keep.insert(a);
    tree.DeleteItem(top);
    EXPECT_EQ(2, CountedItem::s_live);   // top and a stay
    EXPECT_EQ(top, tree.GetRootItem()->GetChild());
    EXPECT_EQ(a, top->GetChild());
    EXPECT_EQ(nullptr, a->GetSibling());
    EXPECT_TRUE(CountedItem::s_destroyed.count(b));
    parent.keep.clear();
    tree.DeleteItem(top);
    EXPECT_EQ(0, CountedItem::s_live);
}

TEST_F(TreeWindowTest, DeleteOnTheRootUnlinksAllChildrenAndKeepsTheRoot)
{
    CKelPropertyTreeItem* a = Add("a");
    Add("a1", a);
    Add("b");
    Clear();
    tree.Delete(tree.GetRootItem());
    EXPECT_EQ(0, CountedItem::s_live);
    EXPECT_EQ(nullptr, tree.GetRootItem()->GetChild());
    EXPECT_TRUE(tree.GetRootItem()->IsExpanded());
    EXPECT_EQ(3u, parent.codes.size());   // the host is not asked about the root
    for (CKelPropertyTreeItem* item : parent.items)
        EXPECT_NE(tree.GetRootItem(), item);
}

TEST_F(TreeWindowTest, DeletingTheFocusedAndActiveRowClearsBoth)
{
    ValueItem* row = static_cast<ValueItem*>(tree.InsertItem(new ValueItem("v")));
    LayoutRows(tree);
    tree.SetFocusedItem(row);
    row->Activate();
    ASSERT_EQ(row, tree.GetFocusedItem());
    tree.Delete(row);
    EXPECT_EQ(nullptr, tree.GetFocusedItem());
    EXPECT_EQ(nullptr, tree.GetItemLastActivated());
    EXPECT_EQ(nullptr, tree.GetVisibleList());
    EXPECT_TRUE(tree.IsResearchSpecialButtonPending());
}

TEST_F(TreeWindowTest, DeleteAllItemsResetsTheControlNumbers)
{
    Add("a");
    Add("b");
    tree.DeleteAllItems();
    EXPECT_EQ(0, CountedItem::s_live);
    EXPECT_EQ(1u, Add("c")->GetCtrlID());
}

TEST_F(TreeWindowTest, DeleteMarkedGoesChildrenFirst)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    CKelPropertyTreeItem* b = Add("b");
    a->DeleteItem(1, 0);
    a1->DeleteItem(1, 0);
    std::vector<CKelPropertyTreeItem*> marked;
    tree.GetItemsMarkedToDelete(marked);
    std::vector<CKelPropertyTreeItem*> order = {a1, a};
    EXPECT_EQ(order, marked);
    tree.DeleteMarked();
    EXPECT_EQ(1, CountedItem::s_live);
    EXPECT_EQ(b, tree.GetRootItem()->GetChild());
    EXPECT_EQ(0, CountedItem::s_doubleDestroyed);
}

TEST_F(TreeWindowTest, DeleteItemsDeletesEachListedRow)
{
    CKelPropertyTreeItem* a = Add("a");
    Add("b");
    CKelPropertyTreeItem* c = Add("c");
    std::vector<CKelPropertyTreeItem*> rows = {a, c};
    tree.DeleteItems(rows);
    EXPECT_EQ(1, CountedItem::s_live);
}

TEST(TreeLifetime, TreeDestroyedWithLiveItemsLeaksNothing)
{
    CountedItem::Reset();
    const long windows = AfxGetLiveCount(afxLiveWindows);
    const long gdi = AfxGetLiveCount(afxLiveGdiObjects);
    const long lists = AfxGetLiveCount(afxLiveImageLists);
    {
        RecordingParent parent;
        ASSERT_TRUE(parent.CreateParent());
        parent.refuse.insert(PTN_ITEM_DELETING);   // a host that would keep every row
        {
            CKelPropertyTree tree;
            ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE | PTS_NOTIFY, CRect(0, 0, 200, 100), &parent, 9,
                                    KEL_ML_TREE_MODULE_1));
            CKelPropertyTreeItem* a = tree.InsertItem(new CountedItem("a"));
            tree.InsertItem(new CountedItem("a1"), a);
            CKelPropertyTreeItem* b = tree.InsertItem(new CountedItem("b"));
            tree.ReplaceItems(b, new CountedItem("b2"), KPRF_KEEP);
            tree.SetTreeItemsSwitchable(1, 1);
            EXPECT_EQ(4, CountedItem::s_live);
        }
        EXPECT_EQ(0, CountedItem::s_live);
        EXPECT_EQ(0, CountedItem::s_doubleDestroyed);
        parent.DestroyWindow();
    }
    kel_test::PumpPending();
    EXPECT_EQ(windows, AfxGetLiveCount(afxLiveWindows));
    EXPECT_EQ(gdi, AfxGetLiveCount(afxLiveGdiObjects));
    EXPECT_EQ(lists, AfxGetLiveCount(afxLiveImageLists));
}

// ---- replacing and moving ----

TEST_F(TreeWindowTest, ReplaceItemPutsTheNewRowInPlaceAndKeepsTheOld)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    CKelPropertyTreeItem* c = Add("c");
    LayoutRows(tree);
    tree.SetFocusedItem(b);
    CountedItem* fresh = new CountedItem("fresh");
    tree.ReplaceItem(b, fresh);
    EXPECT_EQ(fresh, a->GetSibling());
    EXPECT_EQ(c, fresh->GetSibling());
    EXPECT_EQ(fresh, a->GetNextVisible());
    EXPECT_EQ(c, fresh->GetNextVisible());
    EXPECT_EQ(fresh, tree.GetFocusedItem());
    EXPECT_EQ(&tree, fresh->GetItemOwner());
    EXPECT_EQ(4, CountedItem::s_live);   // the old row is the caller's now
    delete b;
}

TEST_F(TreeWindowTest, ReplaceItemsByFlag)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    CKelPropertyTreeItem* b = Add("b");
    CountedItem* other = new CountedItem("other");
    tree.ReplaceItems(a, other, KPRF_DELETE);
    EXPECT_EQ(other, tree.GetRootItem()->GetChild());
    EXPECT_EQ(b, other->GetSibling());
    EXPECT_EQ(a1, other->GetChild());
    EXPECT_EQ(other, a1->GetParent());
    EXPECT_TRUE(CountedItem::s_destroyed.count(a));
    CountedItem* second = new CountedItem("second");
    tree.ReplaceItems(b, second, KPRF_DETACH);
    EXPECT_EQ(nullptr, b->GetParent());
    EXPECT_EQ(nullptr, b->GetSibling());
    EXPECT_EQ(second, other->GetSibling());
    delete b;
    CountedItem* third = new CountedItem("third");
    tree.ReplaceItems(second, third, KPRF_KEEP);
    ASSERT_EQ(1u, tree.GetReplacedItems().size());
    EXPECT_EQ(second, tree.GetReplacedItems()[0]);
    tree.DeleteAllItems();
    EXPECT_EQ(0, CountedItem::s_live);
    EXPECT_TRUE(tree.GetReplacedItems().empty());
}

TEST_F(TreeWindowTest, ChangeParentAppendsExpandsAndRecomputes)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* a1 = Add("a1", a);
    CKelPropertyTreeItem* a2 = Add("a2", a);
    CKelPropertyTreeItem* b = Add("b");
    CKelPropertyTreeItem* b1 = Add("b1", b);
    tree.ChangeParent(a1, b);
    EXPECT_EQ(a2, a->GetChild());
    EXPECT_EQ(a1, b1->GetSibling());
    EXPECT_EQ(b, a1->GetParent());
    EXPECT_TRUE(b->IsExpanded());
    tree.ChangeParent(a1, b);   // unchanged parent: nothing
    EXPECT_EQ(a1, b1->GetSibling());
}

namespace
{
std::string Chain(CKelPropertyTreeItem* first)
{
    std::string s;
    for (CKelPropertyTreeItem* p = first; p; p = p->GetSibling())
        s += p->GetLabelText().GetString();
    return s;
}
}

TEST_F(TreeWindowTest, MoveItemBeforeAndAfter)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    CKelPropertyTreeItem* c = Add("c");
    CKelPropertyTreeItem* d = Add("d");
    tree.MoveItem(d, a, 1);
    EXPECT_EQ("dabc", Chain(tree.GetRootItem()->GetChild()));
    tree.MoveItem(d, c, 0);
    EXPECT_EQ("abcd", Chain(tree.GetRootItem()->GetChild()));
    // Right before the destination, before is turned into after: a swap.
    tree.MoveItem(a, b, 1);
    EXPECT_EQ("bacd", Chain(tree.GetRootItem()->GetChild()));
    // After asked, already right behind: nothing.
    tree.MoveItem(a, b, 0);
    EXPECT_EQ("bacd", Chain(tree.GetRootItem()->GetChild()));
    tree.MoveItem(a, a, 1);
    tree.MoveItem(nullptr, a, 1);
    EXPECT_EQ("bacd", Chain(tree.GetRootItem()->GetChild()));
}

TEST_F(TreeWindowTest, MoveItemObeysTheDestinationDragFlags)
{
    CKelPropertyTreeItem* a = Add("a");
    CKelPropertyTreeItem* b = Add("b");
    CKelPropertyTreeItem* c = Add("c");
    CKelPropertyTreeItem* d = Add("d");
    b->SetDragFlags(8);   // drops only after b
    tree.MoveItem(d, b, 1);
    EXPECT_EQ("abcd", Chain(tree.GetRootItem()->GetChild()));
    tree.MoveItem(d, b, 0);
    EXPECT_EQ("abdc", Chain(tree.GetRootItem()->GetChild()));
    a->SetDragFlags(4);   // before is allowed and turns into after
    tree.MoveItem(c, a, 1);
    EXPECT_EQ("acbd", Chain(tree.GetRootItem()->GetChild()));
    a->SetDragFlags(4 | 8);   // both bits: nothing is allowed
    tree.MoveItem(d, a, 0);
    tree.MoveItem(d, a, 1);
    EXPECT_EQ("acbd", Chain(tree.GetRootItem()->GetChild()));
}

TEST_F(TreeWindowTest, SiblingsAndNearbyRows)
{
    CKelPropertyTreeItem* top = Add("top");
    CKelPropertyTreeItem* a = Add("a", top);
    CKelPropertyTreeItem* b = Add("b", top);
    CKelPropertyTreeItem* c = Add("c", top);
    EXPECT_EQ(a, tree.GetFirstSibling(c));
    EXPECT_EQ(c, tree.GetLastSibling(a));
    EXPECT_EQ(a, tree.GetNearbyItem(b, NEARBY_PREV_NEXT_PARENT));
    EXPECT_EQ(b, tree.GetNearbyItem(a, NEARBY_PREV_NEXT_PARENT));
    EXPECT_EQ(c, tree.GetNearbyItem(b, NEARBY_NEXT));
    EXPECT_EQ(nullptr, tree.GetNearbyItem(c, NEARBY_NEXT));
    EXPECT_EQ(top, tree.GetNearbyItem(a, NEARBY_PREV_PARENT));
    EXPECT_EQ(nullptr, tree.GetNearbyItem(top, NEARBY_PREV_PARENT));   // the root is not a row
}
