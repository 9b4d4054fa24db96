// CKelValueEditEx::NumericBehavior: the range, the checks when the focus leaves, the repairs
// and the message that names the range.
#include "behaviors.h"

#include <float.h>
#include <stdio.h>
#include <stdlib.h>

#include <textlib.h>

namespace
{
// The host's text that names both bounds of a range: "... between %1 and %2."
const uint32_t kRangeTextNumber = 1400402;

// A bound lies strictly inside the largest doubles; the largest ones mean "no bound".
bool IsBoundSet(double bound)
{
    return bound > -DBL_MAX && bound < DBL_MAX;
}
}

void CKelValueEditEx::NumericBehavior::SetRange(double min, double max)
{
    if (min > max)
    {
        double swap = min;
        min = max;
        max = swap;
    }
    m_dMin = min;
    m_dMax = max;
    _Redraw();
}

void CKelValueEditEx::NumericBehavior::GetRange(double* min, double* max) const
{
    if (min != nullptr)
        *min = m_dMin;
    if (max != nullptr)
        *max = m_dMax;
}

bool CKelValueEditEx::NumericBehavior::IsValid() const
{
    double value = GetDouble();
    return m_dMin <= value && value <= m_dMax;
}

void CKelValueEditEx::NumericBehavior::_OnKillFocus(CWnd* pNewWnd)
{
    HWND hEdit = m_pEdit->GetSafeHwnd();
    Behavior::_OnKillFocus(pNewWnd);
    // In place, the list's owner may destroy the edit while it is told of the end, and the
    // edit deletes itself with its window: nothing of it may be touched then.
    if (!::IsWindow(hEdit))
        return;
    if (m_bDeleted != 0)
    {
        if (CWnd* pParent = m_pEdit->GetParent())
        {
            ::PostMessageA(pParent->m_hWnd, KEL_WM_VALUE_DELETED, 0, 0);
            m_bDeleted = 0;
        }
    }
    if ((m_uFlags & NumNoValidateOnKillFocus) == 0)
        Validate(nullptr, nullptr, nullptr);
}

int32_t CKelValueEditEx::NumericBehavior::Validate(CString* text, double* value, const CString* preset)
{
    if (preset != nullptr)
        SetDouble(atof(*preset), true);

    CString numeric = GetNumericText(m_pEdit->GetText(), false);
    CString copy = numeric;
    if (text != nullptr)
        text->Empty();
    if (value != nullptr)
        *value = 0.0;

    if ((m_uFlags & NumTrimLeadingZeros) != 0 && !copy.IsEmpty())
    {
        bool bNegative = copy[0] == m_cNegativeSign;
        if (bNegative)
            copy.Delete(0);
        copy.TrimLeft('0');
        if (copy.IsEmpty() || copy[0] == m_cDecimalSeparator)
            copy.Insert(0, '0');
        if (bNegative)
            copy.Insert(0, m_cNegativeSign);
    }
    if ((m_uFlags & NumPadDecimalZeros) != 0 && m_nMaxDecimalPlaces >= 1)
    {
        int decimalPos = copy.Find(m_cDecimalSeparator);
        if (decimalPos < 0)
        {
            if (copy.IsEmpty() || (copy.GetLength() == 1 && copy[0] == m_cNegativeSign))
                copy = "0";
            decimalPos = copy.GetLength();
            copy += m_cDecimalSeparator;
        }
        InsertZeros(copy, -1, m_nMaxDecimalPlaces - (copy.GetLength() - decimalPos - 1));
    }
    if ((m_uFlags & NumPadWholeZeros) != 0 && m_nMaxWholeDigits >= 1)
    {
        int signLength = !copy.IsEmpty() && copy[0] == m_cNegativeSign ? 1 : 0;
        int decimalPos = copy.Find(m_cDecimalSeparator);
        int wholeDigits = (decimalPos >= 0 ? decimalPos : copy.GetLength()) - signLength;
        InsertZeros(copy, signLength, m_nMaxWholeDigits - wholeDigits);
    }
    if (copy != numeric)
    {
        SelectionSaver saver(m_pEdit);
        SetNumberText(copy);
    }

    int32_t result = 1;
    if (!m_pEdit->GetText().IsEmpty())
    {
        if (!IsValid())
            result = ReactToFailure(0);
        if (text != nullptr)
            *text = GetNumericText(m_pEdit->GetText(), false);
        if (value != nullptr)
            *value = GetDouble();
    }
    else
    {
        // An empty field is a failure in itself for the bits that ask about it.
        result = ReactToFailure(1);
    }
    return result;
}

// Each IfEmpty flag is its IfInvalid flag one bit higher.
static_assert(CKelValueEditEx::NumericBehavior::NumBeepIfEmpty == CKelValueEditEx::NumericBehavior::NumBeepIfInvalid << 1 &&
                  CKelValueEditEx::NumericBehavior::NumFixIfEmpty == CKelValueEditEx::NumericBehavior::NumFixIfInvalid << 1 &&
                  CKelValueEditEx::NumericBehavior::NumFocusIfEmpty == CKelValueEditEx::NumericBehavior::NumFocusIfInvalid << 1 &&
                  CKelValueEditEx::NumericBehavior::NumMessageIfEmpty == CKelValueEditEx::NumericBehavior::NumMessageIfInvalid << 1,
              "the empty-text flags sit one bit above the out-of-range flags");

int32_t CKelValueEditEx::NumericBehavior::ReactToFailure(int shift)
{
    const UINT beep = NumBeepIfInvalid << shift;
    const UINT fix = NumFixIfInvalid << shift;
    const UINT focus = NumFocusIfInvalid << shift;
    const UINT message = NumMessageIfInvalid << shift;
    if ((m_uFlags & beep) != 0)
        ::MessageBeep(MB_ICONEXCLAMATION);
    if ((m_uFlags & fix) != 0)
        AdjustWithinRange();
    if ((m_uFlags & message) != 0 && (m_uFlags & focus) != 0)
        ShowErrorMessage();
    if ((m_uFlags & focus) != 0)
        m_pEdit->SetFocus();
    return (m_uFlags & (beep | fix | focus)) != 0 ? 0 : 1;
}

void CKelValueEditEx::NumericBehavior::AdjustWithinRange()
{
    if (IsValid())
        return;
    // An empty text is set as a blank: it passes the rules and the field stays empty.
    if (m_pEdit->GetText().IsEmpty())
        SetNumberText(" ");
    else
        _Redraw();
    double value = GetDouble();
    if (value < m_dMin)
        SetDouble(m_dMin, true);
    else if (value > m_dMax)
        SetDouble(m_dMax, true);
}

bool CKelValueEditEx::NumericBehavior::CheckIfValid(bool showError)
{
    if (!m_pEdit->IsWindowEnabled())
        return true;
    bool bValid = IsValid();
    if (!bValid && showError)
    {
        ShowErrorMessage();
        m_pEdit->SetFocus();
    }
    return bValid;
}

void CKelValueEditEx::NumericBehavior::ShowErrorMessage() const
{
    bool bMin = IsBoundSet(m_dMin);
    bool bMax = IsBoundSet(m_dMax);
    CString message;
    if (bMin && bMax)
    {
        CString minText = GetDoubleText(m_dMin, true);
        CString maxText = GetDoubleText(m_dMax, true);
        CString block;
        block.Format("%s%c%s%c%c%c", static_cast<const char*>(minText), 30, static_cast<const char*>(maxText), 30, 31,
                     31);
        char buffer[255] = {};
        int length = 0;
        ll_get_text(kRangeTextNumber, static_cast<int>(sizeof(buffer)) - 1, block, buffer, &length);
        message = buffer;
    }
    else if (bMin)
        message = "Please specify a numeric value greater than or equal to " + GetDoubleText(m_dMin, true) + ".";
    else if (bMax)
        message = "Please specify a numeric value less than or equal to " + GetDoubleText(m_dMax, true) + ".";
    else
        message = "Please specify a valid numeric value.";
    AfxMessageBox(message, MB_ICONEXCLAMATION);
}
