// The tree engine's model: links, the visible-order arithmetic, insertion, deletion,
// sorting and expansion.
#include "rgtreemodel.h"

#include <stdlib.h>
#include <string.h>

#include <vector>

namespace
{
RGTreeItem* Root(RGTreeWindow* w) { return &w->store.root; }

bool IsExpanded(const RGTreeItem* item) { return (item->data.state & TVIS_EXPANDED) != 0; }

RGTreeItem* NextVisible(RGTreeWindow* w, RGTreeItem* item)
{
    return RGTreeGetNextItem(w, TVGN_NEXTVISIBLE, item);
}

RGTreeItem* PreviousVisible(RGTreeWindow* w, RGTreeItem* item)
{
    return RGTreeGetNextItem(w, TVGN_PREVIOUSVISIBLE, item);
}

// The top-level item above an item (an item is its own top-level ancestor).
RGTreeItem* TopLevelAncestor(RGTreeWindow* w, RGTreeItem* item)
{
    while (item->parent && item->parent != Root(w))
        item = item->parent;
    return item;
}

void Unlink(RGTreeWindow* w, RGTreeItem* item)
{
    RGTreeItem* parent = item->parent;
    if (item->prev)
        item->prev->next = item->next;
    else
        parent->firstChild = item->next;
    if (item->next)
        item->next->prev = item->prev;
    else
        parent->lastChild = item->prev;
    --parent->childCount;
    --w->store.totalCount;
}

// Removes an item with its subtree: children first, depth first in sibling order, each
// through onDelete before its block is freed.
void FreeSubtree(RGTreeWindow* w, RGTreeItem* item)
{
    RGTreeItem* current = item;
    for (;;)
    {
        while (current->firstChild)
            current = current->firstChild;
        RGTreeItem* parent = current->parent;
        const bool last = current == item;
        Unlink(w, current);
        if (w->store.onDelete)
            w->store.onDelete(current, w->store.deleteData);
        free(current);
        if (last)
            return;
        current = parent;
    }
}

// Walks up from firstVisible so that no empty space stays below the last row.
RGTreeItem* BottomGapTarget(RGTreeWindow* w, int rows)
{
    RGTreeItem* target = w->firstVisible;
    for (int steps = w->firstVisibleIndex - w->visibleCount + rows; steps > 0; --steps)
    {
        RGTreeItem* up = PreviousVisible(w, target);
        if (!up)
            break;
        target = up;
    }
    return target;
}

void KillTimersAndEdit(RGTreeWindow* w, bool revealToo)
{
    if (w->hwnd)
    {
        if (revealToo)
            KillTimer(w->hwnd, RGTreeRevealTimer);
        KillTimer(w->hwnd, RGTreeEditTimer);
    }
    RGTreeEndLabelEdit(w, true);
}

void RepaintAfterChange(RGTreeWindow* w)
{
    if (w->redrawEnabled && !RGTreeUpdateScrollBars(w))
        RGTreeInvalidateAll(w);
}
} // namespace

RGTreeItem* RGTreeParentOf(const RGTreeWindow* w, const RGTreeItem* item)
{
    if (!item || item->parent == &w->store.root)
        return nullptr;
    return item->parent;
}

int RGTreeCountVisibleDescendants(const RGTreeItem* first)
{
    if (!first)
        return 0;
    const RGTreeItem* stop = first->parent;
    const RGTreeItem* current = first;
    int count = 0;
    for (;;)
    {
        ++count;
        if (IsExpanded(current) && current->firstChild)
        {
            current = current->firstChild;
            continue;
        }
        for (;;)
        {
            if (current->next)
            {
                current = current->next;
                break;
            }
            current = current->parent;
            if (current == stop || !current)
                return count;
        }
    }
}

RGTreeItem* RGTreeGetNextItem(RGTreeWindow* w, UINT code, RGTreeItem* item)
{
    switch (code)
    {
    case TVGN_ROOT:
        return w->store.root.firstChild;
    case TVGN_NEXT:
        return item ? item->next : nullptr;
    case TVGN_PREVIOUS:
        return item ? item->prev : nullptr;
    case TVGN_PARENT:
        return RGTreeParentOf(w, item);
    case TVGN_CHILD:
        return item ? item->firstChild : w->store.root.firstChild;
    case TVGN_FIRSTVISIBLE:
        return w->firstVisible;
    case TVGN_NEXTVISIBLE:
        if (!item)
            return nullptr;
        if (IsExpanded(item) && item->firstChild)
            return item->firstChild;
        while (item)
        {
            if (item->next)
                return item->next;
            item = RGTreeParentOf(w, item);
        }
        return nullptr;
    case TVGN_PREVIOUSVISIBLE:
        if (!item)
            return nullptr;
        if (!item->prev)
            return RGTreeParentOf(w, item);
        item = item->prev;
        while (IsExpanded(item) && item->lastChild)
            item = item->lastChild;
        return item;
    case TVGN_DROPHILITE:
        return w->tracking ? w->pressedItem : w->dropHilite;
    case TVGN_CARET:
        return w->selected;
    case TVGN_LASTVISIBLE:
    {
        RGTreeItem* current = w->store.root.firstChild;
        if (!current)
            return nullptr;
        for (;;)
        {
            while (current->next)
                current = current->next;
            if (!IsExpanded(current) || !current->firstChild)
                return current;
            current = current->firstChild;
        }
    }
    default:
        return nullptr;
    }
}

int RGTreeGetVisibleIndex(RGTreeWindow* w, RGTreeItem* item)
{
    if (!item)
        return -1;
    // Above 1000 rows an item near the window is found by a short walk around firstVisible.
    if (w->visibleCount > 1000 && w->firstVisible)
    {
        const int rows = RGTreeRowsThatFit(w) + 1;
        RGTreeItem* current = w->firstVisible;
        for (int steps = 0; current && steps < 2 * rows; ++steps)
        {
            if (current == item)
                return w->firstVisibleIndex + steps;
            current = NextVisible(w, current);
        }
        current = w->firstVisible;
        for (int steps = 1; steps <= rows; ++steps)
        {
            current = PreviousVisible(w, current);
            if (!current)
                break;
            if (current == item)
                return w->firstVisibleIndex - steps;
        }
    }
    int index = 0;
    for (RGTreeItem* current = w->store.root.firstChild; current; current = NextVisible(w, current), ++index)
    {
        if (current == item)
            return index;
    }
    return -1;
}

void RGTreeSetFirstVisible(RGTreeWindow* w, RGTreeItem* newFirst)
{
    RGTreeItem* old = w->firstVisible;
    RGTreeItem* rootFirst = w->store.root.firstChild;
    if (!old)
    {
        old = rootFirst;
        w->firstVisibleIndex = 0;
    }
    if (!newFirst)
    {
        w->firstVisible = nullptr;
        return;
    }
    // Walk backward from the new top row until the old one (relative repair) or the top
    // (absolute count) is reached.
    int count = 0;
    RGTreeItem* current = newFirst;
    RGTreeItem* last = newFirst;
    for (;;)
    {
        bool skipDescendants = false;
        if (!current)
        {
            current = RGTreeParentOf(w, last);
            if (!current)
            {
                w->firstVisibleIndex = count;
                break;
            }
            skipDescendants = true; // the path we came up lies inside it
        }
        if (!skipDescendants && current != newFirst && IsExpanded(current))
            count += RGTreeCountVisibleDescendants(current->firstChild);
        if (current == old)
        {
            w->firstVisibleIndex += count;
            break;
        }
        if (current == rootFirst)
        {
            w->firstVisibleIndex = count;
            break;
        }
        ++count;
        last = current;
        current = current->prev;
    }
    w->firstVisible = newFirst;
}

bool RGTreeIsAboveFirstVisible(RGTreeWindow* w, RGTreeItem* item)
{
    RGTreeItem* first = w->firstVisible;
    if (!first || item == first)
        return false;
    RGTreeItem* firstTop = TopLevelAncestor(w, first);
    RGTreeItem* itemTop = TopLevelAncestor(w, item);
    if (firstTop == itemTop)
    {
        if (firstTop == first)
            return false;
        for (RGTreeItem* current = firstTop; current && current != first; current = NextVisible(w, current))
        {
            if (current == item)
                return true;
        }
        return false;
    }
    // Different top-level items: walk from whichever end of the rows is nearer.
    if (w->visibleCount - w->firstVisibleIndex < w->firstVisibleIndex)
    {
        for (RGTreeItem* current = firstTop->next; current; current = current->next)
        {
            if (current == itemTop)
                return false;
        }
        return true;
    }
    for (RGTreeItem* current = firstTop->prev; current; current = current->prev)
    {
        if (current == itemTop)
            return true;
    }
    return false;
}

bool RGTreeIsDescendant(const RGTreeWindow* w, const RGTreeItem* ancestor, const RGTreeItem* item)
{
    if (!ancestor)
        return false;
    for (const RGTreeItem* current = RGTreeParentOf(w, item); current; current = RGTreeParentOf(w, current))
    {
        if (current == ancestor)
            return true;
    }
    return false;
}

bool RGTreeIsRow(const RGTreeWindow* w, const RGTreeItem* item)
{
    for (const RGTreeItem* parent = item->parent; parent && parent != &w->store.root; parent = parent->parent)
    {
        if (!IsExpanded(parent))
            return false;
    }
    return true;
}

void RGTreeFixBottomGap(RGTreeWindow* w)
{
    if (w->visibleCount == 0 || !w->firstVisible)
        return;
    const int rows = RGTreeRowsThatFit(w);
    if (w->firstVisibleIndex + rows > w->visibleCount)
    {
        RGTreeItem* target = BottomGapTarget(w, rows);
        w->firstVisible = nullptr;
        RGTreeSetFirstVisible(w, target);
    }
}

RGTreeItem* RGTreeVisibleTarget(RGTreeWindow* w, RGTreeItem* item)
{
    RECT row;
    if (!RGTreeRowRect(w, item, &row))
        return nullptr;
    RECT client = {};
    GetClientRect(w->hwnd, &client);
    if (row.top < client.top)
        return item;
    // A row whose bottom lies within the client area is wholly shown: nothing to do.
    if (row.bottom <= client.bottom)
        return nullptr;
    const int rows = RGTreeRowsThatFit(w);
    RGTreeItem* target = item;
    for (int steps = rows - 1; steps > 0; --steps)
    {
        target = PreviousVisible(w, target);
        if (!target)
            return nullptr;
    }
    return target;
}

RGTreeItem* RGTreeInsertItem(RGTreeWindow* w, const TVINSERTSTRUCTA* ins)
{
    RGTreeItem* parent = reinterpret_cast<RGTreeItem*>(ins->hParent);
    if (ins->hParent == TVI_ROOT || !parent)
        parent = Root(w);

    // Decide the place before anything is allocated, so that a refused insert leaves no trace.
    RGTreeItem* after = nullptr; // null: first child
    const HTREEITEM where = ins->hInsertAfter;
    if (where == TVI_SORT)
        return nullptr;
    if (where == TVI_FIRST)
        after = nullptr;
    else if (where == TVI_LAST || where == nullptr || where == TVI_ROOT)
        after = parent->lastChild;
    else
    {
        RGTreeItem* sibling = reinterpret_cast<RGTreeItem*>(where);
        if (sibling->parent != parent)
            return nullptr;
        after = sibling;
    }

    RGTreeItem* item = static_cast<RGTreeItem*>(calloc(1, sizeof(RGTreeItem)));
    const TVITEMA& tvi = ins->item;
    if (tvi.mask & TVIF_STATE)
        item->data.state = tvi.state;
    if (tvi.mask & TVIF_PARAM)
        item->data.lParam = tvi.lParam;
    if (tvi.mask & TVIF_IMAGE)
        item->data.image = tvi.iImage;
    if (tvi.mask & TVIF_SELECTEDIMAGE)
        item->data.selectedImage = tvi.iSelectedImage;
    if ((tvi.mask & TVIF_TEXT) && tvi.pszText)
    {
        const size_t length = strlen(tvi.pszText);
        item->data.text = static_cast<char*>(malloc(length + 1));
        memcpy(item->data.text, tvi.pszText, length + 1);
        item->data.textLength = static_cast<UINT>(length);
    }

    item->parent = parent;
    if (!after)
    {
        item->next = parent->firstChild;
        if (parent->firstChild)
            parent->firstChild->prev = item;
        else
            parent->lastChild = item;
        parent->firstChild = item;
    }
    else
    {
        item->prev = after;
        item->next = after->next;
        if (after->next)
            after->next->prev = item;
        else
            parent->lastChild = item;
        after->next = item;
    }
    ++parent->childCount;
    ++w->store.totalCount;

    if (!w->firstVisible)
        w->firstVisible = item;
    if (RGTreeIsRow(w, item))
    {
        ++w->visibleCount;
        // An item above the top row pushes the index, so that the window content stays put.
        if (RGTreeIsAboveFirstVisible(w, item))
            ++w->firstVisibleIndex;
    }
    RepaintAfterChange(w);
    return item;
}

void RGTreeDeleteAll(RGTreeWindow* w)
{
    if (w->selected)
    {
        const LRESULT refused = RGTreeNotify(w, TVN_SELCHANGINGA, 0, w->selected, nullptr);
        w->selected = nullptr;
        KillTimersAndEdit(w, true);
        // Only a parent that answered the question hears the outcome.
        if (refused)
            RGTreeNotify(w, TVN_SELCHANGEDA, 0, nullptr, nullptr);
    }
    else
    {
        w->selected = nullptr;
        KillTimersAndEdit(w, true);
    }
    w->firstVisible = nullptr;
    if (w->tracking)
        RGTreeStopTracking(w);
    w->dropHilite = nullptr;

    while (w->store.root.firstChild)
        FreeSubtree(w, w->store.root.firstChild);
    w->store.root.firstChild = nullptr;
    w->store.root.lastChild = nullptr;
    w->store.root.childCount = 0;
    w->store.totalCount = 0;
    w->horizontalOffset = 0;
    w->firstVisibleIndex = 0;
    w->visibleCount = 0;
    RepaintAfterChange(w);
}

void RGTreeDeleteItem(RGTreeWindow* w, RGTreeItem* item)
{
    KillTimersAndEdit(w, false);

    auto successor = [w](RGTreeItem* of) -> RGTreeItem* {
        if (of->next)
            return of->next;
        if (RGTreeItem* parent = RGTreeParentOf(w, of))
            return parent;
        return of->prev;
    };
    auto inSubtree = [w, item](RGTreeItem* other) {
        return other && (other == item || RGTreeIsDescendant(w, item, other));
    };

    RGTreeItem* replacement = nullptr;
    if (inSubtree(w->firstVisible))
        replacement = successor(item);

    const int rows = RGTreeRowsThatFit(w);
    bool closeGap = false;
    if (RGTreeIsRow(w, item))
    {
        const int n = 1 + (IsExpanded(item) ? RGTreeCountVisibleDescendants(item->firstChild) : 0);
        w->visibleCount -= n;
        if (!replacement && RGTreeIsAboveFirstVisible(w, item))
            w->firstVisibleIndex -= n;
        if (w->firstVisibleIndex + rows > w->visibleCount)
            closeGap = true;
    }

    if (inSubtree(w->selected))
    {
        RGTreeItem* newSelected = successor(item);
        if (RGTreeNotify(w, TVN_SELCHANGINGA, 0, w->selected, newSelected))
        {
            w->selected = nullptr;
            KillTimersAndEdit(w, true);
        }
        else
        {
            RGTreeItem* oldSelected = w->selected;
            w->selected = newSelected;
            KillTimersAndEdit(w, true);
            if (newSelected)
                newSelected->data.state |= TVIS_SELECTED;
            RGTreeNotify(w, TVN_SELCHANGEDA, 0, oldSelected, newSelected);
        }
    }

    if (inSubtree(w->pressedItem))
        w->pressedItem = nullptr;
    if (inSubtree(w->dragItem))
        w->dragItem = nullptr;
    if (inSubtree(w->dropHilite))
        w->dropHilite = nullptr;

    FreeSubtree(w, item);

    if (replacement)
    {
        w->firstVisible = nullptr;
        RGTreeSetFirstVisible(w, replacement);
    }
    if (closeGap || w->visibleCount == 0)
    {
        if (w->visibleCount == 0)
        {
            w->firstVisible = nullptr;
            RGTreeSetFirstVisible(w, nullptr);
        }
        else if (w->firstVisibleIndex + rows > w->visibleCount)
        {
            RGTreeItem* target = BottomGapTarget(w, rows);
            w->firstVisible = nullptr;
            RGTreeSetFirstVisible(w, target);
        }
    }
    RepaintAfterChange(w);
}

void RGTreeSortArray(RGTreeItem** items, int lo, int hi, RGTreeCompareFn compare)
{
    // Hoare's partition around the middle entry; recurse on the left part, loop on the right.
    while (lo < hi)
    {
        const int first = lo;
        const int last = hi;
        RGTreeItem* const pivot = items[lo + ((hi - lo) + 1) / 2];
        do
        {
            while (compare(&items[lo]->data, &pivot->data) < 0)
                ++lo;
            while (compare(&pivot->data, &items[hi]->data) < 0)
                --hi;
            if (lo <= hi)
            {
                RGTreeItem* swap = items[lo];
                items[lo] = items[hi];
                items[hi] = swap;
                ++lo;
                --hi;
            }
        } while (lo < hi);
        if (first < hi)
            RGTreeSortArray(items, first, hi, compare);
        hi = last;
    }
}

void RGTreeSortChildren(RGTreeWindow* w, RGTreeItem* parent)
{
    const bool isRoot = parent == nullptr || reinterpret_cast<HTREEITEM>(parent) == TVI_ROOT;
    if (isRoot)
        parent = Root(w);
    if (parent->childCount > 0)
    {
        std::vector<RGTreeItem*> items;
        items.reserve(parent->childCount);
        for (RGTreeItem* child = parent->firstChild; child; child = child->next)
            items.push_back(child);
        RGTreeSortArray(items.data(), 0, static_cast<int>(items.size()) - 1, w->store.compare);
        RGTreeItem* previous = nullptr;
        for (RGTreeItem* child : items)
        {
            child->prev = previous;
            if (previous)
                previous->next = child;
            previous = child;
        }
        items.back()->next = nullptr;
        parent->firstChild = items.front();
        parent->lastChild = items.back();
    }
    if (isRoot)
    {
        w->firstVisible = w->store.root.firstChild;
        w->firstVisibleIndex = 0;
        RepaintAfterChange(w);
    }
    else
    {
        // The top row stays the same item; its index is counted afresh.
        RGTreeItem* first = w->firstVisible;
        w->firstVisible = nullptr;
        RGTreeSetFirstVisible(w, first);
        if (w->redrawEnabled)
            RGTreeInvalidateAll(w);
    }
}

bool RGTreeExpandItem(RGTreeWindow* w, UINT action, RGTreeItem* item, bool notify)
{
    const UINT oldState = item->data.state;
    UINT newState = oldState;
    if (action == TVE_COLLAPSE)
        newState &= ~TVIS_EXPANDED;
    else if (action == TVE_EXPAND)
        newState |= TVIS_EXPANDED;
    else if (action == TVE_TOGGLE)
        newState ^= TVIS_EXPANDED;
    if (newState == oldState)
        return false;

    const int n = RGTreeCountVisibleDescendants(item->firstChild);
    if (notify && RGTreeNotify(w, TVN_ITEMEXPANDINGA, action, nullptr, item))
        return false;

    const bool isRow = RGTreeIsRow(w, item);
    // The item's row index, taken while its descendants are still counted as before.
    const int index = (n != 0 && isRow) ? RGTreeGetVisibleIndex(w, item) : -1;
    item->data.state = newState;
    if (n != 0 && isRow)
    {
        KillTimer(w->hwnd, RGTreeEditTimer);
        RGTreeEndLabelEdit(w, true);
        const int rows = RGTreeRowsThatFit(w);
        const bool rowAbove = index < w->firstVisibleIndex;
        RGTreeItem* target = nullptr;
        bool wholeWindow = false;

        if (newState & TVIS_EXPANDED)
        {
            w->visibleCount += n;
            if (rowAbove)
                w->firstVisibleIndex += n;
            else if (rows <= n + 1)
                target = item;
            else
            {
                // The least scroll that shows all new rows while the item stays in view.
                RGTreeItem* lastNew = item;
                for (int i = 0; i < n && lastNew; ++i)
                    lastNew = NextVisible(w, lastNew);
                RGTreeItem* current = lastNew;
                bool metFirst = current == w->firstVisible;
                for (int steps = 0; !metFirst && current && steps < rows - 1; ++steps)
                {
                    RGTreeItem* up = PreviousVisible(w, current);
                    if (!up)
                        break;
                    current = up;
                    metFirst = current == w->firstVisible;
                }
                if (!metFirst)
                    target = current;
            }
        }
        else
        {
            w->visibleCount -= n;
            bool madeTop = false;
            if (RGTreeIsDescendant(w, item, w->firstVisible))
            {
                RGTreeSetFirstVisible(w, item);
                madeTop = true;
            }
            if (rowAbove && !madeTop)
                w->firstVisibleIndex -= n;
            if (w->firstVisibleIndex + rows > w->visibleCount)
                target = BottomGapTarget(w, rows);
            else
                target = RGTreeVisibleTarget(w, item);

            // Hidden items give up their selection; the caret moves up to the item.
            for (RGTreeItem* current = item->firstChild; current;)
            {
                if (current != w->selected)
                    current->data.state &= ~TVIS_SELECTED;
                if (current->firstChild)
                    current = current->firstChild;
                else
                {
                    while (current && current != item && !current->next)
                        current = current->parent;
                    current = (current && current != item) ? current->next : nullptr;
                }
            }
            if (w->selected && RGTreeIsDescendant(w, item, w->selected))
            {
                RGTreeItem* oldSelected = w->selected;
                if (notify && RGTreeNotify(w, TVN_SELCHANGINGA, 0, oldSelected, item))
                {
                    oldSelected->data.state &= ~TVIS_SELECTED;
                    w->selected = nullptr;
                    KillTimersAndEdit(w, true);
                }
                else
                {
                    oldSelected->data.state &= ~TVIS_SELECTED;
                    w->selected = item;
                    KillTimersAndEdit(w, true);
                    item->data.state |= TVIS_SELECTED;
                    if (notify)
                        RGTreeNotify(w, TVN_SELCHANGEDA, 0, oldSelected, item);
                }
            }
            if (w->pressedItem && RGTreeIsDescendant(w, item, w->pressedItem))
                RGTreeStopTracking(w);
        }

        if (target && target != w->firstVisible)
        {
            w->firstVisible = nullptr;
            RGTreeSetFirstVisible(w, target);
            wholeWindow = true;
        }
        if (w->redrawEnabled && !RGTreeUpdateScrollBars(w))
        {
            RECT client = {};
            GetClientRect(w->hwnd, &client);
            if (wholeWindow)
                InvalidateRect(w->hwnd, nullptr, TRUE);
            else
            {
                RECT row;
                if (RGTreeRowRect(w, item, &row) && row.bottom > client.top && row.top < client.bottom)
                {
                    row.bottom = client.bottom;
                    InvalidateRect(w->hwnd, &row, TRUE);
                }
            }
        }
    }
    if (notify)
        RGTreeNotify(w, TVN_ITEMEXPANDEDA, action, nullptr, item);
    return true;
}

bool RGTreeEnsureVisible(RGTreeWindow* w, RGTreeItem* item, bool skipScroll)
{
    for (RGTreeItem* parent = RGTreeParentOf(w, item); parent; parent = RGTreeParentOf(w, parent))
    {
        if (!IsExpanded(parent) && !RGTreeExpandItem(w, TVE_EXPAND, parent, true))
            return false;
    }
    if (skipScroll)
        return true;
    RGTreeItem* target = RGTreeVisibleTarget(w, item);
    if (!target || target == w->firstVisible)
        return true;
    w->firstVisible = nullptr;
    RGTreeSetFirstVisible(w, target);
    RepaintAfterChange(w);
    return true;
}

void RGTreeGetItem(RGTreeWindow* w, TVITEMA* tvi)
{
    RGTreeItem* item = reinterpret_cast<RGTreeItem*>(tvi->hItem);
    if (!item)
    {
        if (!(tvi->mask & TVIF_CHILDREN))
            return;
        item = Root(w);
    }
    if ((tvi->mask & TVIF_TEXT) && tvi->pszText && tvi->cchTextMax > 0)
    {
        const UINT room = static_cast<UINT>(tvi->cchTextMax - 1);
        const UINT length = item->data.textLength < room ? item->data.textLength : room;
        if (length)
            memcpy(tvi->pszText, item->data.text, length);
        tvi->pszText[length] = '\0';
    }
    if (tvi->mask & TVIF_CHILDREN)
        tvi->cChildren = item->childCount > 0 ? 1 : 0;
    if (tvi->mask & TVIF_PARAM)
        tvi->lParam = item->data.lParam;
    if (tvi->mask & TVIF_IMAGE)
        tvi->iImage = item->data.image;
    if (tvi->mask & TVIF_SELECTEDIMAGE)
        tvi->iSelectedImage = item->data.selectedImage;
    if (tvi->mask & TVIF_STATE)
        tvi->state = item->data.state;
}

void RGTreeSetItem(RGTreeWindow* w, const TVITEMA* tvi)
{
    RGTreeItem* item = reinterpret_cast<RGTreeItem*>(tvi->hItem);
    if (!item)
        return;
    bool changed = false;
    if (tvi->mask & TVIF_TEXT)
    {
        free(item->data.text);
        item->data.text = nullptr;
        item->data.textLength = 0;
        if (tvi->pszText)
        {
            const size_t length = strlen(tvi->pszText);
            item->data.text = static_cast<char*>(malloc(length + 1));
            memcpy(item->data.text, tvi->pszText, length + 1);
            item->data.textLength = static_cast<UINT>(length);
        }
        item->data.textWidth = 0;
        changed = true;
    }
    if (tvi->mask & TVIF_STATE)
    {
        if (tvi->stateMask & TVIS_EXPANDED)
            RGTreeExpandItem(w, (tvi->state & TVIS_EXPANDED) ? TVE_EXPAND : TVE_COLLAPSE, item, false);
        const UINT mask = tvi->stateMask & ~TVIS_EXPANDED;
        const UINT merged = (item->data.state & ~mask) | (tvi->state & mask);
        if (merged != item->data.state)
        {
            item->data.state = merged;
            changed = true;
        }
    }
    if (tvi->mask & TVIF_PARAM)
        item->data.lParam = tvi->lParam;
    if (tvi->mask & TVIF_IMAGE)
        item->data.image = tvi->iImage;
    if (tvi->mask & TVIF_SELECTEDIMAGE)
        item->data.selectedImage = tvi->iSelectedImage;

    if (changed && w->redrawEnabled)
    {
        // Only a row in the window needs painting; a label elsewhere may still widen the tree.
        const int rows = RGTreeRowsThatFit(w) + 1;
        RGTreeItem* current = w->firstVisible;
        bool found = false;
        for (int steps = 0; current && steps < rows; ++steps, current = NextVisible(w, current))
        {
            if (current == item)
            {
                found = true;
                break;
            }
        }
        if (found)
        {
            if (!RGTreeUpdateScrollBars(w))
            {
                RECT row;
                if (RGTreeRowRect(w, item, &row))
                    InvalidateRect(w->hwnd, &row, TRUE);
            }
        }
        else if (tvi->mask & TVIF_TEXT)
            RGTreeUpdateScrollBars(w);
    }
}
