// Thin wrappers of the stock controls: one method per message.
//
//     CEdit edit;
//     edit.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 10, 110, 30), pParent, 100);
//     edit.SetSel(0, -1);
#pragma once
#include "fwdefs.h"
#include "fwwnd.h"

class KELFW_API CStatic : public CWnd
{
public:
    CStatic() = default;
    BOOL Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID = 0xffff);
    HICON SetIcon(HICON hIcon);
    HICON GetIcon() const;
    HBITMAP SetBitmap(HBITMAP hBitmap);
    HBITMAP GetBitmap() const;
};

class KELFW_API CButton : public CWnd
{
public:
    CButton() = default;
    BOOL Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    UINT GetState() const;
    void SetState(BOOL bHighlight);
    int GetCheck() const;
    void SetCheck(int nCheck);
    UINT GetButtonStyle() const;
    void SetButtonStyle(UINT nStyle, BOOL bRedraw = TRUE);
    HBITMAP SetBitmap(HBITMAP hBitmap);
    HBITMAP GetBitmap() const;
    HICON SetIcon(HICON hIcon);
    HICON GetIcon() const;

    // Owner-drawn buttons paint here (reflected WM_DRAWITEM).
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

class KELFW_API CEdit : public CWnd
{
public:
    CEdit() = default;
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    BOOL CanUndo() const;
    int GetLineCount() const;
    BOOL GetModify() const;
    void SetModify(BOOL bModified = TRUE);
    void GetRect(LPRECT lpRect) const;
    DWORD GetSel() const;
    void GetSel(int& nStartChar, int& nEndChar) const;
    int GetLine(int nIndex, LPTSTR lpszBuffer, int nMaxLength) const;
    UINT GetLimitText() const;
    void SetLimitText(UINT nMax);
    void LimitText(int nChars = 0);
    DWORD GetMargins() const;
    void SetMargins(UINT nLeft, UINT nRight);
    TCHAR GetPasswordChar() const;
    void SetPasswordChar(TCHAR ch);
    int GetFirstVisibleLine() const;

    void EmptyUndoBuffer();
    int LineIndex(int nLine = -1) const;
    int LineLength(int nLine = -1) const;
    int LineFromChar(int nIndex = -1) const;
    void LineScroll(int nLines, int nChars = 0);
    void ReplaceSel(LPCTSTR lpszNewText, BOOL bCanUndo = FALSE);
    void SetRect(LPCRECT lpRect);
    void SetSel(DWORD dwSelection, BOOL bNoScroll = FALSE);
    void SetSel(int nStartChar, int nEndChar, BOOL bNoScroll = FALSE);
    BOOL SetReadOnly(BOOL bReadOnly = TRUE);
    CPoint PosFromChar(UINT nChar) const;
    int CharFromPos(CPoint pt) const;

    // Clipboard operations
    BOOL Undo();
    void Clear();
    void Copy();
    void Cut();
    void Paste();
};

class KELFW_API CScrollBar : public CWnd
{
public:
    CScrollBar() = default;
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    int GetScrollPos() const;
    int SetScrollPos(int nPos, BOOL bRedraw = TRUE);
    void GetScrollRange(LPINT lpMinPos, LPINT lpMaxPos) const;
    void SetScrollRange(int nMinPos, int nMaxPos, BOOL bRedraw = TRUE);
    BOOL SetScrollInfo(LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE);
    BOOL GetScrollInfo(LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL);
};
