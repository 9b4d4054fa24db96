// The number fields: CKelValueEditEx with the numeric behavior, and its integer and currency
// forms. The classes hand their messages to the behavior.
#include "valueedit.h"

#include <stdlib.h>

BEGIN_MESSAGE_MAP(CKelValueNumericEdit, CKelValueEditEx)
    ON_WM_CHAR()
    ON_WM_KEYDOWN()
    ON_WM_KILLFOCUS()
    ON_MESSAGE(WM_CUT, &CKelValueNumericEdit::OnCut)
    ON_MESSAGE(WM_PASTE, &CKelValueNumericEdit::OnPaste)
END_MESSAGE_MAP()

CKelValueNumericEdit::CKelValueNumericEdit(int maxWholeDigits, int maxDecimalPlaces)
    : CKelValueEditEx::NumericBehavior(this, maxWholeDigits, maxDecimalPlaces)
{
}

CKelValueNumericEdit::~CKelValueNumericEdit() = default;

CString CKelValueNumericEdit::GetValidText() const
{
    return _GetValidText();
}

void CKelValueNumericEdit::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    _OnChar(nChar, nRepCnt, nFlags);
}

void CKelValueNumericEdit::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    _OnKeyDown(nChar, nRepCnt, nFlags);
}

void CKelValueNumericEdit::OnKillFocus(CWnd* pNewWnd)
{
    _OnKillFocus(pNewWnd);
}

LRESULT CKelValueNumericEdit::OnCut(WPARAM, LPARAM)
{
    int start = 0, end = 0;
    GetSel(start, end);
    if (start != end)
    {
        SendMessage(WM_COPY);
        // As the Delete key: group separators close up, the prefix stays, and a wiped field
        // is reported when the focus leaves.
        SendMessage(WM_CLEAR);
    }
    return 0;
}

LRESULT CKelValueNumericEdit::OnPaste(WPARAM wParam, LPARAM lParam)
{
    return _OnPaste(wParam, lParam);
}

CKelValueIntegerEdit::CKelValueIntegerEdit(int maxWholeDigits) : CKelValueNumericEdit(maxWholeDigits, 0)
{
}

CKelValueIntegerEdit::~CKelValueIntegerEdit() = default;

namespace
{
// The user's locale's value of the given kind; false when the locale does not answer.
bool LocaleAnswers(LCTYPE type, CString& text)
{
    char buffer[64] = {};
    if (::GetLocaleInfoA(LOCALE_USER_DEFAULT, type, buffer, sizeof(buffer)) <= 0)
        return false;
    text = buffer;
    return true;
}
}

CKelValueCurrencyEdit::CKelValueCurrencyEdit() : CKelValueNumericEdit(9, 4)
{
    m_nDigitsInGroup = 3;
    m_nMaxDecimalPlaces = 2;
    m_strPrefix = "$";
    // Decimals filled when a value is set and when the field is left, leading zeros dropped.
    m_uFlags |= NumPadDecimalsOnSet | NumTrimLeadingZeros | NumCurrencyField | NumPadDecimalZeros;

    CString value;
    if (LocaleAnswers(LOCALE_SCURRENCY, value))
        m_strPrefix = value;
    if (LocaleAnswers(LOCALE_SMONGROUPING, value))
        m_nDigitsInGroup = atoi(value);
    if (LocaleAnswers(LOCALE_ICURRDIGITS, value))
        m_nMaxDecimalPlaces = atoi(value);
    if (LocaleAnswers(LOCALE_ICURRENCY, value))
    {
        // The symbol stands in front only in the first two forms; the second one with a blank.
        int placement = atoi(value);
        if (placement == 2)
            m_strPrefix += ' ';
        else if (placement != 0)
            m_strPrefix.Empty();
    }
    if (LocaleAnswers(LOCALE_SMONDECIMALSEP, value) && !value.IsEmpty())
        m_cDecimalSeparator = value[0];
    if (LocaleAnswers(LOCALE_SMONTHOUSANDSEP, value))
        m_cGroupSeparator = value.IsEmpty() ? 0 : value[0];
    if (m_cGroupSeparator != 0 && m_cGroupSeparator == m_cDecimalSeparator)
        m_cGroupSeparator = m_cDecimalSeparator == ',' ? '.' : ',';
}

CKelValueCurrencyEdit::~CKelValueCurrencyEdit() = default;
