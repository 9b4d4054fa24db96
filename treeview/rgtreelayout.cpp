// Row geometry of the tree engine: row height, rows that fit, indent, row and label
// rectangles and the scroll bars that mirror the model.
#include "rgtreemodel.h"

namespace
{
int DepthPixels(RGTreeWindow* w, RGTreeItem* item)
{
    int levels = 1;
    for (RGTreeItem* parent = RGTreeParentOf(w, item); parent; parent = RGTreeParentOf(w, parent))
        ++levels;
    int pixels = (levels - 1) * static_cast<int>(w->indent);
    if (GetWindowLongA(w->hwnd, GWL_STYLE) & TVS_LINESATROOT)
        pixels += static_cast<int>(w->indent);
    return pixels;
}

bool IconSize(HIMAGELIST list, int* cx, int* cy)
{
    return list && ImageList_GetIconSize(list, cx, cy);
}
} // namespace

UINT RGTreeGetItemHeight(RGTreeWindow* w)
{
    if (w->itemHeight != 0)
        return w->itemHeight;
    HDC dc = GetDC(w->hwnd);
    HFONT font = reinterpret_cast<HFONT>(SendMessageA(w->hwnd, WM_GETFONT, 0, 0));
    HGDIOBJ oldFont = SelectObject(dc, font ? font : GetStockObject(DEFAULT_GUI_FONT));
    TEXTMETRICA tm = {};
    GetTextMetricsA(dc, &tm);
    SelectObject(dc, oldFont);
    ReleaseDC(w->hwnd, dc);
    UINT height = static_cast<UINT>(tm.tmHeight + 2);
    height = (height + 1) & ~1u;
    int cx = 0, cy = 0;
    if (IconSize(w->normalImages, &cx, &cy) && cy > static_cast<int>(height))
        height = static_cast<UINT>(cy);
    w->itemHeight = height;
    return height;
}

int RGTreeRowsThatFit(RGTreeWindow* w)
{
    if (!w->hwnd)
        return 0;
    RECT client = {};
    GetClientRect(w->hwnd, &client);
    const int height = static_cast<int>(RGTreeGetItemHeight(w));
    return height > 0 ? (client.bottom - client.top) / height : 0;
}

void RGTreeSetIndent(RGTreeWindow* w, UINT value)
{
    w->indent = value < 15 ? 15 : value;
    if (!w->normalImages || !w->hwnd)
    {
        w->buttonSize = w->indent > 15 ? 9 : 7;
        w->buttonOffset = w->buttonSize == 7 ? 4 : (w->indent - 8) >> 1;
        w->glyphArm = 2;
        return;
    }
    int cx = 0, cy = 0;
    int m = 0, half = 0;
    if (IconSize(w->normalImages, &cx, &cy))
    {
        m = cx < cy ? cx : cy;
        half = cx >> 1;
    }
    w->buttonSize = static_cast<UINT>((m >> 2) * 2 + 1);
    w->buttonOffset = static_cast<UINT>(half - static_cast<int>(w->buttonSize >> 1));
    const UINT size = w->buttonSize;
    w->glyphArm = size < 3 ? 0 : size < 5 ? 1 : size < 11 ? 2 : size < 13 ? 3 : size < 17 ? 4 : size / 3;
    if (w->indent < w->buttonSize + 2 * w->buttonOffset)
        w->indent = w->buttonSize + 2 * w->buttonOffset;
}

bool RGTreeRowRect(RGTreeWindow* w, RGTreeItem* item, RECT* row)
{
    const int index = RGTreeGetVisibleIndex(w, item);
    if (index < 0)
        return false;
    RECT client = {};
    GetClientRect(w->hwnd, &client);
    const int height = static_cast<int>(RGTreeGetItemHeight(w));
    row->left = client.left;
    row->right = client.right;
    row->top = (index - w->firstVisibleIndex) * height;
    row->bottom = row->top + height;
    return true;
}

void RGTreeItemTextRect(RGTreeWindow* w, RGTreeItem* item, RECT* rect)
{
    rect->left = -w->horizontalOffset + DepthPixels(w, item);
    int cx = 0, cy = 0;
    if ((item->data.state & 0xF000) && IconSize(w->stateImages, &cx, &cy))
        rect->left += cx;
    if (IconSize(w->normalImages, &cx, &cy))
        rect->left += cx + 3;
    if (item->data.textWidth == 0 && item->data.text)
    {
        HDC dc = GetDC(w->hwnd);
        HFONT font = reinterpret_cast<HFONT>(SendMessageA(w->hwnd, WM_GETFONT, 0, 0));
        HGDIOBJ oldFont = SelectObject(dc, font ? font : GetStockObject(DEFAULT_GUI_FONT));
        SIZE extent = {};
        GetTextExtentPoint32A(dc, item->data.text, static_cast<int>(item->data.textLength), &extent);
        SelectObject(dc, oldFont);
        ReleaseDC(w->hwnd, dc);
        item->data.textWidth = static_cast<WORD>(extent.cx);
    }
    rect->right = rect->left + item->data.textWidth + 4;
}

bool RGTreeUpdateScrollBars(RGTreeWindow* w)
{
    const BYTE saved = w->inScrollUpdate;
    w->inScrollUpdate = 1;

    // The vertical bar mirrors the rows; changing it may resize the client area (WM_SIZE).
    SCROLLINFO si = {};
    si.cbSize = sizeof(si);
    si.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    GetScrollInfo(w->hwnd, SB_VERT, &si);
    const int wantedMax = w->visibleCount > 0 ? w->visibleCount - 1 : 0;
    const UINT wantedPage = static_cast<UINT>(RGTreeRowsThatFit(w));
    if (si.nMin != 0 || si.nMax != wantedMax || si.nPage != wantedPage || si.nPos != w->firstVisibleIndex)
    {
        si.nMin = 0;
        si.nMax = wantedMax;
        si.nPage = wantedPage;
        si.nPos = w->firstVisibleIndex;
        SetScrollInfo(w->hwnd, SB_VERT, &si, TRUE);
    }

    w->inScrollUpdate = saved;
    if (w->inScrollUpdate == 0 && w->redrawPending)
    {
        RedrawWindow(w->hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        w->redrawPending = 0;
        return true;
    }
    return false;
}
