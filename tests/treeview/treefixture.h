// A tree window of the engine inside a parent that records and can veto notifications.
#pragma once
#include "rgtreemodel.h"
#include "treeview.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace kel_tree_test
{
// What the parent window saw of the tree's notifications, and what it answers.
struct NotifyRecord
{
    UINT code;
    UINT action;
    HTREEITEM oldItem;
    HTREEITEM newItem;
};

struct TreeParentState
{
    std::vector<NotifyRecord> notifications;
    std::vector<HTREEITEM> deleted;     // TVN_DELETEITEM in order
    bool vetoSelChanging = false;
    bool vetoExpanding = false;
    LRESULT answerSelChanging() const { return vetoSelChanging ? 1 : 0; }
    void clear()
    {
        notifications.clear();
        deleted.clear();
    }
    size_t count(UINT code) const
    {
        size_t n = 0;
        for (const NotifyRecord& r : notifications)
            n += r.code == code ? 1 : 0;
        return n;
    }
};

// A parent window and one engine tree in it; destroyed with the fixture.
class TreeTest : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    // Creates the tree; a height in whole rows keeps the arithmetic readable.
    void MakeTree(int clientHeight = 200, DWORD style = WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS);

    HTREEITEM Insert(HTREEITEM parent, HTREEITEM after, const char* text, UINT state = 0);
    HTREEITEM Next(UINT code, HTREEITEM item) const;
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const;
    RGTreeWindow* W() const { return RGTreeFromWindow(tree); }
    static RGTreeItem* I(HTREEITEM h) { return reinterpret_cast<RGTreeItem*>(h); }
    UINT State(HTREEITEM item) const;
    int Rows() const { return static_cast<int>(Send(TVM_GETVISIBLECOUNT, 0, 0)); }

    HWND parent = nullptr;
    HWND tree = nullptr;
    TreeParentState state;
};
}
