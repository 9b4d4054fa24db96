// CKelValueEditEx::Behavior: the base of a field's rules and the hooks' default answers.
#include "valueedit.h"

CKelValueEditEx::Behavior::Behavior(CKelValueEditEx* edit) : m_pEdit(edit), m_uFlags(0)
{
}

CKelValueEditEx::Behavior::~Behavior() = default;

bool CKelValueEditEx::Behavior::ModifyFlags(uint32_t add, uint32_t remove)
{
    uint32_t flags = (m_uFlags & ~remove) | add;
    if (flags == m_uFlags)
        return false;
    m_uFlags = flags;
    _Redraw();   // the rules changed: the text may no longer be valid
    return true;
}

void CKelValueEditEx::Behavior::_OnChar(UINT nChar, UINT, UINT)
{
    if (m_pEdit->m_bInPlace && (nChar == VK_ESCAPE || nChar == VK_RETURN))
    {
        m_pEdit->GetParent()->SetFocus();   // the focus loss ends the edit
        return;
    }
    m_pEdit->Default();
}

void CKelValueEditEx::Behavior::_OnKeyDown(UINT, UINT, UINT)
{
    m_pEdit->Default();
}

void CKelValueEditEx::Behavior::_OnKillFocus(CWnd* pNewWnd)
{
    m_pEdit->CKelValueEdit::OnKillFocus(pNewWnd);
}

LRESULT CKelValueEditEx::Behavior::_OnPaste(WPARAM wParam, LPARAM lParam)
{
    return m_pEdit->CKelValueEditEx::OnPaste(wParam, lParam);
}

LRESULT CKelValueEditEx::Behavior::_Default()
{
    return m_pEdit->Default();
}

void CKelValueEditEx::Behavior::_Redraw()
{
    m_pEdit->Redraw();
}

bool CKelValueEditEx::Behavior::_ShouldEnter(char c) const
{
    return m_pEdit->ShouldEnter(c);
}
