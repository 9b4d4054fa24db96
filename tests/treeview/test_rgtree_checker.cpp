// A long random run over the tree engine with a checker of the model's invariants after
// every operation: row count, top row index, first row, item count, single selection and
// exactly one TVN_DELETEITEM per removed item.
#include "treefixture.h"

#include <stdio.h>
#include <string.h>

#include <chrono>
#include <random>
#include <unordered_map>
#include <unordered_set>

using kel_tree_test::TreeTest;

namespace
{
class RGTreeChecker : public TreeTest
{
protected:
    // Handles the test believes alive, with their positions in `order` for O(1) removal.
    std::vector<HTREEITEM> order;
    std::unordered_map<HTREEITEM, size_t> position;

    void AddLive(HTREEITEM h)
    {
        position[h] = order.size();
        order.push_back(h);
    }
    void RemoveLive(HTREEITEM h)
    {
        auto it = position.find(h);
        ASSERT_NE(it, position.end()) << "deleted an item that was not alive";
        const size_t index = it->second;
        position.erase(it);
        if (index + 1 != order.size())
        {
            order[index] = order.back();
            position[order[index]] = index;
        }
        order.pop_back();
    }

    // The items of a subtree (with its root), in any order.
    std::vector<HTREEITEM> Subtree(RGTreeItem* top)
    {
        std::vector<HTREEITEM> items;
        std::vector<RGTreeItem*> stack = {top};
        while (!stack.empty())
        {
            RGTreeItem* item = stack.back();
            stack.pop_back();
            items.push_back(reinterpret_cast<HTREEITEM>(item));
            for (RGTreeItem* child = item->firstChild; child; child = child->next)
                stack.push_back(child);
        }
        return items;
    }

    // Recounts everything from the links and compares with what the engine keeps.
    void CheckInvariants(const char* what, int step)
    {
        RGTreeWindow* w = W();
        RGTreeItem* root = &w->store.root;
        int total = 0, rows = 0, rowsAboveFirst = -1, selectedFlags = 0;
        RGTreeItem* flagged = nullptr;
        // Pre-order walk over all items; `shown` tells whether the item is a row.
        struct Frame
        {
            RGTreeItem* item;
            bool shown;
        };
        std::vector<Frame> stack;
        std::vector<RGTreeItem*> children;
        auto pushChildren = [&](RGTreeItem* parent, bool shown) {
            int count = 0;
            RGTreeItem* previous = nullptr;
            children.clear();
            for (RGTreeItem* child = parent->firstChild; child; child = child->next)
            {
                ASSERT_EQ(child->parent, parent) << what << " at step " << step;
                ASSERT_EQ(child->prev, previous) << what << " at step " << step;
                previous = child;
                children.push_back(child);
                ++count;
            }
            ASSERT_EQ(parent->lastChild, previous) << what << " at step " << step;
            ASSERT_EQ(parent->childCount, count) << what << " at step " << step;
            for (auto it = children.rbegin(); it != children.rend(); ++it)
                stack.push_back({*it, shown});
        };
        pushChildren(root, true);
        while (!stack.empty())
        {
            Frame frame = stack.back();
            stack.pop_back();
            ++total;
            ASSERT_TRUE(position.count(reinterpret_cast<HTREEITEM>(frame.item)))
                << "an item the test never inserted or already saw deleted, " << what << " at step " << step;
            if (frame.item->data.state & TVIS_SELECTED)
            {
                ++selectedFlags;
                flagged = frame.item;
            }
            if (frame.shown)
            {
                if (frame.item == w->firstVisible)
                    rowsAboveFirst = rows;
                ++rows;
            }
            pushChildren(frame.item, frame.shown && (frame.item->data.state & TVIS_EXPANDED));
        }
        ASSERT_EQ(w->store.totalCount, total) << what << " at step " << step;
        ASSERT_EQ(static_cast<size_t>(total), order.size()) << what << " at step " << step;
        ASSERT_EQ(w->visibleCount, rows) << what << " at step " << step;
        ASSERT_EQ(w->firstVisible == nullptr, rows == 0) << what << " at step " << step;
        if (w->firstVisible)
        {
            ASSERT_GE(rowsAboveFirst, 0) << "first visible item is not a row, " << what << " at step " << step;
            ASSERT_EQ(w->firstVisibleIndex, rowsAboveFirst) << what << " at step " << step;
        }
        ASSERT_LE(selectedFlags, 1) << what << " at step " << step;
        if (selectedFlags == 1)
        {
            ASSERT_EQ(flagged, w->selected) << what << " at step " << step;
        }
        if (w->selected)
        {
            ASSERT_TRUE(position.count(reinterpret_cast<HTREEITEM>(w->selected))) << what << " at step " << step;
        }
    }
};
} // namespace

TEST_F(RGTreeChecker, RandomOperationsKeepInvariants)
{
    // A hidden tree: the model and its scroll bookkeeping run in full, without a screen to paint.
    ShowWindow(parent, SW_HIDE);
    MakeTree(203, WS_CHILD | TVS_HASBUTTONS);
    std::mt19937 rng(20261122u);
    auto pick = [&](size_t n) { return static_cast<size_t>(std::uniform_int_distribution<size_t>(0, n - 1)(rng)); };
    auto chance = [&](int percent) { return static_cast<int>(pick(100)) < percent; };
    auto randomItem = [&]() -> HTREEITEM { return order.empty() ? nullptr : order[pick(order.size())]; };

    const int kSteps = 50000;
    const size_t kMaxItems = 5000;
    int counts[12] = {};
    size_t largest = 0;
    char text[32];
    const auto start = std::chrono::steady_clock::now();
    for (int step = 0; step < kSteps; ++step)
    {
        if (step % 997 == 0)
            state.vetoSelChanging = chance(30);
        state.deleted.clear();
        const int dice = static_cast<int>(pick(100));
        const char* what = "";
        // Grow toward the limit first, then hover below it.
        const bool wantInsert = order.size() < 50 || (order.size() < kMaxItems && dice < 55);
        if (wantInsert)
        {
            what = "insert";
            ++counts[0];
            TVINSERTSTRUCTA ins = {};
            HTREEITEM parentItem = chance(10) ? TVI_ROOT : randomItem();
            RGTreeItem* parentRecord = parentItem == TVI_ROOT || !parentItem ? &W()->store.root : I(parentItem);
            ins.hParent = parentItem;
            const int where = static_cast<int>(pick(4));
            if (where == 0)
                ins.hInsertAfter = TVI_FIRST;
            else if (where == 1 || !parentRecord->firstChild)
                ins.hInsertAfter = TVI_LAST;
            else
            {
                // A random sibling below the same parent.
                RGTreeItem* sibling = parentRecord->firstChild;
                for (size_t k = pick(static_cast<size_t>(parentRecord->childCount)); k > 0; --k)
                    sibling = sibling->next;
                ins.hInsertAfter = reinterpret_cast<HTREEITEM>(sibling);
            }
            snprintf(text, sizeof(text), "n%u", static_cast<unsigned>(pick(100000)));
            ins.item.mask = TVIF_TEXT | TVIF_STATE;
            ins.item.pszText = text;
            ins.item.state = chance(20) ? TVIS_EXPANDED : 0;
            HTREEITEM h = reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&ins)));
            ASSERT_NE(h, nullptr);
            AddLive(h);
        }
        else if (dice < 65)
        {
            what = "delete";
            ++counts[1];
            const bool all = pick(2000) == 0;
            // The smallest of three random subtrees, so that the tree can grow to its limit.
            HTREEITEM victim = all ? TVI_ROOT : randomItem();
            for (int tries = 0; !all && tries < 2; ++tries)
            {
                HTREEITEM other = randomItem();
                if (Subtree(I(other)).size() < Subtree(I(victim)).size())
                    victim = other;
            }
            std::vector<HTREEITEM> expected;
            if (all)
            {
                for (RGTreeItem* top = W()->store.root.firstChild; top; top = top->next)
                {
                    std::vector<HTREEITEM> part = Subtree(top);
                    expected.insert(expected.end(), part.begin(), part.end());
                }
            }
            else
                expected = Subtree(I(victim));
            Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(victim));
            // Every removed item was told once, and only those.
            ASSERT_EQ(state.deleted.size(), expected.size()) << "step " << step;
            std::unordered_set<HTREEITEM> expectedSet(expected.begin(), expected.end());
            for (HTREEITEM gone : state.deleted)
            {
                ASSERT_EQ(expectedSet.erase(gone), 1u) << "TVN_DELETEITEM twice or for a stranger, step " << step;
                RemoveLive(gone);
            }
        }
        else if (dice < 72)
        {
            what = "expand";
            ++counts[2];
            Send(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(randomItem()));
        }
        else if (dice < 80)
        {
            what = "collapse";
            ++counts[3];
            Send(TVM_EXPAND, TVE_COLLAPSE, reinterpret_cast<LPARAM>(randomItem()));
        }
        else if (dice < 83)
        {
            what = "toggle with notifications";
            ++counts[4];
            RGTreeExpandItem(W(), TVE_TOGGLE, I(randomItem()), true);
        }
        else if (dice < 85)
        {
            what = "sort";
            ++counts[5];
            HTREEITEM level = chance(20) ? TVI_ROOT : randomItem();
            Send(TVM_SORTCHILDREN, 0, reinterpret_cast<LPARAM>(level));
            RGTreeItem* parentRecord = level == TVI_ROOT ? &W()->store.root : I(level);
            for (RGTreeItem* child = parentRecord->firstChild; child && child->next; child = child->next)
                ASSERT_LE(_stricmp(child->data.text, child->next->data.text), 0) << "step " << step;
        }
        else if (dice < 93)
        {
            what = "select";
            ++counts[6];
            Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(chance(3) ? nullptr : randomItem()));
        }
        else if (dice < 95)
        {
            what = "first visible";
            ++counts[7];
            Send(TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(randomItem()));
        }
        else if (dice < 97)
        {
            what = "set expanded state";
            ++counts[8];
            TVITEMA tvi = {};
            tvi.mask = TVIF_STATE;
            tvi.hItem = randomItem();
            tvi.stateMask = TVIS_EXPANDED | TVIS_BOLD;
            tvi.state = chance(50) ? TVIS_EXPANDED : TVIS_BOLD;
            ASSERT_EQ(Send(TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&tvi)), 0);
        }
        else if (dice < 99)
        {
            what = "ensure visible";
            ++counts[9];
            Send(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(randomItem()));
        }
        else
        {
            what = "redraw switch";
            ++counts[10];
            Send(WM_SETREDRAW, W()->redrawEnabled ? FALSE : TRUE, 0);
        }
        largest = order.size() > largest ? order.size() : largest;
        CheckInvariants(what, step);
        if (HasFatalFailure())
            return;
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    printf("model checker: %d operations, largest tree %u items, %.1f s\n", kSteps, static_cast<unsigned>(largest),
           seconds);
    printf("  inserts %d, deletes %d, expands %d, collapses %d, toggles %d, sorts %d, selects %d,\n"
           "  first-visible %d, set-state %d, ensure-visible %d, redraw switches %d\n",
           counts[0], counts[1], counts[2], counts[3], counts[4], counts[5], counts[6], counts[7], counts[8],
           counts[9], counts[10]);
    EXPECT_GE(largest, kMaxItems - 200);
    // Tear down through the window: every remaining item is told once.
    state.deleted.clear();
    const size_t remaining = order.size();
    DestroyWindow(tree);
    tree = nullptr;
    EXPECT_EQ(state.deleted.size(), remaining);
}
