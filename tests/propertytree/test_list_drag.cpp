// Drag and drop of rows on the list surface: picking up by the label, the destination under
// the mouse, the timers, the drop notification and the cursors.
#include "ptlist.h"

using pttest::CountedItem;
using pttest::ListFixture;

namespace
{
struct DragTest : ListFixture
{
    CKelPropertyTreeItem* top = nullptr;
    CKelPropertyTreeItem* src = nullptr;
    CKelPropertyTreeItem* dst = nullptr;
    CKelPropertyTreeItem* group = nullptr;
    CKelPropertyTreeItem* inner = nullptr;
    void SetUp() override
    {
        ListFixture::SetUp();
        top = Add("Top");
        src = Add("source", top, 7);
        dst = Add("destination", top, 7);
        group = Add("group", top, 9);
        inner = Add("inner", group, 7);
        top->Expand(1);
        src->AllowDragAndDropForThisItem(true);
        Paint();
        Clear();
    }
    void Move(CPoint pt) { Send(WM_MOUSEMOVE, MK_LBUTTON, pt); }
};

// A host that refuses drops on rows of one res ID.
class RefusingTree : public CKelPropertyTree
{
public:
    int refusedResID = -1;
    bool EvaluateDragAndDrop(CKelPropertyTreeItem* pItem) override { return pItem->GetResID() != refusedResID; }
};
}

TEST_F(DragTest, ALabelPressPicksTheRowUpAndAReleaseOnAnotherRowDropsIt)
{
    Press(LabelPoint(src));
    EXPECT_TRUE(list->IsDestinationMode());
    EXPECT_TRUE(list->IsLabelClickStartedDrag());
    EXPECT_EQ(src, list->GetSourceItem());
    Move(LabelPoint(dst));
    EXPECT_TRUE(list->IsDragCaptured());
    EXPECT_EQ(list->m_hWnd, ::GetCapture());
    EXPECT_EQ(dst, list->GetDestinationItem());
    Clear();
    const CPoint at = LabelPoint(dst);
    Release(at);
    ExpectCodes({PTN_DROP});
    EXPECT_EQ(dst, parent.items.back());
    EXPECT_EQ(at, CPoint(dst->GetDragAndDropHitPoint()));
    EXPECT_FALSE(list->IsDestinationMode());
    EXPECT_FALSE(list->IsDragCaptured());
    EXPECT_EQ(nullptr, ::GetCapture());
    // Same parent and res ID: the source ends selected and focused.
    EXPECT_EQ(src, tree.GetFocusedItem());
    EXPECT_TRUE(src->IsSelected());
    // The tree does not move rows itself.
    EXPECT_EQ(src, top->GetChild());
}

TEST_F(DragTest, ADropOnARowOfAnotherParentNamesThatRowAndKeepsThePressSelection)
{
    group->Expand(1);
    Paint();
    Press(LabelPoint(src));   // the press itself selected the source
    ASSERT_EQ(src, tree.GetFocusedItem());
    Move(LabelPoint(inner));
    Clear();
    Release(LabelPoint(inner));
    ExpectCodes({PTN_DROP});
    EXPECT_EQ(inner, parent.items.back());
    EXPECT_EQ(src, tree.GetFocusedItem());
    EXPECT_FALSE(inner->IsSelected());
    EXPECT_EQ(group, inner->GetParent());
}

TEST_F(DragTest, EscapeDuringADragReleasesTheMouseAndTellsNoOne)
{
    Press(LabelPoint(src));
    Move(CPoint(LabelPoint(dst).x, Client().bottom - 2));
    ASSERT_TRUE(list->IsAutoscrollRunning());
    Clear();
    Key(VK_ESCAPE);
    ExpectCodes({});
    EXPECT_FALSE(list->IsDestinationMode());
    EXPECT_FALSE(list->IsDragCaptured());
    EXPECT_EQ(nullptr, list->GetDestinationItem());
    EXPECT_EQ(nullptr, ::GetCapture());
    EXPECT_FALSE(list->IsAutoscrollRunning());
    Release(LabelPoint(dst));
    ExpectCodes({});
}

TEST_F(DragTest, APickUpThatNeverMovedEndsWithoutADrop)
{
    Press(LabelPoint(src));
    Clear();
    Release(LabelPoint(src));
    EXPECT_FALSE(list->IsDestinationMode());
    ExpectCodes({});
}

TEST_F(DragTest, APressWhilePickedUpEndsTheDrag)
{
    Press(LabelPoint(src));
    Release(LabelPoint(src));
    ASSERT_FALSE(list->IsDestinationMode());
    ASSERT_TRUE(list->Prepare2GetDestinationItem(src));
    list->DragDropDestinationSelect(dst);
    Clear();
    Press(LabelPoint(dst));
    ExpectCodes({PTN_DROP});
    EXPECT_FALSE(list->IsDestinationMode());
}

TEST_F(DragTest, LockedDragAndDropPicksNothingUp)
{
    tree.LockDragDrop(1);
    Press(LabelPoint(src));
    EXPECT_FALSE(list->IsDestinationMode());
    EXPECT_FALSE(list->Prepare2GetDestinationItem(src));
}

TEST_F(DragTest, NearTheEdgesTheRowsScrollByTheTimer)
{
    for (int i = 0; i < 30; ++i)
        Add("filler", top);
    Paint();
    Press(LabelPoint(src));
    const CRect client = Client();
    Move(CPoint(50, client.bottom - 3));
    EXPECT_TRUE(list->IsAutoscrollRunning());
    EXPECT_EQ(2, list->GetAutoscrollDirection());
    list->SendMessage(WM_TIMER, CKelPropertyTreeList::AUTOSCROLL_TIMER, 0);
    EXPECT_EQ(21, V());
    Move(CPoint(50, client.top + 3));
    EXPECT_EQ(1, list->GetAutoscrollDirection());
    list->SendMessage(WM_TIMER, CKelPropertyTreeList::AUTOSCROLL_TIMER, 0);
    EXPECT_EQ(0, V());
    Move(CPoint(50, client.CenterPoint().y));
    EXPECT_FALSE(list->IsAutoscrollRunning());
    EXPECT_EQ(0, list->GetAutoscrollDirection());
    Key(VK_ESCAPE);
}

TEST_F(DragTest, RowsThatFitDoNotAutoscroll)
{
    Press(LabelPoint(src));
    Move(CPoint(50, Client().bottom - 3));
    list->SendMessage(WM_TIMER, CKelPropertyTreeList::AUTOSCROLL_TIMER, 0);
    EXPECT_EQ(0, V());
    Key(VK_ESCAPE);
}

TEST_F(DragTest, HoldingOverARowExpandsItWhenItsAutoExpandIsOn)
{
    Press(LabelPoint(src));
    Move(LabelPoint(group));
    ASSERT_EQ(group, list->GetDestinationItem());
    list->SendMessage(WM_TIMER, CKelPropertyTreeList::DRAG_EXPAND_TIMER, 0);
    EXPECT_TRUE(group->IsExpanded());
    EXPECT_TRUE(tree.IsItemOnVisibleList(inner));
    group->Expand(0);
    group->SetAutoExpandOnDragAndDrop(false);
    list->SendMessage(WM_TIMER, CKelPropertyTreeList::DRAG_EXPAND_TIMER, 0);
    EXPECT_FALSE(group->IsExpanded());
    Key(VK_ESCAPE);
}

TEST_F(DragTest, TheCursorRefusesNoRowAndGivesTheArrowOutsideModuleSeven)
{
    EXPECT_FALSE(list->EvaluateCursorStyle(nullptr));
    EXPECT_EQ(list->GetCursorHandle(0), ::GetCursor());
    ASSERT_TRUE(list->Prepare2GetDestinationItem(src));
    EXPECT_TRUE(list->EvaluateCursorStyle(dst));
    EXPECT_EQ(list->GetCursorHandle(3), ::GetCursor());
    list->ReleaseDestinationItem();
}

TEST_F(DragTest, DragCursorsComeFromTheLibrarysResources)
{
    HMODULE library = ::GetModuleHandleA("KelWinCtrl.dll");
    ASSERT_NE(nullptr, library);
    const int ids[3] = {106, 105, 113};
    for (int i = 0; i < 3; ++i)
    {
        HCURSOR own = ::LoadCursor(library, MAKEINTRESOURCE(ids[i]));
        ASSERT_NE(nullptr, own) << ids[i];
        EXPECT_EQ(own, list->GetCursorHandle(i)) << ids[i];
        ICONINFO info = {};
        ASSERT_TRUE(::GetIconInfo(own, &info));
        EXPECT_FALSE(info.fIcon);
        BITMAP bm = {};
        ::GetObject(info.hbmMask, sizeof(bm), &bm);
        EXPECT_EQ(32, bm.bmWidth);
        if (info.hbmMask)
            ::DeleteObject(info.hbmMask);
        if (info.hbmColor)
            ::DeleteObject(info.hbmColor);
    }
    EXPECT_NE(list->GetCursorHandle(0), list->GetCursorHandle(1));
    EXPECT_NE(list->GetCursorHandle(1), list->GetCursorHandle(2));
}

namespace
{
struct ModuleSevenDragTest : DragTest
{
    KEL_ML_TREE_USED_AT_MODULE_ID Module() const override { return KEL_ML_TREE_MODULE_7; }
};
}

TEST_F(ModuleSevenDragTest, TheCursorTellsADropAsSiblingFromADropInto)
{
    ASSERT_TRUE(list->Prepare2GetDestinationItem(src));
    // Same parent, same res ID: a sibling.
    EXPECT_TRUE(list->EvaluateCursorStyle(dst));
    EXPECT_EQ(list->GetCursorHandle(2), ::GetCursor());
    // Same parent, other res ID: into.
    EXPECT_TRUE(list->EvaluateCursorStyle(group));
    EXPECT_EQ(list->GetCursorHandle(1), ::GetCursor());
    // Other parent: a sibling when the source's res ID is the row's parent's.
    group->SetResID(7);
    EXPECT_TRUE(list->EvaluateCursorStyle(inner));
    EXPECT_EQ(list->GetCursorHandle(2), ::GetCursor());
    group->SetResID(9);
    EXPECT_TRUE(list->EvaluateCursorStyle(inner));
    EXPECT_EQ(list->GetCursorHandle(1), ::GetCursor());
    list->ReleaseDestinationItem();
}

TEST(DragRefusal, ARowTheHostRefusesIsNoDestination)
{
    pttest::RecordingParent parent;
    ASSERT_TRUE(parent.CreateParent());
    {
        RefusingTree tree;
        ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE | PTS_NOTIFY, CRect(0, 0, 300, 200), &parent, 5));
        tree.SetPopulated(1);
        CKelPropertyTreeItem* top = tree.InsertItem(new CountedItem("Top"));
        CKelPropertyTreeItem* src = tree.InsertItem(new CountedItem("source", 1), top);
        CKelPropertyTreeItem* no = tree.InsertItem(new CountedItem("refused", 3), top);
        top->Expand(1);
        tree.refusedResID = 3;
        src->AllowDragAndDropForThisItem(true);
        CKelPropertyTreeList* list = tree.GetCtrlParent();
        list->Invalidate();
        list->UpdateWindow();
        auto at = [&](CKelPropertyTreeItem* r) {
            return MAKELPARAM(r->GetLabelHorizOffset() + 3, r->GetLocation().y - tree.GetOrigin().y + 10);
        };
        list->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, at(src));
        list->SendMessage(WM_MOUSEMOVE, MK_LBUTTON, at(no));
        EXPECT_EQ(nullptr, list->GetDestinationItem());
        EXPECT_EQ(list->GetCursorHandle(0), ::GetCursor());
        parent.codes.clear();
        list->SendMessage(WM_LBUTTONUP, 0, at(no));
        EXPECT_TRUE(parent.codes.empty());
        EXPECT_EQ(nullptr, ::GetCapture());
        tree.DestroyWindow();
    }
    parent.DestroyWindow();
}

TEST_F(DragTest, LosingTheMouseToAnotherWindowEndsTheDragWithoutADrop)
{
    Press(LabelPoint(src));
    Move(LabelPoint(dst));
    ASSERT_TRUE(list->IsDragCaptured());
    ::SetCapture(parent.m_hWnd);
    EXPECT_FALSE(list->IsDragCaptured());
    EXPECT_FALSE(list->IsDestinationMode());
    ::ReleaseCapture();
    Clear();
    Release(LabelPoint(dst));
    ExpectCodes({});
}
