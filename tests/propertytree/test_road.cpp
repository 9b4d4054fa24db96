// One user event from the press to the caller's variable: a click on an edit row's value,
// typing, and the end of the edit by Return, by the focus moving away, or by Escape. Each
// test records every notification the parent receives and reads the row back from the list's
// own rendering.
#include "ptlist.h"

using pttest::ListFixture;

namespace
{
const char* const kNewText = "400";

// What one run of the road saw.
struct RoadSeen
{
    bool editOpened = false;          // the edit lay over the value column, visible, focused
    double variableWhileTyping = 0;   // the bound variable after typing, before the end
    std::string editTextTyped;        // the edit's text after typing
    double variableAfter = 0;
    bool editHiddenAfter = false;
    std::string valueAfter;           // the row's committed value
    std::vector<unsigned> codes;      // every code the parent received, in order
    std::unique_ptr<kel_test::DibSurface> render;   // the list after the end of the edit
    CRect valueRect;                  // the value column of the row, as last painted
};

enum class RoadEnd
{
    Return,
    FocusLoss,
    Escape
};

struct RoadTest : ListFixture
{
    double thickness = 365.0;
    CKelPropertyTreeItemEdit* row = nullptr;

    // A band with one number row bound to the variable, painted once.
    void Build()
    {
        tree.DeleteAllItems();
        CKelPropertyTreeItem* band = Add("Wall W-3");
        band->Expand();
        row = new CKelPropertyTreeItemEdit();
        tree.InsertItem(row, band);
        row->SetLabelText("Thickness");
        row->SetValueFormat(CKelPropertyTreeItemEdit::VALUE_FORMAT_DOUBLE);
        row->SetAdditionalTextInfo("mm");
        row->SetItemDataExchange(&thickness);
        row->UpdateData();
        Paint();
    }

    RoadSeen Drive(RoadEnd end)
    {
        RoadSeen seen;
        kel_test::RunHoldingForeground(parent.m_hWnd, [&] {
            seen = RoadSeen();
            thickness = 365.0;
            Build();
            Clear();

            // The press lands on the value column where painting put it.
            const CPoint at = ValuePoint(row);
            Press(at);
            Release(at);
            kel_test::PumpPending();
            HWND hEdit = row->m_hWnd;
            CRect editRect;
            if (hEdit)
            {
                ::GetWindowRect(hEdit, &editRect);
                list->ScreenToClient(&editRect);
            }
            seen.editOpened = hEdit && ::IsWindowVisible(hEdit) && ::GetFocus() == hEdit &&
                              editRect == CRect(row->GetAttributeRect());
            if (!hEdit)
                return;

            // Typing replaces the selected old text; nothing reaches the variable yet.
            kel_test::PostChars(hEdit, kNewText);
            kel_test::PumpPending();
            char text[64] = {};
            ::GetWindowTextA(hEdit, text, sizeof(text));
            seen.editTextTyped = text;
            seen.variableWhileTyping = thickness;

            switch (end)
            {
            case RoadEnd::Return:
                kel_test::PostKeyDown(hEdit, VK_RETURN);
                break;
            case RoadEnd::Escape:
                kel_test::PostKeyDown(hEdit, VK_ESCAPE);
                break;
            case RoadEnd::FocusLoss:
                parent.SetFocus();
                kel_test::PumpPending();
                break;
            }
            kel_test::PumpPending();

            seen.variableAfter = thickness;
            seen.editHiddenAfter = !::IsWindowVisible(hEdit);
            seen.valueAfter = static_cast<const char*>(row->GetItemText(1));
            seen.codes = parent.codes;
            seen.render = Render();
            seen.valueRect = row->GetAttributeRect();
        });
        return seen;
    }

    // The list as it paints when the row holds the given value from the start.
    std::unique_ptr<kel_test::DibSurface> RenderWithValue(const char* value)
    {
        Build();
        row->SetItemValue(CString(value));
        list->Invalidate();
        Paint();
        return Render();
    }

    static bool SameRegion(const kel_test::DibSurface& a, const kel_test::DibSurface& b, const CRect& rc)
    {
        for (int y = rc.top; y < rc.bottom; ++y)
            for (int x = rc.left; x < rc.right; ++x)
                if (a.Pixel(x, y) != b.Pixel(x, y))
                    return false;
        return true;
    }
};

const std::vector<unsigned> kPressOnValue = {
    PTN_FOCUS_GAINED,        // the press takes the focus before it looks at the row
    PTN_SELECTION_CHANGED,   // the row becomes the selection
    PTN_ITEM_ACTIVATING,     // the parent may refuse the edit
    PTN_ITEM_CLICKED,
};
}

TEST_F(RoadTest, ReturnCommitsTheTypedNumberToTheVariableAndRepaintsTheRow)
{
    RoadSeen seen = Drive(RoadEnd::Return);
    ASSERT_TRUE(seen.editOpened) << "the press opened no focused edit over the value column";
    EXPECT_EQ("400", seen.editTextTyped);
    EXPECT_EQ(365.0, seen.variableWhileTyping) << "the variable changed before the commit";
    EXPECT_EQ(400.0, seen.variableAfter);
    EXPECT_TRUE(seen.editHiddenAfter);
    EXPECT_EQ("400.000000", seen.valueAfter);

    // After Return the list takes the focus back, then the change is announced.
    std::vector<unsigned> expected = kPressOnValue;
    expected.push_back(PTN_FOCUS_GAINED);
    expected.push_back(PTN_ITEM_CHANGED);
    EXPECT_EQ(expected, seen.codes) << "expected: " << pttest::Codes(expected)
                                    << "\nseen:     " << pttest::Codes(seen.codes);

    // The value column reads as the list paints the new value, and not as it painted the old.
    ASSERT_TRUE(seen.render);
    auto withNew = RenderWithValue("400.000000");
    auto withOld = RenderWithValue("365.000000");
    EXPECT_GT(seen.render->CountDark(seen.valueRect), 0) << "no text in the value column";
    EXPECT_TRUE(SameRegion(*seen.render, *withNew, seen.valueRect));
    EXPECT_FALSE(SameRegion(*seen.render, *withOld, seen.valueRect));
}

TEST_F(RoadTest, FocusLeavingTheEditCommitsAsReturnDoes)
{
    RoadSeen seen = Drive(RoadEnd::FocusLoss);
    ASSERT_TRUE(seen.editOpened);
    EXPECT_EQ(365.0, seen.variableWhileTyping);
    EXPECT_EQ(400.0, seen.variableAfter);
    EXPECT_TRUE(seen.editHiddenAfter);
    EXPECT_EQ("400.000000", seen.valueAfter);

    // The focus went to the parent window, so the list gains nothing after the commit.
    std::vector<unsigned> expected = kPressOnValue;
    expected.push_back(PTN_ITEM_CHANGED);
    EXPECT_EQ(expected, seen.codes) << "expected: " << pttest::Codes(expected)
                                    << "\nseen:     " << pttest::Codes(seen.codes);

    ASSERT_TRUE(seen.render);
    auto withNew = RenderWithValue("400.000000");
    EXPECT_TRUE(SameRegion(*seen.render, *withNew, seen.valueRect));
}

TEST_F(RoadTest, EscapeKeepsTheOldValueInTheVariableAndOnTheRow)
{
    RoadSeen seen = Drive(RoadEnd::Escape);
    ASSERT_TRUE(seen.editOpened);
    EXPECT_EQ("400", seen.editTextTyped);
    EXPECT_EQ(365.0, seen.variableAfter);
    EXPECT_TRUE(seen.editHiddenAfter);
    EXPECT_EQ("365.000000", seen.valueAfter);

    // No change is announced; the list only takes the focus back.
    std::vector<unsigned> expected = kPressOnValue;
    expected.push_back(PTN_FOCUS_GAINED);
    EXPECT_EQ(expected, seen.codes) << "expected: " << pttest::Codes(expected)
                                    << "\nseen:     " << pttest::Codes(seen.codes);

    ASSERT_TRUE(seen.render);
    auto withOld = RenderWithValue("365.000000");
    EXPECT_TRUE(SameRegion(*seen.render, *withOld, seen.valueRect));
}
