// The number bridge of the edit layers: field text to number and back at 4 decimals.
#include "valueedit.h"

bool CKelValueEdit::GetEndlabeleditValue(LVITEMA* item, double* value, bool flag)
{
    return GetEditValueFromString(item->pszText, value, flag, 4);
}

bool CKelValueEdit::SetWindowText(double value, bool flag)
{
    CWnd::SetWindowText(GetStringFromEditValue(value, flag, 4));
    return true;
}

int32_t CKelValueEditEx::GetItemValue(double& value)
{
    value = 0.0;   // the parser leaves the value undefined when it fails
    if (!GetEditValueFromString(GetText(), &value, true, 4))
    {
        ::MessageBeep(MB_ICONEXCLAMATION);
        return 0;
    }
    return 1;
}

int32_t CKelValueEditEx::SetItemValue(double value)
{
    return SetWindowText(value, true) ? 1 : 0;
}
