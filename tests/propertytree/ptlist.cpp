// Fixture of the list surface tests.
#include "ptlist.h"

namespace pttest
{
LRESULT TestEdit::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_KILLFOCUS && row && row->IsActivated())
    {
        LRESULT result = CEdit::WindowProc(message, wParam, lParam);
        row->CommitChanges(1);
        return result;
    }
    return CEdit::WindowProc(message, wParam, lParam);
}

EditingItem::~EditingItem()
{
    if (edit.m_hWnd)
        edit.DestroyWindow();
}

void EditingItem::OnActivate()
{
    ValueItem::OnActivate();
    CKelPropertyTree* tree = GetItemOwner();
    if (!tree)
        return;
    if (!edit.m_hWnd)
    {
        edit.row = this;
        edit.Create(WS_CHILD | WS_BORDER | ES_AUTOHSCROLL, GetAttributeRect(), tree->GetCtrlParent(), GetCtrlID());
    }
    edit.MoveWindow(&GetAttributeRect());
    edit.ShowWindow(SW_SHOW);
    edit.SetFocus();
}

void EditingItem::OnCommit(int& notify)
{
    ValueItem::OnCommit(notify);
    if (edit.m_hWnd)
        edit.ShowWindow(SW_HIDE);
}

void ListFixture::SetUp()
{
    CountedItem::Reset();
    ASSERT_TRUE(parent.CreateParent());
    ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE | PTS_NOTIFY, CRect(0, 0, 360, 240), &parent, 1234, Module()));
    list = tree.GetCtrlParent();
    tree.SetPopulated(1);
}

void ListFixture::TearDown()
{
    parent.onNotify = nullptr;
    if (::GetCapture() == list->m_hWnd)
        ::ReleaseCapture();
    tree.DeleteAllItems();
    tree.DestroyWindow();
    parent.DestroyWindow();
    kel_test::PumpPending();
}

CountedItem* ListFixture::Add(const char* label, CKelPropertyTreeItem* p, int resID)
{
    return static_cast<CountedItem*>(tree.InsertItem(new CountedItem(label, resID), p));
}

PaintedValueItem* ListFixture::AddValue(const char* label, CKelPropertyTreeItem* p, COLORREF colour)
{
    return static_cast<PaintedValueItem*>(tree.InsertItem(new PaintedValueItem(label, 0, colour), p));
}

void ListFixture::Paint()
{
    list->Invalidate();
    list->UpdateWindow();
}

std::unique_ptr<kel_test::DibSurface> ListFixture::Render()
{
    CRect client = Client();
    auto surface = std::make_unique<kel_test::DibSurface>(client.Width(), client.Height(), RGB(1, 2, 3));
    list->SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(surface->DC().GetSafeHdc()), PRF_CLIENT);
    ::GdiFlush();
    return surface;
}

CRect ListFixture::Client() const
{
    CRect rc;
    list->GetClientRect(&rc);
    return rc;
}

CRect ListFixture::Inner() const
{
    CRect rc = Client();
    rc.DeflateRect(2, 2);
    return rc;
}

CPoint ListFixture::LabelPoint(CKelPropertyTreeItem* item) const
{
    return CPoint(item->GetLabelHorizOffset() + 3, static_cast<int>(Top(item) + 10));
}

CPoint ListFixture::ValuePoint(CKelPropertyTreeItem* item) const
{
    const RECT& rc = item->GetAttributeRect();
    return CPoint(rc.left + 10, (rc.top + rc.bottom) / 2);
}

CPoint ListFixture::ExpandPoint(CKelPropertyTreeItem* item) const
{
    const RECT& rc = item->GetRectExpandBox();
    return CPoint(rc.left + 4, static_cast<int>(rc.top + 4 - V()));
}

CPoint ListFixture::SwitchPoint(CKelPropertyTreeItem* item) const
{
    const RECT& rc = item->GetSwitchBoxRect();
    return CPoint(static_cast<int>(rc.left + 8 - H()), static_cast<int>(rc.top + 8 - V()));
}

CPoint ListFixture::SpecialButtonPoint(CKelPropertyTreeItem* item) const
{
    const RECT* rc = item->GetSpecialButtonRectPtr();
    return CPoint(static_cast<int>(rc->left + 8 - H()), static_cast<int>(rc->top + 8 - V()));
}

LRESULT ListFixture::Send(UINT message, WPARAM wParam, CPoint pt)
{
    return list->SendMessage(message, wParam, MAKELPARAM(pt.x, pt.y));
}

bool ListFixture::FocusList()
{
    bool focused = false;
    kel_test::RunHoldingForeground(parent.m_hWnd, [&] {
        list->SetFocus();
        kel_test::PumpPending();
        focused = ::GetFocus() == list->m_hWnd;
    });
    return focused;
}
}
