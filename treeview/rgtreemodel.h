// The tree engine's records and the operations on its model: items, store, per-window state,
// the visible-order arithmetic, insertion, deletion, sorting and expansion.
//
// Records in this header:
//   RGTreeItemData   the payload of an item (what the store's callbacks see)
//   RGTreeItem       one item: links plus payload; its address is the HTREEITEM
//   RGTreeStore      the items of one window, with the root pseudo-item
//   RGTreeWindow     the state of one tree window, found through GWLP_USERDATA
//
// The rows are never stored: the visible order is derived by walking the links, and only
// visibleCount, firstVisible and firstVisibleIndex are kept and repaired after each change.
// The functions are exported so that the tests can check the model directly.
#pragma once
#include "kelwinctrl.h"

#include <commctrl.h>
#include <stdint.h>

struct RGTreeItemData
{
    UINT state;        // TVIS_* bits, state image index in 0xF000
    char* text;        // heap copy of the label, null if none
    UINT textLength;   // bytes of text without the terminator
    int image;         // normal image index, -1 asks the parent
    int selectedImage; // image while TVIS_SELECTED is set
    LPARAM lParam;     // the caller's value
    WORD textWidth;    // cached label width in pixels, 0 = not measured
};

struct RGTreeItem
{
    RGTreeItem* parent; // the root pseudo-item for a top-level item
    RGTreeItem* prev;
    RGTreeItem* next;
    RGTreeItem* firstChild;
    RGTreeItem* lastChild;
    int32_t childCount;
    RGTreeItemData data;
};

typedef int(CALLBACK* RGTreeCompareFn)(const RGTreeItemData* a, const RGTreeItemData* b);
typedef void(CALLBACK* RGTreeDeleteFn)(RGTreeItem* item, void* deleteData);

struct RGTreeStore
{
    RGTreeItem root; // never painted, never handed out: its handle is null
    int32_t totalCount;
    RGTreeCompareFn compare;
    RGTreeDeleteFn onDelete;
    void* deleteData;
};

struct RGTreeWindow
{
    HWND hwnd;
    WNDPROC previousWndProc;
    RGTreeStore store;
    int32_t visibleCount;
    int32_t totalWidth;
    int32_t firstVisibleIndex;
    int32_t horizontalOffset;
    RGTreeItem* firstVisible;
    RGTreeItem* selected;
    RGTreeItem* editing;
    RGTreeItem* dropHilite;
    HWND editWindow;
    BYTE redrawEnabled;
    UINT itemHeight;
    UINT indent;
    UINT buttonSize;
    UINT buttonOffset;
    UINT glyphArm;
    HIMAGELIST normalImages;
    HIMAGELIST stateImages;
    BYTE inScrollUpdate;
    BYTE redrawPending;
    RGTreeItem* pressedItem;
    BYTE tracking;
    BYTE trackingLeft;
    int32_t pressX;
    int32_t pressY;
    RGTreeItem* dragItem;
};

// Timers on the tree window: the delayed label edit and the delayed reveal of a click.
enum : UINT_PTR
{
    RGTreeEditTimer = 1345,
    RGTreeRevealTimer = 1346
};

// The record of a tree window, or null if the engine is not attached.
KELWINCTRL_API RGTreeWindow* RGTreeFromWindow(HWND hwnd);

// Links and walks.
KELWINCTRL_API RGTreeItem* RGTreeParentOf(const RGTreeWindow* w, const RGTreeItem* item);
KELWINCTRL_API int RGTreeCountVisibleDescendants(const RGTreeItem* first);
KELWINCTRL_API RGTreeItem* RGTreeGetNextItem(RGTreeWindow* w, UINT code, RGTreeItem* item);
KELWINCTRL_API int RGTreeGetVisibleIndex(RGTreeWindow* w, RGTreeItem* item);
KELWINCTRL_API void RGTreeSetFirstVisible(RGTreeWindow* w, RGTreeItem* newFirst);
KELWINCTRL_API bool RGTreeIsAboveFirstVisible(RGTreeWindow* w, RGTreeItem* item);
KELWINCTRL_API bool RGTreeIsDescendant(const RGTreeWindow* w, const RGTreeItem* ancestor, const RGTreeItem* item);
KELWINCTRL_API bool RGTreeIsRow(const RGTreeWindow* w, const RGTreeItem* item);
KELWINCTRL_API void RGTreeFixBottomGap(RGTreeWindow* w);
KELWINCTRL_API RGTreeItem* RGTreeVisibleTarget(RGTreeWindow* w, RGTreeItem* item);

// Changes of the model.
KELWINCTRL_API RGTreeItem* RGTreeInsertItem(RGTreeWindow* w, const TVINSERTSTRUCTA* ins);
KELWINCTRL_API void RGTreeDeleteAll(RGTreeWindow* w);
KELWINCTRL_API void RGTreeDeleteItem(RGTreeWindow* w, RGTreeItem* item);
KELWINCTRL_API void RGTreeSortChildren(RGTreeWindow* w, RGTreeItem* parent);
KELWINCTRL_API void RGTreeSortArray(RGTreeItem** items, int lo, int hi, RGTreeCompareFn compare);
KELWINCTRL_API bool RGTreeExpandItem(RGTreeWindow* w, UINT action, RGTreeItem* item, bool notify);
KELWINCTRL_API bool RGTreeEnsureVisible(RGTreeWindow* w, RGTreeItem* item, bool skipScroll);
KELWINCTRL_API void RGTreeGetItem(RGTreeWindow* w, TVITEMA* tvi);
KELWINCTRL_API void RGTreeSetItem(RGTreeWindow* w, const TVITEMA* tvi);
KELWINCTRL_API void RGTreeSelectItem(RGTreeWindow* w, RGTreeItem* item, UINT code, bool byMouse);

// Layout facts the model needs (row height, rows that fit, row rectangles, scroll bars).
KELWINCTRL_API UINT RGTreeGetItemHeight(RGTreeWindow* w);
KELWINCTRL_API int RGTreeRowsThatFit(RGTreeWindow* w);
KELWINCTRL_API void RGTreeSetIndent(RGTreeWindow* w, UINT value);
KELWINCTRL_API bool RGTreeRowRect(RGTreeWindow* w, RGTreeItem* item, RECT* row);
KELWINCTRL_API void RGTreeItemTextRect(RGTreeWindow* w, RGTreeItem* item, RECT* rect);
KELWINCTRL_API bool RGTreeUpdateScrollBars(RGTreeWindow* w);

// Notifications and the pieces of input state the model touches.
LRESULT RGTreeNotify(RGTreeWindow* w, UINT code, UINT action, RGTreeItem* oldItem, RGTreeItem* newItem);
void RGTreeEndLabelEdit(RGTreeWindow* w, bool cancel);
void RGTreeStopTracking(RGTreeWindow* w);
void RGTreeInvalidateAll(RGTreeWindow* w);

// On 32-bit Windows the records keep their established layout, field for field.
#if !defined(_WIN64)
#include <stddef.h>
static_assert(offsetof(RGTreeItem, childCount) == 20, "RGTreeItem layout");
static_assert(offsetof(RGTreeItem, data) + offsetof(RGTreeItemData, lParam) == 44, "RGTreeItem layout");
static_assert(offsetof(RGTreeItem, data) + offsetof(RGTreeItemData, textWidth) == 48, "RGTreeItem layout");
static_assert(sizeof(RGTreeItem) == 52, "RGTreeItem layout");
static_assert(offsetof(RGTreeStore, totalCount) == 52 && sizeof(RGTreeStore) == 68, "RGTreeStore layout");
static_assert(offsetof(RGTreeWindow, visibleCount) == 76, "RGTreeWindow layout");
static_assert(offsetof(RGTreeWindow, firstVisible) == 92, "RGTreeWindow layout");
static_assert(offsetof(RGTreeWindow, redrawEnabled) == 112, "RGTreeWindow layout");
static_assert(offsetof(RGTreeWindow, inScrollUpdate) == 144, "RGTreeWindow layout");
static_assert(offsetof(RGTreeWindow, pressX) == 156, "RGTreeWindow layout");
static_assert(sizeof(RGTreeWindow) == 168, "RGTreeWindow layout");
#endif
