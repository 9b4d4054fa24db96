// The fixture of the tree window tests: a tree with the notify style in a recording parent.
#pragma once
#include <gtest/gtest.h>

#include "pttest.h"
#include "testsupport.h"

namespace pttest
{
struct TreeWindowTest : ::testing::Test
{
    RecordingParent parent;
    CKelPropertyTree tree;
    void SetUp() override
    {
        CountedItem::Reset();
        ASSERT_TRUE(parent.CreateParent());
        ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE | PTS_NOTIFY, CRect(0, 0, 300, 200), &parent, 1234));
    }
    void TearDown() override
    {
        parent.onNotify = nullptr;   // it may hold references to the test's locals
        tree.DeleteAllItems();
        tree.DestroyWindow();
        parent.DestroyWindow();
        kel_test::PumpPending();
    }
    CountedItem* Add(const char* label, CKelPropertyTreeItem* p = nullptr, int resID = 0)
    {
        return static_cast<CountedItem*>(tree.InsertItem(new CountedItem(label, resID), p));
    }
    void ExpectCodes(const std::vector<unsigned>& expected)
    {
        EXPECT_EQ(expected, parent.codes) << "expected: " << Codes(expected) << "\nseen:     " << Codes(parent.codes);
    }
    void Clear()
    {
        parent.codes.clear();
        parent.items.clear();
    }
};
}
