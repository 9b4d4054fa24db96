// CKelValueEdit: the edit's in-place mode, Return and Escape, focus and first-click selection.
#include "valueedit.h"

BEGIN_MESSAGE_MAP(CKelValueEdit, CEdit)
    ON_WM_CREATE()
    ON_WM_CHAR()
    ON_WM_KILLFOCUS()
    ON_WM_NCDESTROY()
    ON_CONTROL_REFLECT_EX(EN_SETFOCUS, &CKelValueEdit::OnSetfocusReflect)
    ON_WM_LBUTTONDOWN()
END_MESSAGE_MAP()

CKelValueEdit::CKelValueEdit() : m_bInPlace(false), m_nItem(0), m_nSubItem(0), m_bCancelled(0)
{
}

CKelValueEdit::CKelValueEdit(int item, int subItem) : CKelValueEdit()
{
    DoInPlace(item, subItem);
}

CKelValueEdit::~CKelValueEdit() = default;

BOOL CKelValueEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    return CEdit::Create(dwStyle, rect, pParentWnd, nID);
}

void CKelValueEdit::DoInPlace(int item, int subItem)
{
    m_nItem = item;
    m_nSubItem = subItem;
    m_bInPlace = true;
    m_bCancelled = 0;
}

void CKelValueEdit::Initialize()
{
    if (!m_bInPlace)
        return;
    // The edit floats over a cell of its parent and should look like it.
    HFONT hFont = reinterpret_cast<HFONT>(GetParent()->SendMessage(WM_GETFONT));
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(hFont), TRUE);
    SetFocus();
}

BOOL CKelValueEdit::PreTranslateMessage(MSG* pMsg)
{
    bool bReturn = pMsg->message == WM_KEYDOWN && pMsg->wParam == VK_RETURN;
    bool bEscapeInPlace = pMsg->message == WM_KEYDOWN && pMsg->wParam == VK_ESCAPE && m_bInPlace;
    if (!bReturn && !bEscapeInPlace)
        return CEdit::PreTranslateMessage(pMsg);

    if (bReturn)
        SendMessage(EM_SETMODIFY, 1);   // Return commits, so the value counts as changed

    if (!m_bInPlace)
    {
        // Move the focus instead of pressing the default button: the field's kill-focus
        // validation runs first, and the button acts on the next Return.
        CWnd* pParent = GetParent();
        UINT nDefId = LOWORD(pParent->SendMessage(DM_GETDEFID));
        HWND hDefault = nDefId != 0 ? ::GetDlgItem(pParent->m_hWnd, static_cast<int>(nDefId)) : nullptr;
        if (hDefault == nullptr)
            pParent->SetFocus();
        else
            pParent->SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(hDefault), TRUE);
        return TRUE;
    }

    // In place the keys belong to the edit alone: no dialog or list may act on them.
    if (pMsg->wParam == VK_ESCAPE)
        m_bCancelled = 1;
    ::TranslateMessage(pMsg);
    ::DispatchMessageA(pMsg);
    return TRUE;
}

int CKelValueEdit::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    int result = CEdit::OnCreate(lpCreateStruct);
    if (result != -1 && m_bInPlace)
        Initialize();
    return result;
}

void CKelValueEdit::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    if (m_bInPlace && (nChar == VK_ESCAPE || nChar == VK_RETURN))
    {
        GetParent()->SetFocus();   // the focus loss ends the edit
        return;
    }
    Default();
}

void CKelValueEdit::OnKillFocus(CWnd* pNewWnd)
{
    Default();
    if (!m_bInPlace)
        return;

    CString text;
    GetWindowText(text);
    CWnd* pParent = GetParent();
    HWND hSelf = m_hWnd;

    NMLVDISPINFOA info = {};
    info.hdr.hwndFrom = pParent->m_hWnd;
    info.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    info.hdr.code = LVN_ENDLABELEDITA;
    info.item.mask = 0;
    info.item.iItem = m_nItem;
    info.item.iSubItem = m_nSubItem;
    info.item.pszText = m_bCancelled > 0 ? nullptr : text.GetBuffer();
    info.item.cchTextMax = text.GetLength();
    info.item.lParam = 0;

    // The list's owner hears of the edit, as it would from the list's own label editing.
    HWND hGrandParent = ::GetParent(pParent->m_hWnd);
    ::SendMessageA(hGrandParent, WM_NOTIFY, static_cast<WPARAM>(pParent->GetDlgCtrlID()),
                   reinterpret_cast<LPARAM>(&info));
    // The owner may have destroyed this window already; the handle is all that is left to use.
    ::PostMessageA(hSelf, WM_CLOSE, 0, 0);
}

void CKelValueEdit::OnNcDestroy()
{
    CEdit::OnNcDestroy();   // ends in PostNcDestroy, which deletes an in-place edit
}

void CKelValueEdit::PostNcDestroy()
{
    if (m_bInPlace)
        delete this;
}

BOOL CKelValueEdit::OnSetfocusReflect()
{
    SendMessage(EM_SETSEL, 0, -1);
    SendMessage(EM_SCROLLCARET);
    return FALSE;   // the parent hears of the focus too
}

void CKelValueEdit::OnLButtonDown(UINT nFlags, CPoint point)
{
    // A click that brings the focus selects all; a click into the focused field sets the caret.
    bool bHadFocus = ::GetFocus() == m_hWnd;
    Default();
    if (!bHadFocus)
    {
        SendMessage(EM_SETSEL, 0, -1);
        SendMessage(EM_SCROLLCARET);
    }
}
