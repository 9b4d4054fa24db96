// Keyboard input of the list surface. Keys not handled here do nothing; the tree never
// deletes or inserts rows by itself, it tells the parent.
#include "propertytree.h"

void CKelPropertyTreeList::OnKeyDown(UINT nChar, UINT, UINT)
{
    CKelPropertyTree* tree = m_pTree;
    if (!tree || tree->IsDisableInput() || !tree->IsWindowEnabled())
        return;
    CKelPropertyTreeItem* focus = tree->GetFocusedItem();
    switch (nChar)
    {
    case VK_RETURN:
        tree->SendNotify(PTN_KEY_RETURN, nullptr);
        break;
    case VK_ESCAPE:
        if (m_nDestinationMode)
            ReleaseDestinationItem();
        else
            tree->SendNotify(PTN_KEY_ESCAPE, nullptr);
        break;
    case VK_HOME:
        tree->FocusFirst();
        Invalidate();
        break;
    case VK_END:
        tree->FocusLast();
        Invalidate();
        break;
    case VK_UP:
        tree->FocusPrev();
        Invalidate();
        break;
    case VK_DOWN:
        tree->FocusNext();
        Invalidate();
        break;
    case VK_LEFT:
        if (!focus || tree->SendNotify(PTN_ITEM_EXPANDING, focus) || !focus->GetChild() || !focus->IsExpanded())
            tree->FocusPrev();
        else
            SetExpanded(focus, 0);
        Invalidate();
        break;
    case VK_RIGHT:
        if (!focus || tree->SendNotify(PTN_ITEM_EXPANDING, focus) || !focus->GetChild() || focus->IsExpanded())
            tree->FocusNext();
        else
            SetExpanded(focus, 1);
        Invalidate();
        break;
    case VK_INSERT:
        tree->SendNotify(PTN_KEY_INSERT, focus);
        break;
    case VK_DELETE:
        if (focus && (tree->IsAllowedAllItemDelete() ||
                      (focus->GetResID() != tree->GetFirstLockedItemResID() && (tree->GetOMFlag() & 2) &&
                       !focus->IsDeleteForbidden() && focus->GetItemSwitchStatus() != 0)))
            tree->SendNotify(PTN_KEY_DELETE, focus);
        break;
    case VK_ADD:
    case VK_SUBTRACT:
        if (focus && focus->GetChild())
            SetExpanded(focus, nChar == VK_ADD ? 1 : 0);
        break;
    case VK_F2:
        EditLabel(nullptr);
        break;
    default:
        break;
    }
}
