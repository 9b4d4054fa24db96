// The edit row's input: typing checked as it happens, Return and Escape, and the loss of focus.
#include "propertytree.h"

BEGIN_MESSAGE_MAP(CKelPropertyTreeItemEdit, CEdit)
    ON_WM_GETDLGCODE()
    ON_CONTROL_REFLECT(EN_KILLFOCUS, &CKelPropertyTreeItemEdit::OnKillfocus)
    ON_WM_CHAR()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

UINT CKelPropertyTreeItemEdit::OnGetDlgCode()
{
    return static_cast<UINT>(Default()) | DLGC_WANTALLKEYS;
}

// Return, Escape and Ctrl shortcuts belong to the edit, not to a dialog around the tree.
BOOL CKelPropertyTreeItemEdit::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg->message == WM_KEYDOWN &&
        (pMsg->wParam == VK_RETURN || pMsg->wParam == VK_ESCAPE || ::GetKeyState(VK_CONTROL) < 0))
    {
        ::TranslateMessage(pMsg);
        ::DispatchMessageA(pMsg);
        return TRUE;
    }
    return CEdit::PreTranslateMessage(pMsg);
}

// Puts the text back that was there before a rejected character.
void CKelPropertyTreeItemEdit::RestoreText(const CString& text)
{
    SetWindowTextOnly(text);
    MessageBeep(MB_ICONEXCLAMATION);
    SetSel(0, -1);
    SendMessage(EM_SCROLLCARET);
    // Characters typed ahead were meant for the rejected text.
    MSG msg;
    while (::PeekMessageA(&msg, m_hWnd, WM_CHAR, WM_CHAR, PM_REMOVE))
    {
    }
}

void CKelPropertyTreeItemEdit::OnChar(UINT nChar, UINT, UINT)
{
    m_nLastChar = nChar;
    const bool number = m_eValueFormat == VALUE_FORMAT_INTEGER || m_eValueFormat == VALUE_FORMAT_DOUBLE;
    switch (nChar)
    {
    case VK_BACK:
        // Not checked, so a number may be wiped to nothing.
        Default();
        AdaptEditBoxSize();
        return;
    case VK_RETURN:
    {
        if (!IsValid2Confirm())
        {
            MessageBeep(MB_ICONEXCLAMATION);
            // The edit stays open; it takes the focus back from the host's message.
            if (m_hWnd != nullptr && ::GetFocus() != m_hWnd)
                SetFocus();
            return;
        }
        CKelPropertyTreeList* list = GetList();
        CommitChanges(1);
        if (list != nullptr && list->m_hWnd != nullptr)
            list->SetFocus();
        return;
    }
    case VK_ESCAPE:
    {
        CKelPropertyTreeList* list = GetList();
        CommitChanges(0);
        if (list != nullptr && list->m_hWnd != nullptr)
            list->SetFocus();
        return;
    }
    default:
        break;
    }
    if (!number)
    {
        Default();
        AdaptEditBoxSize();
        return;
    }
    if (nChar == ' ')
        return;
    CString before;
    CWnd::GetWindowText(before);
    Default();
    if (!IsValid())
        RestoreText(before);
    AdaptEditBoxSize();
}

// Leaving the edit commits it: with notification when the value passes its checks, and
// otherwise with the old value.
void CKelPropertyTreeItemEdit::OnKillfocus()
{
    if (m_bDestroying || m_bInMessage || IsCommitted())
        return;
    if (IsValid2Confirm())
    {
        CommitChanges(1);
        return;
    }
    SetWindowTextOnly(m_strValue);
    CommitChanges(0);
}

// The window goes away under an open edit (its dialog closes): the edit ends as an Escape
// ends it, so that no text half-typed reaches the value, and a label gets its text back.
void CKelPropertyTreeItemEdit::OnDestroy()
{
    if (!m_bDestroying && !IsCommitted() && (GetStyle() & WS_VISIBLE) != 0)
    {
        m_nLastChar = VK_ESCAPE;
        CommitChanges(0);
    }
    CEdit::OnDestroy();
}
