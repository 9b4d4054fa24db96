// A snapshot list of property rows, safe to walk while the tree changes.
#include "propertytree.h"

#include <algorithm>
#include <cstring>

CKelPropertyTreeItemAll::CKelPropertyTreeItemAll(int resIDFilter, KEL_PROPERTY_TREEITEMALL_FLAG flag)
    : m_nResIDFilter(resIDFilter), m_nActual(0), m_eFlag(flag)
{
}

CKelPropertyTreeItemAll::CKelPropertyTreeItemAll(CKelPropertyTreeItem* pStart, int resIDFilter,
                                                 KEL_PROPERTY_TREEITEMALL_FLAG flag)
    : m_nResIDFilter(resIDFilter), m_nActual(0), m_eFlag(flag)
{
    Populate(pStart);
}

CKelPropertyTreeItemAll::CKelPropertyTreeItemAll(const CKelPropertyTreeItemAll& other) = default;
CKelPropertyTreeItemAll& CKelPropertyTreeItemAll::operator=(const CKelPropertyTreeItemAll& other) = default;

CKelPropertyTreeItemAll& CKelPropertyTreeItemAll::operator+=(const CKelPropertyTreeItemAll& other)
{
    m_items.insert(m_items.end(), other.m_items.begin(), other.m_items.end());
    return *this;
}

// Children come before their row, so that a caller deleting in list order never meets a row
// whose parent is already gone.
void CKelPropertyTreeItemAll::Populate(CKelPropertyTreeItem* pStart)
{
    for (CKelPropertyTreeItem* p = pStart; p; p = p->GetSibling())
    {
        Populate(p->GetChild());
        if (m_eFlag == KPTIA_SELECTED && !p->IsSelected())
            continue;
        if (m_nResIDFilter == PT_RESID_ANY || p->GetResID() == m_nResIDFilter)
            m_items.push_back(p);
    }
}

CKelPropertyTreeItem* CKelPropertyTreeItemAll::GetFirst()
{
    m_nActual = 0;
    return GetActual();
}

CKelPropertyTreeItem* CKelPropertyTreeItemAll::GetNext()
{
    if (m_nActual < m_items.size())
        ++m_nActual;
    return GetActual();
}

CKelPropertyTreeItem* CKelPropertyTreeItemAll::GetLast()
{
    if (m_items.empty())
    {
        m_nActual = 0;
        return nullptr;
    }
    m_nActual = m_items.size() - 1;
    return m_items.back();
}

CKelPropertyTreeItem* CKelPropertyTreeItemAll::GetActual()
{
    return m_nActual < m_items.size() ? m_items[m_nActual] : nullptr;
}

void CKelPropertyTreeItemAll::Add(CKelPropertyTreeItem* pItem)
{
    m_items.push_back(pItem);
}

void CKelPropertyTreeItemAll::Remove(CKelPropertyTreeItem* pItem)
{
    auto it = std::find(m_items.begin(), m_items.end(), pItem);
    if (it == m_items.end())
        return;
    size_t index = static_cast<size_t>(it - m_items.begin());
    m_items.erase(it);
    if (index < m_nActual)
        --m_nActual;
}

void CKelPropertyTreeItemAll::Clear()
{
    m_items.clear();
    m_nActual = 0;
}

int CKelPropertyTreeItemAll::FindTreeItem(const CKelPropertyTreeItem* pItem) const
{
    for (size_t i = 0; i < m_items.size(); ++i)
        if (m_items[i] == pItem)
            return static_cast<int>(i);
    return -1;
}

CKelPropertyTreeItem* CKelPropertyTreeItemAll::FindTreeItemByLabelText(const char* text) const
{
    if (!text || !*text)
        return nullptr;
    for (CKelPropertyTreeItem* p : m_items)
        if (std::strcmp(p->GetLabelText(), text) == 0)
            return p;
    return nullptr;
}
