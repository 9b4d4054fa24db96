// CKelValueEditEx::NumericBehavior: reading the number out of a text, formatting it, and the
// valid form of a field's text.
#include "behaviors.h"

#include <stdio.h>
#include <stdlib.h>

namespace
{
bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}
}

int CKelValueEditEx::NumericBehavior::NumberStart(const CString& text) const
{
    int length = m_strPrefix.GetLength();
    if (length > 0 && text.GetLength() >= length && text.Left(length) == m_strPrefix)
        return length;
    return 0;
}

CString CKelValueEditEx::NumericBehavior::ExtractNumber(const CString& text, bool useMathSymbols, bool trimZeros,
                                                        bool skipPrefix) const
{
    CString result;
    bool bNegative = false;
    bool bSeparator = false;
    // The prefix may hold digits, a sign or a point: it is no part of the number.
    for (int i = skipPrefix ? NumberStart(text) : 0; i < text.GetLength(); ++i)
    {
        char c = text[i];
        if (IsDigit(c))
            result += c;
        else if (c == m_cNegativeSign)
            bNegative = true;   // wherever it stands, it makes the number negative
        else if (c == m_cDecimalSeparator && !bSeparator)
        {
            result += useMathSymbols ? '.' : m_cDecimalSeparator;
            bSeparator = true;
        }
    }
    if (bNegative)
        result.Insert(0, useMathSymbols ? '-' : m_cNegativeSign);
    if (bSeparator && trimZeros)
    {
        result.TrimRight('0');
        // Only a point is completed: the C library reads "12." but a reader may not.
        if (!result.IsEmpty() && result[result.GetLength() - 1] == '.')
            result += '0';
    }
    return result;
}

CString CKelValueEditEx::NumericBehavior::GetNumericText(const CString& text, bool useMathSymbols) const
{
    return ExtractNumber(text, useMathSymbols, true, true);
}

CString CKelValueEditEx::NumericBehavior::GetDoubleText(double value, bool trim) const
{
    CString text;
    text.Format("%lf", value);
    if (text.Find('.') < 0)
        return text;   // infinity or not a number: no digits to shape
    text.Replace('.', m_cDecimalSeparator);
    if (trim)
    {
        text.TrimRight('0');
        if (!text.IsEmpty() && text[text.GetLength() - 1] == m_cDecimalSeparator)
            text += '0';
    }
    return text;
}

int CKelValueEditEx::NumericBehavior::GetGroupSeparatorCount(const CString& text) const
{
    if (m_cGroupSeparator == 0)
        return 0;
    int count = 0;
    for (int i = NumberStart(text); i < text.GetLength(); ++i)
        if (text[i] == m_cGroupSeparator)
            ++count;
    return count;
}

CString CKelValueEditEx::NumericBehavior::GetSeparatedText(const CString& text) const
{
    // The decimals are taken as they stand: trailing zeros are the user's or the padding's.
    return SeparateNumber(ExtractNumber(text, false, false, true));
}

CString CKelValueEditEx::NumericBehavior::SeparateNumber(const CString& numeric) const
{
    int decimalPos = numeric.Find(m_cDecimalSeparator);
    CString result = decimalPos >= 0 ? numeric.Left(decimalPos) : numeric;
    if (m_nDigitsInGroup > 0 && m_cGroupSeparator != 0)
    {
        int start = !result.IsEmpty() && result[0] == m_cNegativeSign ? 1 : 0;
        for (int pos = result.GetLength() - m_nDigitsInGroup - 1; pos >= start; pos -= m_nDigitsInGroup)
            result.Insert(pos + 1, m_cGroupSeparator);
    }
    if (result.IsEmpty() && decimalPos < 0)
        return result;   // an empty field shows no prefix
    result.Insert(0, m_strPrefix);
    if (decimalPos >= 0)
        result += numeric.Mid(decimalPos);
    return result;
}

void CKelValueEditEx::NumericBehavior::InsertZeros(CString& text, int position, int count) const
{
    if (position < 0 || position > text.GetLength())
        position = text.GetLength();
    for (int i = 0; i < count; ++i)
        text.Insert(position, '0');
}

CString CKelValueEditEx::NumericBehavior::_GetValidText() const
{
    CString text = m_pEdit->GetText();
    text = text.Mid(NumberStart(text));
    // A comma is read as the decimal separator, unless it separates groups.
    if (m_cGroupSeparator != ',' && m_cDecimalSeparator != ',')
        text.Replace(',', m_cDecimalSeparator);

    CString scratch;
    bool bNegative = false;
    int count = 0;
    int decimalPos = -1;
    for (int i = 0; i < text.GetLength(); ++i)
    {
        char c = text[i];
        if (c == m_cNegativeSign && IsNegativeAllowed())
            bNegative = true;
        else if (IsDigit(c) && decimalPos < 0)
        {
            if (count == m_nMaxWholeDigits)
                continue;   // the whole part is full: further digits are dropped
            scratch += c;
            ++count;
        }
        else if (IsDigit(c))
        {
            if (count > m_nMaxDecimalPlaces + decimalPos)
                break;   // decimal places full: the rest of the text is cut
            scratch += c;
            ++count;
        }
        else if (c == m_cDecimalSeparator && decimalPos < 0)
        {
            if (m_nMaxDecimalPlaces == 0)
                break;   // no decimals: what follows the separator is cut
            scratch += c;
            decimalPos = count;
            ++count;
        }
    }

    bool bPad = (m_uFlags & NumPadDecimalsAlways) != 0 || ((m_uFlags & NumPadDecimalsOnSet) != 0 && m_bAdjusting == 0);
    if (m_nMaxDecimalPlaces >= 1 && count >= 1 && bPad)
    {
        if (decimalPos < 0)
        {
            decimalPos = scratch.GetLength();
            scratch += m_cDecimalSeparator;
        }
        InsertZeros(scratch, -1, m_nMaxDecimalPlaces - (scratch.GetLength() - decimalPos - 1));
    }
    if (bNegative)
        scratch.Insert(0, m_cNegativeSign);
    return SeparateNumber(scratch);
}

void CKelValueEditEx::NumericBehavior::SetNumberText(const CString& number)
{
    // With the prefix in front, so that a prefix holding digits is not read as the number's.
    m_pEdit->SetWindowText(static_cast<const char*>(m_strPrefix + number));
}

void CKelValueEditEx::NumericBehavior::SetDouble(double value, bool trimTrailingZeros)
{
    CString text = GetDoubleText(value, trimTrailingZeros);
    if (!text.IsEmpty() && text[0] == '-')
        text.SetAt(0, m_cNegativeSign);
    SetNumberText(text);
}

double CKelValueEditEx::NumericBehavior::GetDouble() const
{
    CString text = GetNumericText(m_pEdit->GetText(), true);
    return strtod(text, nullptr);
}

void CKelValueEditEx::NumericBehavior::SetInt(int value)
{
    CString text;
    text.Format("%d", value);
    if (value < 0)
        text.SetAt(0, m_cNegativeSign);
    SetNumberText(text);
}

int CKelValueEditEx::NumericBehavior::GetInt() const
{
    CString text = GetNumericText(m_pEdit->GetText(), true);
    return atoi(text);
}
