// KelWinCtrl: the library's own tree-view engine behind the TVM_* messages.
//
// Functions in this header:
//   CreateRGTree    creates a tree window and attaches the engine to it
//   RGTreeWndProc   the engine's window procedure
//
// The engine answers the TVM_* messages of the system tree view (ANSI forms) itself; an
// HTREEITEM it gives out is the address of its item record. Usage:
//
//     HWND tree = CreateRGTree(WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS, 0, 0, 200, 300,
//                              hwndParent, reinterpret_cast<HMENU>(100), hInstance, nullptr);
//     TVINSERTSTRUCTA ins = {};
//     ins.hParent = TVI_ROOT;
//     ins.hInsertAfter = TVI_LAST;
//     ins.item.mask = TVIF_TEXT;
//     ins.item.pszText = const_cast<char*>("Walls");
//     HTREEITEM walls = TreeView_InsertItem(tree, &ins);
//
// An existing window (for example one of class "SysTreeView32") is taken over by calling
// RGTreeWndProc(hwnd, WM_CREATE, 0, 0) once right after its creation; messages the engine
// does not answer go on to the window's previous procedure.
#pragma once
#include "kelwinctrl.h"

#include <commctrl.h>

// The class of the windows that CreateRGTree makes. The library registers it (with the
// default window procedure) on the first call if nobody did so before.
#define RGTREE_CLASSNAME "SYSTREE32"

extern "C" {
KELWINCTRL_API HWND CreateRGTree(DWORD style, int x, int y, int width, int height, HWND parent, HMENU menu,
                                 HINSTANCE instance, LPVOID param);
KELWINCTRL_API LRESULT CALLBACK RGTreeWndProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
}
