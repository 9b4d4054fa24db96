// Drag and drop of rows on the list surface: picking a row up, the destination under the
// mouse, autoscroll near the edges, expanding a row held over, and the drop. The tree never
// moves a row by itself: the parent does it in its PTN_DROP handler.
#include "propertytree.h"

bool CKelPropertyTreeList::Prepare2GetDestinationItem(CKelPropertyTreeItem* pItem)
{
    if (!m_pTree || m_pTree->IsLockedDragDrop())
        return false;
    m_pSourceItem = pItem;
    m_pDestinationItem = nullptr;
    m_nDestinationMode = 1;
    return true;
}

void CKelPropertyTreeList::EndDestinationMode()
{
    m_nDestinationMode = 0;
    m_pDestinationItem = nullptr;
    KillTimer(AUTOSCROLL_TIMER);
    KillTimer(DRAG_EXPAND_TIMER);
    m_nAutoscrollRunning = 0;
    m_nAutoscrollDirection = 0;
}

// Ends a drag without a drop: the mouse is let go and no one is told.
void CKelPropertyTreeList::ReleaseDestinationItem()
{
    EndDestinationMode();
    if (m_nDragCaptured)
    {
        m_nDragCaptured = 0;
        if (GetCapture() == this)
            ReleaseCapture();
    }
    ::SetCursor(m_hCursors[3]);
}

void CKelPropertyTreeList::DragDropDestinationSelect(CKelPropertyTreeItem* pItem)
{
    if (pItem == m_pDestinationItem)
        return;
    // A new row under the mouse: its expand delay starts over.
    KillTimer(DRAG_EXPAND_TIMER);
    SetTimer(DRAG_EXPAND_TIMER, 1800);
    m_pDestinationItem = pItem;
}

void CKelPropertyTreeList::DragEnd()
{
    if (m_pTree)
        m_pTree->SendNotify(PTN_DROP, m_pDestinationItem);
}

void CKelPropertyTreeList::FinishDragAndDrop(const CPoint& point)
{
    CKelPropertyTreeItem* destination = m_pDestinationItem;
    if (m_pTree && destination)
    {
        destination->SetDragAndDropHitPoint(point);
        CKelPropertyTreeItem* source = m_pSourceItem;
        if (source && source->GetParent() == destination->GetParent() &&
            source->GetResID() == destination->GetResID())
        {
            m_pTree->SelectItems(nullptr, 0);
            m_pTree->SetFocusedItem(source);
            m_pTree->SelectItems(source, 1);
        }
        m_pTree->SendNotify(PTN_DROP, destination);
    }
    EndDestinationMode();
    ::SetCursor(m_hCursors[3]);
}

bool CKelPropertyTreeList::EvaluateCursorStyle(CKelPropertyTreeItem* pItem)
{
    if (!m_pTree || !pItem || !m_pTree->EvaluateDragAndDrop(pItem))
    {
        ::SetCursor(m_hCursors[0]);
        return false;
    }
    HCURSOR cursor = m_hCursors[3];
    CKelPropertyTreeItem* source = m_pSourceItem;
    if (m_pTree->GetUsedModuleID() == KEL_ML_TREE_MODULE_7 && source)
    {
        if (source->GetParent() == pItem->GetParent())
            cursor = source->GetResID() == pItem->GetResID() ? m_hCursors[2] : m_hCursors[1];
        else
            cursor = pItem->GetParent() && source->GetResID() == pItem->GetParent()->GetResID() ? m_hCursors[2]
                                                                                             : m_hCursors[1];
    }
    ::SetCursor(cursor);
    return true;
}

void CKelPropertyTreeList::OnTimer(UINT_PTR nIDEvent)
{
    if (m_pTree && nIDEvent == AUTOSCROLL_TIMER)
    {
        CRect client;
        GetClientRect(&client);
        long total = 0;
        for (CKelPropertyTreeItem* p = m_pTree->GetRootItem()->GetChild(); p; p = p->GetSibling())
            total += p->GetTotalHeight();
        if (total >= client.Height())
        {
            if (m_nAutoscrollDirection == 2)
                ScrollVertBy(21);
            else if (m_nAutoscrollDirection == 1)
                ScrollVertBy(-21);
        }
    }
    else if (m_pTree && nIDEvent == DRAG_EXPAND_TIMER)
    {
        if (m_pDestinationItem && m_pDestinationItem->IsDragAndDropAutoExpandTurnedOn())
        {
            m_pDestinationItem->Expand(1);
            Invalidate();
            m_bScrollBarsDirty = 1;
            UpdateWindow();
        }
        KillTimer(DRAG_EXPAND_TIMER);
    }
    CWnd::OnTimer(nIDEvent);
}
