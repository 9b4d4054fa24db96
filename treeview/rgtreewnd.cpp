// The tree engine's window: creation and attachment, the per-window record, notifications,
// the selection routine and the dispatch of RGTreeWndProc.
#include "rgtreemodel.h"
#include "treeview.h"

#include <stdlib.h>
#include <string.h>

namespace
{
int CALLBACK CompareLabels(const RGTreeItemData* a, const RGTreeItemData* b)
{
    // Items without a label sort as empty labels.
    return _stricmp(a->text ? a->text : "", b->text ? b->text : "");
}

void CALLBACK DeleteItemData(RGTreeItem* item, void* deleteData)
{
    RGTreeWindow* w = static_cast<RGTreeWindow*>(deleteData);
    NMTREEVIEWA nm = {};
    nm.hdr.hwndFrom = w->hwnd;
    nm.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(w->hwnd));
    nm.hdr.code = TVN_DELETEITEMA;
    nm.action = 0;
    nm.itemOld.mask = TVIF_HANDLE | TVIF_PARAM;
    nm.itemOld.hItem = reinterpret_cast<HTREEITEM>(item);
    nm.itemOld.lParam = item->data.lParam;
    if (HWND parent = GetParent(w->hwnd))
        SendMessageA(parent, WM_NOTIFY, nm.hdr.idFrom, reinterpret_cast<LPARAM>(&nm));
    free(item->data.text);
    item->data.text = nullptr;
}

void FillNotifyItem(TVITEMA* tvi, RGTreeItem* item)
{
    if (!item)
        return;
    tvi->mask = TVIF_HANDLE | TVIF_STATE | TVIF_PARAM;
    tvi->hItem = reinterpret_cast<HTREEITEM>(item);
    tvi->state = item->data.state;
    tvi->lParam = item->data.lParam;
}

LRESULT OnCreate(HWND hwnd, LPARAM lParam)
{
    RGTreeWindow* w = static_cast<RGTreeWindow*>(calloc(1, sizeof(RGTreeWindow)));
    w->redrawEnabled = 1;
    RGTreeSetIndent(w, 19);
    SetWindowLongPtrA(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(w));
    w->previousWndProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&RGTreeWndProc)));
    w->hwnd = hwnd;
    w->store.compare = &CompareLabels;
    w->store.onDelete = &DeleteItemData;
    w->store.deleteData = w;

    // The label editor is made once and stays hidden until a label edit starts.
    const CREATESTRUCTA* cs = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    HINSTANCE instance =
        cs ? cs->hInstance : reinterpret_cast<HINSTANCE>(GetWindowLongPtrA(hwnd, GWLP_HINSTANCE));
    w->editWindow = CreateWindowExA(0, "EDIT", nullptr, 0x40801084, 0, 0, 0, 0, hwnd,
                                    reinterpret_cast<HMENU>(static_cast<INT_PTR>(0x4BB)), instance, nullptr);
    if (w->editWindow)
        SendMessageA(w->editWindow, WM_SETFONT, SendMessageA(hwnd, WM_GETFONT, 0, 0), 0);
    return 0;
}

void FreeRecord(HWND hwnd, RGTreeWindow* w)
{
    // Items inserted after WM_DESTROY still go through onDelete, once each.
    w->redrawEnabled = 0;
    if (w->store.root.firstChild)
        RGTreeDeleteAll(w);
    SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0);
    free(w);
}

LRESULT OnGetItemRect(RGTreeWindow* w, WPARAM textOnly, RECT* rect)
{
    if (!rect)
        return 0;
    RGTreeItem* item = nullptr;
    memcpy(&item, rect, sizeof(item));
    RECT row;
    if (!item || !RGTreeRowRect(w, item, &row))
        return 0;
    if (textOnly)
    {
        RGTreeItemTextRect(w, item, &row);
    }
    *rect = row;
    return 1;
}

LRESULT OnSetImageList(RGTreeWindow* w, WPARAM which, HIMAGELIST list)
{
    HIMAGELIST previous;
    if (which == TVSIL_NORMAL)
    {
        previous = w->normalImages;
        w->normalImages = list;
        int cx = 0, cy = 0;
        if (!list || !ImageList_GetIconSize(list, &cx, &cy))
            RGTreeSetIndent(w, 19);
        else
            RGTreeSetIndent(w, cx + 3 < 19 ? 19 : static_cast<UINT>(cx + 3));
        w->itemHeight = 0;
    }
    else
    {
        previous = w->stateImages;
        w->stateImages = list;
    }
    RGTreeInvalidateAll(w);
    return reinterpret_cast<LRESULT>(previous);
}

LRESULT OnSetRedraw(RGTreeWindow* w, WPARAM enable)
{
    w->redrawEnabled = enable ? 1 : 0;
    if (w->redrawEnabled)
    {
        RGTreeFixBottomGap(w);
        if (!RGTreeUpdateScrollBars(w))
            RedrawWindow(w->hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    }
    return 0;
}

void OnSize(RGTreeWindow* w, WPARAM kind)
{
    if (kind != SIZE_RESTORED || !w->redrawEnabled)
        return;
    RGTreeFixBottomGap(w);
    if (!RGTreeUpdateScrollBars(w))
    {
        if (w->inScrollUpdate == 0)
            RedrawWindow(w->hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        else
            w->redrawPending = 1;
    }
}
} // namespace

RGTreeWindow* RGTreeFromWindow(HWND hwnd)
{
    return reinterpret_cast<RGTreeWindow*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
}

LRESULT RGTreeNotify(RGTreeWindow* w, UINT code, UINT action, RGTreeItem* oldItem, RGTreeItem* newItem)
{
    NMTREEVIEWA nm = {};
    nm.hdr.hwndFrom = w->hwnd;
    nm.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(w->hwnd));
    nm.hdr.code = code;
    nm.action = action;
    FillNotifyItem(&nm.itemOld, oldItem);
    FillNotifyItem(&nm.itemNew, newItem);
    HWND parent = GetParent(w->hwnd);
    if (!parent)
        return 0;
    return SendMessageA(parent, WM_NOTIFY, nm.hdr.idFrom, reinterpret_cast<LPARAM>(&nm));
}

void RGTreeEndLabelEdit(RGTreeWindow* w, bool /*cancel*/)
{
    // No label edit can be running before the input code starts one; this is where the edit
    // control is hidden and the item let go.
    if (!w->editing)
        return;
    w->editing = nullptr;
    if (w->editWindow)
        ShowWindow(w->editWindow, SW_HIDE);
}

void RGTreeStopTracking(RGTreeWindow* w)
{
    w->tracking = 0;
    w->pressedItem = nullptr;
    w->dragItem = nullptr;
    if (w->hwnd && GetCapture() == w->hwnd)
        ReleaseCapture();
}

void RGTreeInvalidateAll(RGTreeWindow* w)
{
    if (w->hwnd)
        InvalidateRect(w->hwnd, nullptr, TRUE);
}

void RGTreeSelectItem(RGTreeWindow* w, RGTreeItem* item, UINT code, bool byMouse)
{
    if (code == TVGN_FIRSTVISIBLE)
    {
        // A null top row is only right for an empty tree; the request is ignored.
        if (!item)
            return;
        if (!RGTreeIsRow(w, item) && !RGTreeEnsureVisible(w, item, true))
            return;
        w->firstVisible = nullptr;
        RGTreeSetFirstVisible(w, item);
        if (w->redrawEnabled)
        {
            RGTreeUpdateScrollBars(w);
            RGTreeInvalidateAll(w);
        }
        code = TVGN_CARET;
        byMouse = false;
    }
    if (code == TVGN_DROPHILITE)
    {
        RGTreeItem** target = w->tracking ? &w->pressedItem : &w->dropHilite;
        if (*target == item)
            return;
        RGTreeItem* previous = *target;
        *target = item;
        RECT row;
        for (RGTreeItem* other : {previous, w->dropHilite, w->selected, w->pressedItem})
        {
            if (other && RGTreeRowRect(w, other, &row))
                InvalidateRect(w->hwnd, &row, FALSE);
        }
        UpdateWindow(w->hwnd);
        return;
    }
    if (code != TVGN_CARET)
        return;

    // The action numbers are kept as the tree has always sent them.
    const UINT action = byMouse ? TVC_UNKNOWN : TVC_BYKEYBOARD;
    RGTreeItem* oldItem = w->selected;
    if (RGTreeNotify(w, TVN_SELCHANGINGA, action, oldItem, item))
        return;
    if (w->selected != item)
    {
        RECT row;
        if (w->selected)
        {
            w->selected->data.state &= ~TVIS_SELECTED;
            if (RGTreeRowRect(w, w->selected, &row))
                InvalidateRect(w->hwnd, &row, TRUE);
        }
        w->selected = item;
        KillTimer(w->hwnd, RGTreeRevealTimer);
        KillTimer(w->hwnd, RGTreeEditTimer);
        RGTreeEndLabelEdit(w, true);
        if (item)
        {
            item->data.state |= TVIS_SELECTED;
            RGTreeEnsureVisible(w, item, byMouse || !w->redrawEnabled);
            if (RGTreeRowRect(w, item, &row))
                InvalidateRect(w->hwnd, &row, FALSE);
            if (byMouse)
                SetTimer(w->hwnd, RGTreeRevealTimer, GetDoubleClickTime(), nullptr);
        }
    }
    RGTreeNotify(w, TVN_SELCHANGEDA, action, oldItem, w->selected);
}

// Messages of the model, of layout and scrolling and of input are dispatched here; whatever
// the engine does not answer goes on to the window's previous procedure.
LRESULT CALLBACK RGTreeWndProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_CREATE && !RGTreeFromWindow(hwnd))
        return OnCreate(hwnd, lParam);
    RGTreeWindow* w = RGTreeFromWindow(hwnd);
    if (!w)
        return DefWindowProcA(hwnd, message, wParam, lParam);
    RGTreeItem* item = reinterpret_cast<RGTreeItem*>(lParam);

    switch (message)
    {
    // Life of the window.
    case WM_DESTROY:
        RGTreeDeleteAll(w);
        if (w->editWindow)
        {
            DestroyWindow(w->editWindow);
            w->editWindow = nullptr;
        }
        break;
    case WM_NCDESTROY:
    {
        WNDPROC previous = w->previousWndProc;
        const LRESULT result = CallWindowProcA(previous, hwnd, message, wParam, lParam);
        SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previous));
        FreeRecord(hwnd, w);
        return result;
    }

    // Layout and scrolling.
    case WM_SIZE:
        OnSize(w, wParam);
        break;
    case WM_SETREDRAW:
        return OnSetRedraw(w, wParam);
    case WM_SETFONT:
    case WM_FONTCHANGE:
        w->itemHeight = 0;
        break;

    // The model's messages.
    case TVM_INSERTITEMA:
        return reinterpret_cast<LRESULT>(RGTreeInsertItem(w, reinterpret_cast<const TVINSERTSTRUCTA*>(lParam)));
    case TVM_DELETEITEM:
        if (!item || reinterpret_cast<HTREEITEM>(lParam) == TVI_ROOT)
            RGTreeDeleteAll(w);
        else
            RGTreeDeleteItem(w, item);
        return 1;
    case TVM_EXPAND:
        return item && RGTreeExpandItem(w, static_cast<UINT>(wParam), item, false) ? 1 : 0;
    case TVM_GETITEMRECT:
        return OnGetItemRect(w, wParam, reinterpret_cast<RECT*>(lParam));
    case TVM_GETCOUNT:
        return w->store.totalCount;
    case TVM_GETINDENT:
        return w->indent;
    case TVM_SETINDENT:
        RGTreeSetIndent(w, static_cast<UINT>(wParam));
        RGTreeInvalidateAll(w);
        return 1;
    case TVM_GETIMAGELIST:
        return reinterpret_cast<LRESULT>(wParam == TVSIL_NORMAL ? w->normalImages : w->stateImages);
    case TVM_SETIMAGELIST:
        return OnSetImageList(w, wParam, reinterpret_cast<HIMAGELIST>(lParam));
    case TVM_GETNEXTITEM:
        return wParam > TVGN_LASTVISIBLE
                   ? 0
                   : reinterpret_cast<LRESULT>(RGTreeGetNextItem(w, static_cast<UINT>(wParam), item));
    case TVM_SELECTITEM:
        RGTreeSelectItem(w, item, static_cast<UINT>(wParam), false);
        return 1;
    case TVM_GETITEMA:
        RGTreeGetItem(w, reinterpret_cast<TVITEMA*>(lParam));
        return 1;
    case TVM_SETITEMA:
        // Deliberately 0, also on success.
        RGTreeSetItem(w, reinterpret_cast<const TVITEMA*>(lParam));
        return 0;
    case TVM_GETVISIBLECOUNT:
        return RGTreeRowsThatFit(w);
    case TVM_SORTCHILDREN:
        RGTreeSortChildren(w, item);
        return 1;
    case TVM_ENSUREVISIBLE:
        return item && RGTreeEnsureVisible(w, item, false) ? 1 : 0;
    case TVM_GETITEMHEIGHT:
        return RGTreeGetItemHeight(w);
    default:
        break;
    }
    return CallWindowProcA(w->previousWndProc, hwnd, message, wParam, lParam);
}

HWND CreateRGTree(DWORD style, int x, int y, int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                  LPVOID param)
{
    // Nothing else registers the engine's class; a plain class with the default procedure
    // is enough, since the engine takes the window over right after creation.
    WNDCLASSA existing;
    if (!GetClassInfoA(instance, RGTREE_CLASSNAME, &existing) && !GetClassInfoA(nullptr, RGTREE_CLASSNAME, &existing))
    {
        WNDCLASSA wc = {};
        wc.style = CS_DBLCLKS | CS_GLOBALCLASS;
        wc.lpfnWndProc = DefWindowProcA;
        wc.hInstance = instance;
        wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        wc.lpszClassName = RGTREE_CLASSNAME;
        RegisterClassA(&wc);
    }
    HWND hwnd = CreateWindowExA(0, RGTREE_CLASSNAME, nullptr, style, x, y, width, height, parent, menu, instance, param);
    if (hwnd)
        RGTreeWndProc(hwnd, WM_CREATE, 0, 0);
    return hwnd;
}
