// Helpers of the property tree tests.
#include "pttest.h"

namespace pttest
{
std::string Codes(const std::vector<unsigned>& codes)
{
    std::string s;
    for (unsigned c : codes)
        s += std::to_string(c) + " ";
    return s;
}

int CountedItem::s_live = 0;
int CountedItem::s_made = 0;
int CountedItem::s_destroyedCount = 0;
int CountedItem::s_doubleDestroyed = 0;
std::set<const void*> CountedItem::s_destroyed;
std::set<const void*> CountedItem::s_liveSet;

namespace
{
long LayoutChain(CKelPropertyTree& tree, CKelPropertyTreeItem* chain, long y, CKelPropertyTreeItem*& last)
{
    for (CKelPropertyTreeItem* p = chain; p; p = p->GetSibling())
    {
        POINT at = {0, y};
        p->SetLocation(at);
        p->SetNextVisible(nullptr);
        if (last)
            last->SetNextVisible(p);
        else
            tree.SetVisibleList(p);
        last = p;
        y += p->GetHeight();
        if (p->IsExpanded())
            y = LayoutChain(tree, p->GetChild(), y, last);
    }
    return y;
}
}

void LayoutRows(CKelPropertyTree& tree)
{
    tree.ClearVisibleList();
    CKelPropertyTreeItem* last = nullptr;
    LayoutChain(tree, tree.GetRootItem()->GetChild(), 0, last);
}

bool RecordingParent::CreateParent()
{
    return CreateEx(0, nullptr, "property tree parent", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 400, 300,
                    nullptr, nullptr) != FALSE;
}

LRESULT RecordingParent::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NOTIFY)
    {
        const PropertyTreeNotify* nm = reinterpret_cast<const PropertyTreeNotify*>(lParam);
        codes.push_back(nm->hdr.code);
        items.push_back(nm->pItem);
        ids.push_back(nm->hdr.idFrom);
        senders.push_back(nm->hdr.hwndFrom);
        if (onNotify)
            onNotify(nm);
        if (nm->hdr.code == PTN_ITEM_DELETING && keep.count(nm->pItem))
            return 1;
        return refuse.count(nm->hdr.code) ? 1 : 0;
    }
    if (message == WM_RBUTTONDBLCLK)
        ++rightDoubleClicks;
    if (message == WM_PT_EXCHANGE_OM)
    {
        CExternalOMData* data = reinterpret_cast<CExternalOMData*>(lParam);
        ++exchanges;
        lastRequestedResID = data->nRequestedResID;
        data->dwOptions = omOptions;
        data->pAttribSet = attribSet;
        data->nExternalFunction = externalFunction;
        return 0;
    }
    return CWnd::WindowProc(message, wParam, lParam);
}
}
