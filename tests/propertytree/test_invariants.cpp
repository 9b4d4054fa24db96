// Long random sequences of insertions, deletions, moves and replacements, with the tree's
// link invariants and the rows' lifetimes checked after every step.
#include <gtest/gtest.h>

#include "pttest.h"

#include <random>

using pttest::CountedItem;

namespace
{
// Walks the tree from the root; fails on a wrong parent link, a cycle or a foreign owner.
void CheckLinks(CKelPropertyTree& tree, CKelPropertyTreeItem* parent, std::set<CKelPropertyTreeItem*>& seen,
                std::set<unsigned>& ids)
{
    for (CKelPropertyTreeItem* p = parent->GetChild(); p; p = p->GetSibling())
    {
        ASSERT_TRUE(seen.insert(p).second) << "row reached twice";
        ASSERT_EQ(parent, p->GetParent());
        ASSERT_EQ(&tree, p->GetItemOwner());
        ASSERT_TRUE(ids.insert(p->GetCtrlID()).second) << "control number used twice";
        CheckLinks(tree, p, seen, ids);
    }
}

std::vector<CKelPropertyTreeItem*> AllRows(CKelPropertyTreeItem* root)
{
    CKelPropertyTreeItemAll all(root->GetChild());
    std::vector<CKelPropertyTreeItem*> rows;
    for (CKelPropertyTreeItem* p = all.GetFirst(); p; p = all.GetNext())
        rows.push_back(p);
    return rows;
}
}

TEST(TreeInvariants, RandomEditsKeepLinksAndDestroyEveryRowOnce)
{
    CountedItem::Reset();
    std::mt19937 random(20261122);
    {
        CKelPropertyTree tree;
        for (int step = 0; step < 3000; ++step)
        {
            std::vector<CKelPropertyTreeItem*> rows = AllRows(tree.GetRootItem());
            auto pick = [&]() -> CKelPropertyTreeItem* {
                if (rows.empty())
                    return nullptr;
                return rows[std::uniform_int_distribution<size_t>(0, rows.size() - 1)(random)];
            };
            const int op = std::uniform_int_distribution<int>(0, 9)(random);
            if (op < 4 || rows.size() < 3)
                tree.InsertItem(new CountedItem("row"), pick());
            else if (op == 4)
                tree.DeleteItem(pick());
            else if (op == 5)
            {
                CKelPropertyTreeItem* a = pick();
                tree.MoveItem(a, tree.GetLastSibling(a), std::uniform_int_distribution<int>(0, 1)(random));
            }
            else if (op == 6)
                tree.ChangeParent(pick(), pick());
            else if (op == 7)
            {
                CKelPropertyTreeItem* old = pick();
                CountedItem* fresh = new CountedItem("fresh");
                tree.InsertItem(fresh, nullptr);
                tree.ReplaceItems(old, fresh, std::uniform_int_distribution<int>(0, 1)(random) ? KPRF_DELETE
                                                                                                : KPRF_KEEP);
            }
            else if (op == 8)
                pick()->DeleteItem(1, 0);
            else
                tree.DeleteMarked();

            std::set<CKelPropertyTreeItem*> seen;
            std::set<unsigned> ids;
            CheckLinks(tree, tree.GetRootItem(), seen, ids);
            ASSERT_EQ(static_cast<int>(seen.size() + tree.GetReplacedItems().size()), CountedItem::s_live)
                << "step " << step << " op " << op;
            ASSERT_EQ(0, CountedItem::s_doubleDestroyed);
        }
        EXPECT_GT(CountedItem::s_made, 1000);
    }
    EXPECT_EQ(0, CountedItem::s_live);
    EXPECT_EQ(0, CountedItem::s_doubleDestroyed);
    EXPECT_EQ(CountedItem::s_made, CountedItem::s_destroyedCount);
}
