// Editing a row's label in place: an edit row laid over the label's highlight.
#include "propertytree.h"

#include <new>

void CKelPropertyTreeItem::EditLabel(const CString& text, unsigned limit)
{
    if (IsRectEmpty(&m_rcLabelHighlight) || m_pOwner == nullptr)
        return;
    CKelPropertyTreeList* list = m_pOwner->GetCtrlParent();
    if (list == nullptr || list->m_hWnd == nullptr)
        return;

    if (m_pLabelEdit != nullptr)
    {
        // An editor still open gives the label back before it goes.
        CKelPropertyTreeItemEdit* old = static_cast<CKelPropertyTreeItemEdit*>(m_pLabelEdit);
        if (!old->IsCommitted() && old->GetItemLabelOwner() == this)
            m_strLabel = old->GetItemText(1);
        m_pLabelEdit = nullptr;
        delete old;
    }

    CKelPropertyTreeItemEdit* editor = new (std::nothrow) CKelPropertyTreeItemEdit();
    if (editor == nullptr)
        return;
    if (!editor->Create(WS_CHILD | WS_BORDER | ES_AUTOHSCROLL, m_rcLabelHighlight, list, 102))
    {
        delete editor;
        return;
    }
    m_pLabelEdit = editor;
    editor->SetFont(CKelPropertyTree::GetNormalFont(), FALSE);
    editor->SetWindowTextA(text);
    editor->SetLimitText(limit);

    const RECT& rc = m_rcLabelHighlight;
    editor->SetWindowPos(nullptr, rc.left, rc.top, rc.right - rc.left + 10, rc.bottom - rc.top,
                         SWP_NOZORDER | SWP_SHOWWINDOW);
    editor->SetFocus();

    editor->SetValueFormat(CKelPropertyTreeItemEdit::VALUE_FORMAT_TEXT);
    editor->SetSel(0, -1);
    editor->SendMessage(EM_SCROLLCARET);

    editor->SetItemLabelOwner(this);
    editor->SetKelPropertyOwner(m_pOwner);
    editor->SetEditBoxSizeAutoAdapt(true);

    // The label is a blank meanwhile, so that painting does not draw under the editor.
    m_strLabel = " ";
}
