// CKelValueEditEx::NumericBehavior: the rules of a number as one picture such as "$ #,###.##".
#include "behaviors.h"

void CKelValueEditEx::NumericBehavior::SetMask(const CString& mask)
{
    CString number = TakeNumber();
    m_uFlags &= ~static_cast<uint32_t>(NumNoNegative);
    m_nMaxWholeDigits = 0;
    m_nMaxDecimalPlaces = 0;
    m_nDigitsInGroup = 0;
    m_strPrefix.Empty();

    // From the right: decimal places, the decimal separator, whole digits with their group
    // separators, and whatever stands in front of them is the prefix.
    int decimalPos = -1;
    int decimals = 0;
    int whole = 0;
    for (int i = mask.GetLength() - 1; i >= 0; --i)
    {
        char c = mask[i];
        if (c == '#')
        {
            if (decimalPos < 0)
                ++decimals;
            else
                ++whole;
        }
        else if ((c == '.' || c == m_cDecimalSeparator) && decimalPos < 0)
        {
            m_cDecimalSeparator = c;
            decimalPos = i;
        }
        else if (c == ',' || (m_cGroupSeparator != 0 && c == m_cGroupSeparator))
        {
            // The first group separator from the right gives the group size; others repeat it.
            if (m_nDigitsInGroup == 0)
            {
                m_nDigitsInGroup = (decimalPos >= 0 ? decimalPos : mask.GetLength()) - i - 1;
                m_cGroupSeparator = c;
            }
        }
        else
        {
            m_strPrefix = mask.Left(i + 1);
            break;
        }
    }
    if (decimalPos < 0)
    {
        // Without a separator every "#" was counted as a decimal place: they are whole digits.
        whole = decimals;
        decimals = 0;
    }
    m_nMaxWholeDigits = whole;
    m_nMaxDecimalPlaces = decimals;
    KeepSeparatorsApart();
    ShowNumber(number);
    _Redraw();
}

CString CKelValueEditEx::NumericBehavior::GetMask() const
{
    CString digits('0', m_nMaxWholeDigits);
    if (m_nMaxDecimalPlaces > 0)
    {
        digits += m_cDecimalSeparator;
        digits += CString('0', m_nMaxDecimalPlaces);
    }
    CString mask = SeparateNumber(digits);
    // The prefix is kept as it is, digits included.
    for (int i = m_strPrefix.GetLength(); i < mask.GetLength(); ++i)
        if (mask[i] == '0')
            mask.SetAt(i, '#');
    return mask;
}
