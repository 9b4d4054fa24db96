// The list surface's entry to label editing (F2 and the second click on a selected label).
#include "propertytree.h"

void CKelPropertyTreeList::EditLabel(CKelPropertyTreeItem* pItem)
{
    if (m_pTree == nullptr)
        return;
    CKelPropertyTreeItem* item = pItem != nullptr ? pItem : m_pTree->GetFocusedItem();
    if (item == nullptr || !m_pTree->IsEnabledLabelEdit() || item->IsReadOnly())
        return;
    item->EditLabel(item->GetLabelText(), item->GetLabelLimitText());
}
