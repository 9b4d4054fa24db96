// The edit row's look: the value column's text, and the label editor growing with its text.
#include "propertytree.h"

// Value and additional text; a text row shows the additional text as a remark in brackets,
// a number row as its unit.
CString CKelPropertyTreeItemEdit::DisplayText() const
{
    CString text(m_strValue);
    if (!m_strAdditionalTextInfo.IsEmpty())
    {
        const bool number = m_eValueFormat == VALUE_FORMAT_INTEGER || m_eValueFormat == VALUE_FORMAT_DOUBLE;
        text += number ? " " : " [";
        text += m_strAdditionalTextInfo;
        if (!number)
            text += "]";
    }
    return text;
}

void CKelPropertyTreeItemEdit::DrawAttribute(CDC* pDC, const RECT& rc)
{
    CKelPropertyTree* tree = GetItemOwner();
    if (tree == nullptr || pDC == nullptr)
        return;
    CSelectObjectScope font(pDC, CKelPropertyTree::GetNormalFont());
    const int oldMode = pDC->SetBkMode(TRANSPARENT);
    const COLORREF oldColor = pDC->GetTextColor();

    CRect box(rc);
    box.OffsetRect(0, -2);
    CString text = DisplayText();
    if (m_nPassword)
        text = CString('*', text.GetLength());

    const UINT format = DT_SINGLELINE | DT_VCENTER;
    if (IsRowDisabled())
    {
        // Engraved: a light copy one pixel down and right under the grey text.
        CRect shadow(box);
        shadow.OffsetRect(1, 1);
        pDC->SetTextColor(GetSysColor(COLOR_3DHIGHLIGHT));
        pDC->DrawText(text, &shadow, format);
        pDC->SetTextColor(GetSysColor(COLOR_GRAYTEXT));
        pDC->DrawText(text, &box, format);
    }
    else
    {
        pDC->SetTextColor(GetTextColor());
        pDC->DrawText(text, &box, format);
    }

    // The widest value decides the horizontal scroll range; the unit does not count.
    const CSize extent = pDC->GetTextExtent(m_nPassword ? text : m_strValue);
    tree->SetInfoColMaxVisibleWidth(extent.cx);

    pDC->SetTextColor(oldColor);
    pDC->SetBkMode(oldMode);
}

// The label editor is as wide as its text and a little room to type, inside the list.
void CKelPropertyTreeItemEdit::AdaptEditBoxSize()
{
    if (!m_bEditBoxSizeAutoAdapt || m_hWnd == nullptr)
        return;
    CKelPropertyTreeList* list = GetList();
    if (list == nullptr || list->m_hWnd == nullptr)
        return;

    CString text;
    CWnd::GetWindowText(text);
    text += "MMM";
    CSize extent;
    {
        CClientDC dc(this);
        CSelectObjectScope font(&dc, GetFont());
        extent = dc.GetTextExtent(text);
    }

    CRect limits;
    list->GetWindowRect(&limits);
    list->ScreenToClient(&limits);
    const int border = GetSystemMetrics(SM_CXBORDER);
    const int leftLimit = limits.left + border;
    const int rightLimit = limits.right - GetSystemMetrics(SM_CXVSCROLL) - border;

    CRect box;
    GetWindowRect(&box);
    list->ScreenToClient(&box);
    if (box.left < leftLimit)
        box.left = leftLimit;
    box.right = box.left + extent.cx;
    if (box.right > rightLimit)
        box.right = rightLimit;
    SetWindowPos(nullptr, box.left, box.top, box.Width(), box.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
}
