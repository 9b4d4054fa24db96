// CKelValueEditEx::NumericBehavior: construction and the attributes that shape the number.
#include "behaviors.h"

#include <float.h>
#include <stdlib.h>

CKelValueEditEx::NumericBehavior::NumericBehavior(CKelValueEditEx* edit, int maxWholeDigits, int maxDecimalPlaces)
    : Behavior(edit),
      m_bDeleted(0),
      m_nMaxWholeDigits(maxWholeDigits < 0 ? -maxWholeDigits : maxWholeDigits),
      m_nMaxDecimalPlaces(maxDecimalPlaces < 0 ? 0 : maxDecimalPlaces),
      m_cNegativeSign('-'),
      m_cDecimalSeparator('.'),
      m_cGroupSeparator(0),
      m_nDigitsInGroup(0),
      m_dMin(-DBL_MAX),
      m_dMax(DBL_MAX),
      m_bAdjusting(0)
{
    // By default every failure beeps, is repaired, is shown and keeps the focus.
    m_uFlags = 0xFF;
    if (maxWholeDigits < 0)
        m_uFlags |= NumNoNegative;
    char sign[8] = {};
    if (::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SNEGATIVESIGN, sign, sizeof(sign)) > 0 && sign[0] != 0)
        m_cNegativeSign = sign[0];
}

CKelValueEditEx::NumericBehavior::~NumericBehavior() = default;

void CKelValueEditEx::NumericBehavior::SetMaxWholeDigits(int maxWholeDigits)
{
    bool bChanged = false;
    if (maxWholeDigits < 0)
    {
        maxWholeDigits = -maxWholeDigits;
        if ((m_uFlags & NumNoNegative) == 0)
        {
            m_uFlags |= NumNoNegative;
            bChanged = true;
        }
    }
    if (maxWholeDigits != m_nMaxWholeDigits)
    {
        m_nMaxWholeDigits = maxWholeDigits;
        bChanged = true;
    }
    if (bChanged)
        _Redraw();
}

int CKelValueEditEx::NumericBehavior::GetMaxWholeDigits() const
{
    return m_nMaxWholeDigits;
}

void CKelValueEditEx::NumericBehavior::SetMaxDecimalPlaces(int maxDecimalPlaces)
{
    if (maxDecimalPlaces < 0)
        maxDecimalPlaces = 0;
    if (maxDecimalPlaces == m_nMaxDecimalPlaces)
        return;
    m_nMaxDecimalPlaces = maxDecimalPlaces;
    _Redraw();
}

int CKelValueEditEx::NumericBehavior::GetMaxDecimalPlaces() const
{
    return m_nMaxDecimalPlaces;
}

void CKelValueEditEx::NumericBehavior::AllowNegative(bool allow)
{
    if (allow)
        ModifyFlags(0, NumNoNegative);
    else
        ModifyFlags(NumNoNegative, 0);
}

bool CKelValueEditEx::NumericBehavior::IsNegativeAllowed() const
{
    return (m_uFlags & NumNoNegative) == 0;
}

void CKelValueEditEx::NumericBehavior::SetDigitsInGroup(int digitsInGroup)
{
    if (digitsInGroup < 0)
        digitsInGroup = 0;
    if (digitsInGroup == m_nDigitsInGroup)
        return;
    m_nDigitsInGroup = digitsInGroup;
    _Redraw();
}

int CKelValueEditEx::NumericBehavior::GetDigitsInGroup() const
{
    return m_nDigitsInGroup;
}

void CKelValueEditEx::NumericBehavior::KeepSeparatorsApart()
{
    if (m_cGroupSeparator != 0 && m_cGroupSeparator == m_cDecimalSeparator)
        m_cGroupSeparator = m_cDecimalSeparator == ',' ? '.' : ',';
}

CString CKelValueEditEx::NumericBehavior::TakeNumber() const
{
    if (!::IsWindow(m_pEdit->GetSafeHwnd()))
        return CString();
    return ExtractNumber(m_pEdit->GetText(), true, false, true);
}

void CKelValueEditEx::NumericBehavior::ShowNumber(const CString& number)
{
    if (!::IsWindow(m_pEdit->GetSafeHwnd()))
        return;
    // The number was taken in the C library's form: back to the field's symbols.
    CString text = number;
    for (int i = 0; i < text.GetLength(); ++i)
    {
        if (text[i] == '.')
            text.SetAt(i, m_cDecimalSeparator);
        else if (text[i] == '-')
            text.SetAt(i, m_cNegativeSign);
    }
    SetNumberText(text);
    _Redraw();
}

void CKelValueEditEx::NumericBehavior::SetSeparators(char decimal, char group)
{
    if (decimal == 0)
        decimal = m_cDecimalSeparator;
    if (decimal == m_cDecimalSeparator && group == m_cGroupSeparator)
        return;
    // The number is read under the old separators and shown under the new ones.
    CString number = TakeNumber();
    m_cDecimalSeparator = decimal;
    m_cGroupSeparator = group;
    KeepSeparatorsApart();
    ShowNumber(number);
}

void CKelValueEditEx::NumericBehavior::GetSeparators(char* decimal, char* group) const
{
    if (decimal != nullptr)
        *decimal = m_cDecimalSeparator;
    if (group != nullptr)
        *group = m_cGroupSeparator;
}

void CKelValueEditEx::NumericBehavior::SetPrefix(const CString& prefix)
{
    if (prefix == m_strPrefix)
        return;
    // The number is read under the old prefix, which may hold digits or a point.
    CString number = TakeNumber();
    m_strPrefix = prefix;
    ShowNumber(number);
}

const CString& CKelValueEditEx::NumericBehavior::GetPrefix() const
{
    return m_strPrefix;
}

void CKelValueEditEx::NumericBehavior::GetDeletedItemText(CString& text) const
{
    text = m_strDeleted;
}
