// Mouse input of the list surface: presses, releases, moves, double clicks, the context
// menu, the cursor and the column separator drag. A press first takes the focus, so that a
// live in-place editor commits before the press is looked at.
#include "propertytree.h"

#include <algorithm>

namespace
{
// The row refuses selection: its switch is off and the tree greys such rows.
bool IsSwitchedOffRow(CKelPropertyTree* tree, CKelPropertyTreeItem* item)
{
    return !tree->SelectItems_Validate_Sub(item, 1);
}

bool IsValueKind(CKelPropertyTreeItem* item)
{
    const int id = item->GetIdentifier();
    return id >= ITEM_TYPE_LINE_COLOR && id <= ITEM_TYPE_DISPLAY_TYPE;
}
}

bool CKelPropertyTreeList::IsRowOrLayerLocked(CKelPropertyTreeItem* pItem)
{
    if (pItem->IsLocked())
        return true;
    CKelPropertyTreeItem* layer = m_pTree->GetLayerLevel(pItem);
    return layer && layer->IsLocked();
}

// Inverts the 5 pixels wide band of a column drag around x, over the full height.
void CKelPropertyTreeList::InvertColumnBand(int x)
{
    CClientDC dc(this);
    CRect client;
    GetClientRect(&client);
    dc.PatBlt(x - 2, 0, 5, client.Height(), PATINVERT);
}

bool CKelPropertyTreeList::ToggleExpanded(CKelPropertyTreeItem* pItem)
{
    if (!pItem->GetChild() || pItem->IsNoExpandBox() || m_pTree->SendNotify(PTN_ITEM_EXPANDING, pItem))
        return false;
    SetExpanded(pItem, !pItem->IsExpanded());
    return true;
}

// Opens or closes a row and paints at once, so that the visible list answers for the new
// state before the focus is checked against it.
void CKelPropertyTreeList::SetExpanded(CKelPropertyTreeItem* pItem, int expand)
{
    pItem->Expand(expand);
    m_bScrollBarsDirty = 1;
    Invalidate();
    UpdateWindow();
    CheckVisibleFocus();
}

// Shows the special button pressed and holds the mouse until the release.
bool CKelPropertyTreeList::PressSpecialButton(CKelPropertyTreeItem* pItem)
{
    pItem->SetSpecialButtonPressedStatus(1);
    m_pPressedButtonItem = pItem;
    Invalidate();
    SetCapture();
    return true;
}

void CKelPropertyTreeList::OnLButtonDown(UINT nFlags, CPoint point)
{
    OnButtonDown(1, nFlags, point);
}

void CKelPropertyTreeList::OnRButtonDown(UINT nFlags, CPoint point)
{
    OnButtonDown(2, nFlags, point);
    CWnd::OnRButtonDown(nFlags, point);
}

void CKelPropertyTreeList::OnLButtonUp(UINT nFlags, CPoint point)
{
    OnButtonUp(1, nFlags, point);
}

void CKelPropertyTreeList::OnRButtonUp(UINT nFlags, CPoint point)
{
    OnButtonUp(2, nFlags, point);
    CWnd::OnRButtonUp(nFlags, point);
}

void CKelPropertyTreeList::OnButtonDown(int button, UINT, CPoint point)
{
    m_nMouseButton = button;
    CKelPropertyTree* tree = m_pTree;
    if (!tree)
        return;

    // The row and the part of it
    CKelPropertyTreeItem* item = tree->FindItem(point);
    if (!item)
        return;
    int hit = tree->HitTest(point);

    // A locked value
    if (hit == PTHT_ATTRIBUTE && IsRowOrLayerLocked(item))
    {
        tree->SendNotify(PTN_LOCKED_CLICK, item);
        return;
    }

    // Input off; was an edit live?
    if (tree->IsDisableInput())
        return;
    CKelPropertyTreeItem* active = tree->GetItemLastActivated();
    const bool editActive = active && active->IsActivated() && active->GetIdentifier() != ITEM_TYPE_STATIC;

    // The focus first: a live editor commits here, with all that follows from it
    if (!tree->IsWindowEnabled())
        return;
    SetFocus();
    if (active && tree->GetItemLastActivated() == active && active->IsActivated() && IsValueKind(active))
        active->CommitChanges(0);
    // The commit may have changed or removed rows: look again.
    item = tree->FindItem(point);
    if (!item)
        return;
    hit = tree->HitTest(point);

    // The click that ends an edit does nothing else, except on a row without a value
    if (editActive && item->GetIdentifier() != ITEM_TYPE_STATIC)
        return;

    // Column, expand box, special button
    m_pPressedButtonItem = nullptr;
    m_bPressedFromExternal = false;
    if (hit == PTHT_COLUMN && item->IsItemReadyForColumnSeparator() && !tree->SendNotify(PTN_COLUMN_RESIZING))
    {
        m_nColumnDragging = 1;
        SetCapture();
        m_nColumnDragX = static_cast<int>(tree->GetColumn());
        InvertColumnBand(m_nColumnDragX);
        return;
    }
    if (hit == PTHT_EXPAND && ToggleExpanded(item))
        return;
    // A row switched off takes presses on its switch box only
    if (hit != PTHT_SWITCHBOX && IsSwitchedOffRow(tree, item))
        return;
    if (hit == PTHT_SPECIAL_BUTTON)
    {
        EndDestinationMode();
        if (tree->GetFocusedItem() != item)
        {
            tree->SelectItems(nullptr, 0);
            tree->SetFocusedItem(item);
            item->Select(1);
            tree->SendNotify(PTN_SELECTION_CHANGED, tree->GetFocusedItem());
        }
        PressSpecialButton(item);
        return;
    }

    // A press during a drag ends it
    if (m_nDestinationMode)
    {
        FinishDragAndDrop(point);
        return;
    }

    // Only the left button works a switch box
    if (hit == PTHT_SWITCHBOX && button != 1)
        return;

    // What the press may do to the switch
    const bool wasSelected = item->IsSelected() != 0;
    m_bRowWasSelectedBeforePress = wasSelected;
    CKelPropertyTreeItem* oldFocus = tree->GetFocusedItem();
    const KEL_ML_TREE_USED_AT_MODULE_ID module = tree->GetUsedModuleID();
    const bool moduleKeepsLabel = module == KEL_ML_TREE_MODULE_1 || module == KEL_ML_TREE_MODULE_4 ||
                                  module == KEL_ML_TREE_MODULE_5 || module == KEL_ML_TREE_MODULE_6 ||
                                  module == KEL_ML_TREE_MODULE_7;
    bool labelMayToggle = tree->IsSwitchingByLabel() || !moduleKeepsLabel;
    if (tree->IsSwitchingByLabel() && tree->IsPressedControlledVK())
        labelMayToggle = false;
    if (tree->IsSwitchingByLabel() && !item->IsItemSwitching())
        labelMayToggle = false;

    // Switching
    bool switched = false;
    CKelPropertyTreeItem* target = item;
    if (button == 1 && (hit == PTHT_SWITCHBOX || (hit == PTHT_LABEL && labelMayToggle)))
    {
        if (tree->IsMultipleSelection())
        {
            if (!item->IsSelected())
                item->Select(1);
            CKelPropertyTreeItemAll all(tree->GetRootItem()->GetChild(), PT_RESID_ANY, KPTIA_SELECTED);
            if (all.FindTreeItem(item) < 0)
            {
                all.Clear();
                all.Add(item);
            }
            if (!tree->IsPressedControlledVK())
            {
                tree->SelectItems(nullptr, 0);
                tree->SetFocusedItem(nullptr);
            }
            const int status = item->GetItemSwitchStatus() == 1 ? 0 : 1;
            for (CKelPropertyTreeItem* p = all.GetFirst(); p; p = all.GetNext())
                if (p->IsItemSwitching() && !p->IsSwitchableCheckHidden() && !p->IsItemSwitchLocked())
                    p->SetItemSwitchStatus(status, 0, KPTISM_CLICK);
            switched = all.FindTreeItem(item) >= 0;
        }
        else if (item->IsItemSwitchBoxEnabled())
        {
            item->SetItemSwitchStatus(item->GetItemSwitchStatus() == 1 ? 0 : 1, 0, KPTISM_CLICK);
            switched = true;
            // A row switched off cannot be selected: its parent is, if it has a real one.
            if (IsSwitchedOffRow(tree, item))
            {
                CKelPropertyTreeItem* parent = item->GetParent();
                target = parent && parent != tree->GetRootItem() ? parent : nullptr;
            }
        }
    }

    // The first row from there that may be selected
    while (target && !tree->IsEnabled4Selection(target))
        target = target->GetNextVisible();
    if (!target)
        return;

    // Selection
    if (!tree->IsMultipleSelection())
    {
        tree->SelectItems(nullptr, 0);
        tree->SetFocusedItem(target);
        tree->SelectItems(target, 1);
    }
    else if (!(button == 2 && target->IsSelected()))
        target->Select(1);
    Invalidate();

    // Notifications of the switch box and the selection
    if (button == 1 && hit == PTHT_SWITCHBOX && target->IsItemSwitching() && !switched)
        tree->SendNotify(PTN_SWITCH_CHANGED, target);
    if (target != oldFocus)
        tree->SendNotify(PTN_SELECTION_CHANGED, tree->GetFocusedItem());

    // The value or the label of a row below the top level
    if (!item->IsRootLevel())
    {
        if (hit == PTHT_ATTRIBUTE)
        {
            if (tree->IsLockedToEdit())
                MessageBeep(MB_ICONEXCLAMATION);
            else if (item->GetIdentifier() == ITEM_TYPE_CHECK)
                item->Activate(point);   // activates only when the check box is hit
            else if (!tree->SendNotify(PTN_ITEM_ACTIVATING, item) && !item->IsReadOnly())
            {
                CExternalOMData* external =
                    tree->GetExternalOMData() ? tree->ExchangeExternalOMData(item->GetResID()) : nullptr;
                if (external && external->nExternalFunction && !item->IsItemEditableManuallyForExternalFunction())
                {
                    // The host edits this value: its button goes down instead of a control.
                    PressSpecialButton(item);
                    m_bPressedFromExternal = true;
                }
                else if (!item->IsLockedActivation())
                    item->Activate();
            }
        }
        else if (hit == PTHT_LABEL && button == 1)
        {
            if (item->GetResID() == PT_RESID_LAYER || item->IsAllowedDragAndDropForThisItem())
            {
                if (Prepare2GetDestinationItem(item))
                    m_bLabelClickStartedDrag = true;
            }
            // A second click on a label that was already selected edits it.
            else if (item->IsSelected() && m_bRowWasSelectedBeforePress)
                EditLabel(item);
        }
    }

    // The click, unless it only switched
    if (!(item->IsItemSwitching() && switched))
        tree->SendNotify(PTN_ITEM_CLICKED, item);
}

void CKelPropertyTreeList::OnButtonUp(int, UINT, CPoint point)
{
    CKelPropertyTree* tree = m_pTree;
    if (!tree)
        return;

    // The column drag ends
    if (m_nColumnDragging)
    {
        InvertColumnBand(m_nColumnDragX);
        m_nColumnDragging = 0;
        ReleaseCapture();
        const long minX = static_cast<long>(tree->GetSplitterMinCol()) - tree->GetOriginOffsetHorz();
        const long maxX = tree->GetSeparatorMaxHorizPos();
        const long x = std::max(minX, std::min(static_cast<long>(point.x), maxX));
        tree->SetColumn(x);
        tree->UpdateMoveAllItems();
        Invalidate();
        m_bScrollBarsDirty = 1;
    }

    // A drag with the mouse held ends in a drop
    if (m_nDragCaptured)
    {
        FinishDragAndDrop(point);
        m_nDragCaptured = 0;
        if (GetCapture() == this)
            ReleaseCapture();
    }
    // A pick-up that never moved ends without a drop
    else if (m_nDestinationMode)
    {
        // A draggable label that was only clicked, not dragged: a second click still edits it.
        CKelPropertyTreeItem* source = m_pSourceItem;
        EndDestinationMode();
        ::SetCursor(m_hCursors[3]);
        if (m_bLabelClickStartedDrag && source && source->IsSelected() && m_bRowWasSelectedBeforePress)
            EditLabel(source);
    }
    m_bLabelClickStartedDrag = false;

    // No more autoscroll
    KillTimer(AUTOSCROLL_TIMER);
    m_nAutoscrollRunning = 0;

    // The special button
    CKelPropertyTreeItem* item = tree->FindItem(point);
    if (!item)
        return;   // over no row the button stays pressed and the mouse held
    CKelPropertyTreeItem* pressed = m_pPressedButtonItem;
    const bool counted =
        pressed && item == pressed && (pressed->IsSpecialButtonPressed() || m_bPressedFromExternal);
    if (GetCapture() == this)
        ReleaseCapture();
    if (pressed)
    {
        pressed->SetSpecialButtonPressedStatus(pressed->IsSpecialButtonManualDepressActive());
        Invalidate();
        if (counted)
        {
            tree->SetFocusedItem(item);
            tree->SendNotify(PTN_SPECIAL_BUTTON, item);
        }
    }
    m_pPressedButtonItem = nullptr;
    m_bPressedFromExternal = false;
}

void CKelPropertyTreeList::OnMouseMove(UINT nFlags, CPoint point)
{
    CKelPropertyTree* tree = m_pTree;
    if (!tree)
    {
        CWnd::OnMouseMove(nFlags, point);
        return;
    }

    // The column band follows within its limits
    if (m_nColumnDragging)
    {
        const long minX = static_cast<long>(tree->GetSplitterMinCol()) - tree->GetOriginOffsetHorz();
        const long maxX = tree->GetSeparatorMaxHorizPos();
        if (point.x >= minX && point.x <= maxX)
        {
            InvertColumnBand(m_nColumnDragX);
            m_nColumnDragX = point.x;
            InvertColumnBand(m_nColumnDragX);
        }
    }

    // A picked-up row holds the mouse from the first move
    if (m_nDestinationMode && !m_nDragCaptured)
    {
        SetCapture();
        m_nDragCaptured = 1;
    }

    // The drag: cursor, autoscroll, destination
    if (m_nDestinationMode && m_nDragCaptured)
    {
        CRect client;
        GetClientRect(&client);
        CKelPropertyTreeItem* under = client.PtInRect(point) ? tree->FindItem(point) : nullptr;
        const bool allowed = EvaluateCursorStyle(under);
        int direction = 0;
        if (point.y >= client.bottom - 5)
            direction = 2;
        else if (point.y <= client.top + 5)
            direction = 1;
        m_nAutoscrollDirection = direction;
        if (direction)
        {
            if (!m_nAutoscrollRunning)
                SetTimer(AUTOSCROLL_TIMER, 80);
            m_nAutoscrollRunning = 1;
        }
        else
        {
            KillTimer(AUTOSCROLL_TIMER);
            m_nAutoscrollRunning = 0;
        }
        if (allowed)
            DragDropDestinationSelect(under);
        else
            m_pDestinationItem = nullptr;
    }

    // The pressed button looks pressed while the mouse is on it
    if (CKelPropertyTreeItem* pressed = m_pPressedButtonItem)
    {
        int down;
        if (m_bPressedFromExternal)
            down = tree->FindItem(point) == pressed;
        else
        {
            const POINT at = {point.x + tree->GetOriginOffsetHorz(), point.y + tree->GetOrigin().y};
            down = pressed->HitSpecialButton(at) ? 1 : 0;
        }
        if (down != (pressed->IsSpecialButtonPressed() ? 1 : 0))
        {
            pressed->SetSpecialButtonPressedStatus(down);
            Invalidate();
        }
    }
    CWnd::OnMouseMove(nFlags, point);
}

// The mouse taken away by someone else ends a column drag without moving the column and a
// row drag without a drop; the releases of this window have ended them already.
void CKelPropertyTreeList::OnCaptureChanged(CWnd* pWnd)
{
    if (pWnd != this)
    {
        if (m_nColumnDragging)
        {
            InvertColumnBand(m_nColumnDragX);
            m_nColumnDragging = 0;
        }
        if (m_nDragCaptured)
        {
            m_nDragCaptured = 0;
            EndDestinationMode();
        }
    }
    CWnd::OnCaptureChanged(pWnd);
}

void CKelPropertyTreeList::OnLButtonDblClk(UINT, CPoint point)
{
    m_nMouseButton = 1;
    CKelPropertyTree* tree = m_pTree;
    if (!tree)
        return;
    CKelPropertyTreeItem* item = tree->FindItem(point);
    if (!item)
        return;
    if (IsRowOrLayerLocked(item))
    {
        tree->SendNotify(PTN_LOCKED_DOUBLE_CLICK, item);
        return;
    }
    tree->SendNotify(PTN_DOUBLE_CLICK, item);
    if (!item->GetChild())
        return;
    const int hit = tree->HitTest(point);
    if (hit == PTHT_COLUMN)
        return;
    if (hit != PTHT_EXPAND)
    {
        if (hit == PTHT_ATTRIBUTE && !item->IsRootLevel())
            return;
        if (tree->IsEnabled4Selection(item) && tree->SelectItems_Validate_Sub(item, 1))
        {
            CKelPropertyTreeItem* oldFocus = tree->GetFocusedItem();
            tree->SelectItems(nullptr, 0);
            tree->SetFocusedItem(item);
            tree->SelectItems(item, 1);
            if (tree->GetFocusedItem() != oldFocus)
                tree->SendNotify(PTN_SELECTION_CHANGED, tree->GetFocusedItem());
        }
    }
    ToggleExpanded(item);
}

void CKelPropertyTreeList::OnRButtonDblClk(UINT nFlags, CPoint point)
{
    if (m_pTree && m_pTree->GetParent() && m_pTree->GetParent()->m_hWnd)
        m_pTree->GetParent()->SendMessage(WM_RBUTTONDBLCLK, nFlags, MAKELPARAM(point.x, point.y));
}

void CKelPropertyTreeList::OnContextMenu(CWnd*, CPoint pos)
{
    if (!m_pTree)
        return;
    CPoint point = pos;
    ScreenToClient(&point);
    CKelPropertyTreeItem* item = m_pTree->FindItem(point);
    if (item && !m_pTree->SelectItems_Validate_Sub(item, 1))
        return;
    m_pTree->SendNotify(PTN_CONTEXT_MENU, item);
}

BOOL CKelPropertyTreeList::OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message)
{
    if (!m_pTree || !m_pTree->IsPopulated())
        return CWnd::OnSetCursor(pWnd, nHitTest, message);
    if (nHitTest == HTCLIENT)
    {
        CPoint point;
        ::GetCursorPos(&point);
        ScreenToClient(&point);
        CKelPropertyTreeItem* item = m_pTree->FindItem(point);
        const int hit = m_pTree->HitTest(point);
        if (item && hit == PTHT_COLUMN && item->IsItemReadyForColumnSeparator())
        {
            ::SetCursor(m_hCursors[5]);
            return TRUE;
        }
        if (item && hit == PTHT_SWITCHBOX && item->IsItemSwitching())
        {
            ::SetCursor(m_hCursors[4]);
            return TRUE;
        }
        if (m_nDestinationMode)
        {
            EvaluateCursorStyle(item);
            return TRUE;
        }
    }
    return CWnd::OnSetCursor(pWnd, nHitTest, message);
}
