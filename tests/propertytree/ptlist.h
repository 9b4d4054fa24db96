// Fixture of the list surface tests: a populated tree in a recording parent, painting through
// real WM_PAINT and WM_PRINTCLIENT messages, and presses at the rectangles painting wrote.
#pragma once
#include <gtest/gtest.h>

#include "dibsurface.h"
#include "pttest.h"
#include "testsupport.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace pttest
{
// A row whose value fills the value column with one colour and reports a text width.
class PaintedValueItem : public ValueItem
{
public:
    explicit PaintedValueItem(const char* label = "", int resID = 0, COLORREF colour = RGB(255, 0, 0),
                              int width = 40)
        : ValueItem(label, resID), m_colour(colour), m_width(width)
    {
    }
    void DrawAttribute(CDC* pDC, const RECT& rc) override
    {
        ++draws;
        pDC->FillSolidRect(&rc, m_colour);
        if (GetItemOwner())
            GetItemOwner()->SetInfoColMaxVisibleWidth(m_width);
    }
    int draws = 0;

private:
    COLORREF m_colour;
    int m_width;
};

// An edit of the test's own, laid over the value column of an EditingItem while it is active.
class TestEdit : public CEdit
{
public:
    CKelPropertyTreeItem* row = nullptr;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

// A row that opens a real child edit on activation and commits when the edit loses the focus.
class EditingItem : public ValueItem
{
public:
    explicit EditingItem(const char* label = "", int resID = 0) : ValueItem(label, resID) { SetIdentifier(ITEM_TYPE_EDIT); }
    ~EditingItem() override;
    void OnActivate() override;
    void OnCommit(int& notify) override;
    TestEdit edit;
};

class ListFixture : public ::testing::Test
{
protected:
    RecordingParent parent;
    CKelPropertyTree tree;
    CKelPropertyTreeList* list = nullptr;

    virtual KEL_ML_TREE_USED_AT_MODULE_ID Module() const { return KEL_ML_TREE_MODULE_0; }
    void SetUp() override;
    void TearDown() override;

    CountedItem* Add(const char* label, CKelPropertyTreeItem* p = nullptr, int resID = 0);
    PaintedValueItem* AddValue(const char* label, CKelPropertyTreeItem* p, COLORREF colour = RGB(255, 0, 0));
    // A real WM_PAINT of the whole list.
    void Paint();
    // The list painted by WM_PRINTCLIENT into a DIB of its client size.
    std::unique_ptr<kel_test::DibSurface> Render();
    CRect Client() const;
    CRect Inner() const;   // the client inset by 2: the area rows are drawn into
    long V() const { return tree.GetOrigin().y; }
    long H() const { return tree.GetOriginOffsetHorz(); }
    long C() const { return tree.GetColumn(); }
    long Top(CKelPropertyTreeItem* item) const { return item->GetLocation().y - V(); }

    // Points on the parts of a row as painting wrote them, in list client coordinates.
    CPoint LabelPoint(CKelPropertyTreeItem* item) const;
    CPoint ValuePoint(CKelPropertyTreeItem* item) const;
    CPoint ExpandPoint(CKelPropertyTreeItem* item) const;
    CPoint SwitchPoint(CKelPropertyTreeItem* item) const;
    CPoint SpecialButtonPoint(CKelPropertyTreeItem* item) const;

    LRESULT Send(UINT message, WPARAM wParam, CPoint pt);
    void Press(CPoint pt, WPARAM keys = MK_LBUTTON) { Send(WM_LBUTTONDOWN, keys, pt); }
    void Release(CPoint pt) { Send(WM_LBUTTONUP, 0, pt); }
    void Click(CPoint pt)
    {
        Press(pt);
        Release(pt);
    }
    LRESULT Key(UINT vk) { return list->SendMessage(WM_KEYDOWN, vk, 1); }
    // Gives the list the keyboard focus for real; false when the desktop would not.
    bool FocusList();

    void ExpectCodes(const std::vector<unsigned>& expected) const
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
