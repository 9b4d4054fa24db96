// The digits-only test field.
#include "digitsfield.h"

namespace kel_ve_test
{
BEGIN_MESSAGE_MAP(CDigitsField, CKelValueEditEx)
    ON_WM_CHAR()
    ON_WM_KEYDOWN()
    ON_WM_KILLFOCUS()
    ON_MESSAGE(WM_PASTE, &CDigitsField::OnPasteMsg)
END_MESSAGE_MAP()

LRESULT CDigitsField::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_SETTEXT)
        setTextPasses.push_back(lParam != 0 ? reinterpret_cast<const char*>(lParam) : "");
    return CKelValueEditEx::WindowProc(message, wParam, lParam);
}

CString CDigitsField::_GetValidText() const
{
    CString text = GetText();
    CString digits;
    for (int i = 0; i < text.GetLength(); ++i)
        if (text[i] >= '0' && text[i] <= '9')
            digits += text[i];
    if ((m_uFlags & kAtMostThree) != 0 && digits.GetLength() > 3)
        digits = digits.Left(3);
    return digits;
}

void CDigitsField::_OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    keyDowns.push_back(nChar);
    if (refuseDelete && nChar == VK_DELETE)
        return;
    CKelValueEditEx::Behavior::_OnKeyDown(nChar, nRepCnt, nFlags);
}

void CDigitsField::_Redraw()
{
    ++redraws;
    CKelValueEditEx::Behavior::_Redraw();
}
}
