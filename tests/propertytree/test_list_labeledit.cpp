// The ways into label editing on the list: F2 on the focused row, and a second click on the
// label of a row that was already selected, draggable rows included.
#include "ptlist.h"

using pttest::ListFixture;

namespace
{
struct LabelEditTest : ListFixture
{
    CKelPropertyTreeItem* band = nullptr;
    CKelPropertyTreeItem* row = nullptr;

    void Build()
    {
        band = Add("Wall");
        band->Expand();
        row = Add("Thickness", band);
        Add("Height", band);
        tree.EnableLabelEdit();
        Paint();
    }
    // The label editor of the row, open and visible.
    bool EditorOpen(CKelPropertyTreeItem* item) const
    {
        CKelPropertyTreeItem* editor = item->GetLabelEditor();
        if (!editor)
            return false;
        HWND hEdit = static_cast<CKelPropertyTreeItemEdit*>(editor)->m_hWnd;
        return hEdit && ::IsWindowVisible(hEdit);
    }
};
}

TEST_F(LabelEditTest, F2EditsTheFocusedRowsLabel)
{
    Build();
    Click(LabelPoint(row));
    Paint();
    ASSERT_EQ(row, tree.GetFocusedItem());
    EXPECT_FALSE(EditorOpen(row));
    Key(VK_F2);
    ASSERT_TRUE(EditorOpen(row));
    CKelPropertyTreeItemEdit* editor = static_cast<CKelPropertyTreeItemEdit*>(row->GetLabelEditor());
    char text[64] = {};
    ::GetWindowTextA(editor->m_hWnd, text, sizeof(text));
    EXPECT_STREQ("Thickness", text);
}

TEST_F(LabelEditTest, F2DoesNothingWhenLabelEditIsOffOrTheRowIsReadOnly)
{
    Build();
    Click(LabelPoint(row));
    Paint();
    tree.EnableLabelEdit(0);
    Key(VK_F2);
    EXPECT_FALSE(EditorOpen(row));
    tree.EnableLabelEdit(1);
    row->ReadOnly(1);
    Key(VK_F2);
    EXPECT_FALSE(EditorOpen(row));
}

TEST_F(LabelEditTest, FirstClickSelectsAndSecondClickOnTheLabelEdits)
{
    Build();
    Click(LabelPoint(row));
    Paint();
    EXPECT_TRUE(row->IsSelected());
    EXPECT_FALSE(EditorOpen(row)) << "a click that only selected opened the editor";
    Click(LabelPoint(row));
    EXPECT_TRUE(EditorOpen(row));
}

TEST_F(LabelEditTest, SecondClickOnADraggableLabelEditsWhenTheMouseDidNotMove)
{
    Build();
    row->AllowDragAndDropForThisItem();
    Click(LabelPoint(row));
    Paint();
    ASSERT_TRUE(row->IsSelected());
    EXPECT_FALSE(EditorOpen(row));
    Click(LabelPoint(row));
    EXPECT_TRUE(EditorOpen(row));
    EXPECT_NE(list->m_hWnd, ::GetCapture()) << "the pick-up kept the mouse";
}

TEST_F(LabelEditTest, FirstClickOnADraggableLabelOnlySelects)
{
    Build();
    row->AllowDragAndDropForThisItem();
    Click(LabelPoint(row));
    EXPECT_TRUE(row->IsSelected());
    EXPECT_FALSE(EditorOpen(row));
}
