// CKelValueEditEx: text access, and the clipboard and text paths that pass through the rules.
#include "valueedit.h"

BEGIN_MESSAGE_MAP(CKelValueEditEx, CKelValueEdit)
    ON_WM_KEYDOWN()
    ON_MESSAGE(WM_CUT, &CKelValueEditEx::OnCut)
    ON_MESSAGE(WM_PASTE, &CKelValueEditEx::OnPaste)
    ON_MESSAGE(WM_CLEAR, &CKelValueEditEx::OnClear)
    ON_MESSAGE(WM_SETTEXT, &CKelValueEditEx::OnSetText)
END_MESSAGE_MAP()

CKelValueEditEx::CKelValueEditEx() : m_crText(0), m_uColorFlags(0)
{
}

CKelValueEditEx::~CKelValueEditEx() = default;

CString CKelValueEditEx::GetText() const
{
    CString text;
    GetWindowText(text);
    return text;
}

CString CKelValueEditEx::GetTrimmedText() const
{
    CString text = GetText();
    text.Trim(' ');
    return text;
}

void CKelValueEditEx::SetText(const CString& text)
{
    SetWindowText(static_cast<const char*>(text));
}

void CKelValueEditEx::SetWindowText(const char* text)
{
    CWnd::SetWindowText(text);
}

bool CKelValueEditEx::IsReadOnly() const
{
    return (GetStyle() & ES_READONLY) != 0;
}

void CKelValueEditEx::Redraw()
{
    if (!::IsWindow(m_hWnd))
        return;
    CString valid = GetValidText();
    if (valid != GetText())
        SetWindowText(static_cast<const char*>(valid));
}

CString CKelValueEditEx::GetValidText() const
{
    return GetText();
}

bool CKelValueEditEx::ShouldEnter(char) const
{
    return true;
}

void CKelValueEditEx::OnKeyDown(UINT, UINT, UINT)
{
    Default();
}

LRESULT CKelValueEditEx::OnCut(WPARAM, LPARAM)
{
    int start = 0, end = 0;
    GetSel(start, end);
    if (start != end)
    {
        SendMessage(WM_COPY);
        SendMessage(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(""));
    }
    return 0;
}

LRESULT CKelValueEditEx::OnClear(WPARAM, LPARAM)
{
    int start = 0, end = 0;
    GetSel(start, end);
    // As the Delete key, so that a behavior's key rules decide.
    if (start != end)
        SendMessage(WM_KEYDOWN, VK_DELETE, 0);
    return 0;
}

LRESULT CKelValueEditEx::OnPaste(WPARAM, LPARAM)
{
    int start = 0, end = 0;
    GetSel(start, end);
    Default();
    CString valid = GetValidText();
    if (valid != GetText())
    {
        // The rules changed what was pasted: the caret would be meaningless behind it.
        SetWindowText(static_cast<const char*>(valid));
        SendMessage(EM_SETSEL, static_cast<WPARAM>(start), end);
        SendMessage(EM_SCROLLCARET);
    }
    return 0;
}

LRESULT CKelValueEditEx::OnSetText(WPARAM, LPARAM lParam)
{
    LRESULT result = Default();
    const char* pszSet = reinterpret_cast<const char*>(lParam);
    CString valid = GetValidText();
    // Valid text is a fixed point of the rules, so the nested pass ends here.
    if (valid != (pszSet != nullptr ? pszSet : ""))
        SetWindowText(static_cast<const char*>(valid));
    return result;
}
