// The parent window of the tree tests: records TVN_* notifications and answers vetoes.
#include "treefixture.h"

namespace kel_tree_test
{
namespace
{
LRESULT CALLBACK ParentProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NOTIFY)
    {
        TreeParentState* s = reinterpret_cast<TreeParentState*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
        const NMTREEVIEWA* nm = reinterpret_cast<const NMTREEVIEWA*>(lParam);
        if (s)
        {
            s->notifications.push_back({nm->hdr.code, nm->action, nm->itemOld.hItem, nm->itemNew.hItem});
            if (nm->hdr.code == TVN_DELETEITEMA)
                s->deleted.push_back(nm->itemOld.hItem);
            if (nm->hdr.code == TVN_SELCHANGINGA)
                return s->answerSelChanging();
            if (nm->hdr.code == TVN_ITEMEXPANDINGA)
                return s->vetoExpanding ? 1 : 0;
        }
        return 0;
    }
    return DefWindowProcA(hwnd, message, wParam, lParam);
}

const char* ParentClass()
{
    static bool registered = false;
    if (!registered)
    {
        WNDCLASSA wc = {};
        wc.lpfnWndProc = ParentProc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.lpszClassName = "KelTreeTestParent";
        wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        RegisterClassA(&wc);
        registered = true;
    }
    return "KelTreeTestParent";
}
} // namespace

void TreeTest::SetUp()
{
    parent = CreateWindowExA(0, ParentClass(), "tree test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 400, 600,
                             nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(parent, nullptr);
    SetWindowLongPtrA(parent, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&state));
}

void TreeTest::TearDown()
{
    if (parent)
        DestroyWindow(parent);
    parent = nullptr;
    tree = nullptr;
}

void TreeTest::MakeTree(int clientHeight, DWORD style)
{
    tree = CreateRGTree(style, 0, 0, 200, clientHeight, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(77)),
                        GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(tree, nullptr);
    ASSERT_NE(W(), nullptr);
}

HTREEITEM TreeTest::Insert(HTREEITEM parentItem, HTREEITEM after, const char* text, UINT itemState)
{
    TVINSERTSTRUCTA ins = {};
    ins.hParent = parentItem;
    ins.hInsertAfter = after;
    ins.item.mask = TVIF_TEXT | TVIF_STATE | TVIF_PARAM;
    ins.item.pszText = const_cast<char*>(text);
    ins.item.state = itemState;
    ins.item.lParam = 0x1234;
    return reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&ins)));
}

HTREEITEM TreeTest::Next(UINT code, HTREEITEM item) const
{
    return reinterpret_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, code, reinterpret_cast<LPARAM>(item)));
}

LRESULT TreeTest::Send(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return SendMessageA(tree, message, wParam, lParam);
}

UINT TreeTest::State(HTREEITEM item) const
{
    TVITEMA tvi = {};
    tvi.mask = TVIF_STATE | TVIF_HANDLE;
    tvi.hItem = item;
    Send(TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&tvi));
    return tvi.state;
}
}
