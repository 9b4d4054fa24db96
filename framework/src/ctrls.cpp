// Thin wrappers of the stock controls.
#include "kelfw/fwctrls.h"

// ---------------------------------------------------------------- CStatic

BOOL CStatic::Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("STATIC", lpszText, dwStyle, rect, pParentWnd, nID);
}
HICON CStatic::SetIcon(HICON hIcon)
{
    return reinterpret_cast<HICON>(SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(hIcon)));
}
HICON CStatic::GetIcon() const { return reinterpret_cast<HICON>(SendMessage(STM_GETICON)); }
HBITMAP CStatic::SetBitmap(HBITMAP hBitmap)
{
    return reinterpret_cast<HBITMAP>(SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(hBitmap)));
}
HBITMAP CStatic::GetBitmap() const { return reinterpret_cast<HBITMAP>(SendMessage(STM_GETIMAGE, IMAGE_BITMAP)); }

// ---------------------------------------------------------------- CButton

BOOL CButton::Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("BUTTON", lpszCaption, dwStyle, rect, pParentWnd, nID);
}
UINT CButton::GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
void CButton::SetState(BOOL bHighlight) { SendMessage(BM_SETSTATE, bHighlight); }
int CButton::GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
void CButton::SetCheck(int nCheck) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck)); }
UINT CButton::GetButtonStyle() const { return static_cast<UINT>(GetStyle() & 0xFFFF); }
void CButton::SetButtonStyle(UINT nStyle, BOOL bRedraw) { SendMessage(BM_SETSTYLE, nStyle, bRedraw); }
HBITMAP CButton::SetBitmap(HBITMAP hBitmap)
{
    return reinterpret_cast<HBITMAP>(SendMessage(BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(hBitmap)));
}
HBITMAP CButton::GetBitmap() const { return reinterpret_cast<HBITMAP>(SendMessage(BM_GETIMAGE, IMAGE_BITMAP)); }
HICON CButton::SetIcon(HICON hIcon)
{
    return reinterpret_cast<HICON>(SendMessage(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(hIcon)));
}
HICON CButton::GetIcon() const { return reinterpret_cast<HICON>(SendMessage(BM_GETIMAGE, IMAGE_ICON)); }

void CButton::DrawItem(LPDRAWITEMSTRUCT)
{
}

BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    if (pResult != nullptr)
        *pResult = TRUE;
    return TRUE;
}

// ---------------------------------------------------------------- CEdit

BOOL CEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("EDIT", nullptr, dwStyle, rect, pParentWnd, nID);
}
BOOL CEdit::CanUndo() const { return static_cast<BOOL>(SendMessage(EM_CANUNDO)); }
int CEdit::GetLineCount() const { return static_cast<int>(SendMessage(EM_GETLINECOUNT)); }
BOOL CEdit::GetModify() const { return static_cast<BOOL>(SendMessage(EM_GETMODIFY)); }
void CEdit::SetModify(BOOL bModified) { SendMessage(EM_SETMODIFY, bModified); }
void CEdit::GetRect(LPRECT lpRect) const { SendMessage(EM_GETRECT, 0, reinterpret_cast<LPARAM>(lpRect)); }
DWORD CEdit::GetSel() const { return static_cast<DWORD>(SendMessage(EM_GETSEL)); }
void CEdit::GetSel(int& nStartChar, int& nEndChar) const
{
    DWORD start = 0, end = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    nStartChar = static_cast<int>(start);
    nEndChar = static_cast<int>(end);
}
int CEdit::GetLine(int nIndex, LPTSTR lpszBuffer, int nMaxLength) const
{
    if (nMaxLength < static_cast<int>(sizeof(WORD)))
        return 0;
    *reinterpret_cast<WORD*>(lpszBuffer) = static_cast<WORD>(nMaxLength);
    return static_cast<int>(SendMessage(EM_GETLINE, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpszBuffer)));
}
UINT CEdit::GetLimitText() const { return static_cast<UINT>(SendMessage(EM_GETLIMITTEXT)); }
void CEdit::SetLimitText(UINT nMax) { SendMessage(EM_SETLIMITTEXT, nMax); }
void CEdit::LimitText(int nChars) { SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(nChars)); }
DWORD CEdit::GetMargins() const { return static_cast<DWORD>(SendMessage(EM_GETMARGINS)); }
void CEdit::SetMargins(UINT nLeft, UINT nRight)
{
    SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELONG(nLeft, nRight));
}
TCHAR CEdit::GetPasswordChar() const { return static_cast<TCHAR>(SendMessage(EM_GETPASSWORDCHAR)); }
void CEdit::SetPasswordChar(TCHAR ch) { SendMessage(EM_SETPASSWORDCHAR, static_cast<BYTE>(ch)); }
int CEdit::GetFirstVisibleLine() const { return static_cast<int>(SendMessage(EM_GETFIRSTVISIBLELINE)); }
void CEdit::EmptyUndoBuffer() { SendMessage(EM_EMPTYUNDOBUFFER); }
int CEdit::LineIndex(int nLine) const { return static_cast<int>(SendMessage(EM_LINEINDEX, static_cast<WPARAM>(nLine))); }
int CEdit::LineLength(int nLine) const
{
    return static_cast<int>(SendMessage(EM_LINELENGTH, static_cast<WPARAM>(nLine)));
}
int CEdit::LineFromChar(int nIndex) const
{
    return static_cast<int>(SendMessage(EM_LINEFROMCHAR, static_cast<WPARAM>(nIndex)));
}
void CEdit::LineScroll(int nLines, int nChars) { SendMessage(EM_LINESCROLL, static_cast<WPARAM>(nChars), nLines); }
void CEdit::ReplaceSel(LPCTSTR lpszNewText, BOOL bCanUndo)
{
    SendMessage(EM_REPLACESEL, bCanUndo, reinterpret_cast<LPARAM>(lpszNewText));
}
void CEdit::SetRect(LPCRECT lpRect) { SendMessage(EM_SETRECT, 0, reinterpret_cast<LPARAM>(lpRect)); }
void CEdit::SetSel(DWORD dwSelection, BOOL bNoScroll)
{
    SendMessage(EM_SETSEL, LOWORD(dwSelection), HIWORD(dwSelection));
    if (!bNoScroll)
        SendMessage(EM_SCROLLCARET);
}
void CEdit::SetSel(int nStartChar, int nEndChar, BOOL bNoScroll)
{
    SendMessage(EM_SETSEL, static_cast<WPARAM>(nStartChar), nEndChar);
    if (!bNoScroll)
        SendMessage(EM_SCROLLCARET);
}
BOOL CEdit::SetReadOnly(BOOL bReadOnly) { return static_cast<BOOL>(SendMessage(EM_SETREADONLY, bReadOnly)); }
CPoint CEdit::PosFromChar(UINT nChar) const
{
    DWORD dw = static_cast<DWORD>(SendMessage(EM_POSFROMCHAR, nChar));
    return CPoint(static_cast<short>(LOWORD(dw)), static_cast<short>(HIWORD(dw)));
}
int CEdit::CharFromPos(CPoint pt) const
{
    return static_cast<int>(SendMessage(EM_CHARFROMPOS, 0, MAKELPARAM(pt.x, pt.y)));
}
BOOL CEdit::Undo() { return static_cast<BOOL>(SendMessage(EM_UNDO)); }
void CEdit::Clear() { SendMessage(WM_CLEAR); }
void CEdit::Copy() { SendMessage(WM_COPY); }
void CEdit::Cut() { SendMessage(WM_CUT); }
void CEdit::Paste() { SendMessage(WM_PASTE); }

// ---------------------------------------------------------------- CScrollBar

BOOL CScrollBar::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create("SCROLLBAR", nullptr, dwStyle, rect, pParentWnd, nID);
}
int CScrollBar::GetScrollPos() const { return ::GetScrollPos(m_hWnd, SB_CTL); }
int CScrollBar::SetScrollPos(int nPos, BOOL bRedraw) { return ::SetScrollPos(m_hWnd, SB_CTL, nPos, bRedraw); }
void CScrollBar::GetScrollRange(LPINT lpMinPos, LPINT lpMaxPos) const
{
    ::GetScrollRange(m_hWnd, SB_CTL, lpMinPos, lpMaxPos);
}
void CScrollBar::SetScrollRange(int nMinPos, int nMaxPos, BOOL bRedraw)
{
    ::SetScrollRange(m_hWnd, SB_CTL, nMinPos, nMaxPos, bRedraw);
}
BOOL CScrollBar::SetScrollInfo(LPSCROLLINFO lpScrollInfo, BOOL bRedraw)
{
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    ::SetScrollInfo(m_hWnd, SB_CTL, lpScrollInfo, bRedraw);
    return TRUE;
}
BOOL CScrollBar::GetScrollInfo(LPSCROLLINFO lpScrollInfo, UINT nMask)
{
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    lpScrollInfo->fMask = nMask;
    return ::GetScrollInfo(m_hWnd, SB_CTL, lpScrollInfo);
}
