// CKelValueEditEx::NumericBehavior: the keys. Each typed character is taken, moved, turned
// into an overtype or refused, so that the text stays a number of the configured shape.
#include "behaviors.h"

namespace
{
bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsPrintable(char c)
{
    return static_cast<unsigned char>(c) >= 32 && c != 127;
}
}

void CKelValueEditEx::NumericBehavior::ReplaceRange(int start, int end, const char* replacement)
{
    m_pEdit->SetSel(start, end, TRUE);
    m_pEdit->SendMessage(EM_SCROLLCARET);
    m_pEdit->ReplaceSel(replacement, TRUE);
}

void CKelValueEditEx::NumericBehavior::Overtype(int start, int end, char c, int oldCount)
{
    // One character is replaced, unless the selection runs to the end: then all of it goes,
    // and the rules see to what is left (padding, separators).
    if (end != m_pEdit->GetText().GetLength())
        end = start + 1;
    const char replacement[2] = {c, 0};
    ReplaceRange(start, end, replacement);
    AdjustSeparators(oldCount);
}

void CKelValueEditEx::NumericBehavior::_OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    if (m_pEdit->IsReadOnly())
        return;
    char c = static_cast<char>(nChar);
    // A comma counts as the decimal separator, unless it separates groups.
    if (c == ',' && m_cGroupSeparator != ',')
        c = m_cDecimalSeparator;

    int selStart = 0, selEnd = 0;
    m_pEdit->GetSel(selStart, selEnd);
    CString text = m_pEdit->GetText();
    int length = text.GetLength();
    int prefixLength = m_strPrefix.GetLength();
    int numberStart = NumberStart(text);
    int decimalPos = text.Find(m_cDecimalSeparator, numberStart);
    int separatorCount = GetGroupSeparatorCount(text);
    bool bHasSign = numberStart < length && text[numberStart] == m_cNegativeSign;
    bool bPrintable = IsPrintable(c);
    bool bAdjust = false;

    // Inside the prefix: its own character overtypes it; a character of the number goes
    // behind it.
    if (selStart < prefixLength && bPrintable)
    {
        if (c == m_strPrefix[selStart] && _ShouldEnter(c))
        {
            if (length > selStart)
                Overtype(selStart, selEnd, c, separatorCount);
            else
                Behavior::_OnChar(nChar, nRepCnt, nFlags);   // the prefix is being typed out
            return;
        }
        bool bNumberChar = IsDigit(c) || c == m_cNegativeSign || c == m_cDecimalSeparator;
        if (bNumberChar && _ShouldEnter(c))
        {
            // A selection that reaches into the number takes that part along.
            int end = selEnd >= length ? selEnd : (selEnd > prefixLength ? selEnd : prefixLength);
            ReplaceRange(selStart, end, m_strPrefix.Mid(selStart));
            // What is left of the number may hold a separator out of place. A field that is
            // now the prefix alone stays as it is, for the character to go behind it.
            if (m_pEdit->GetText().GetLength() > prefixLength)
                AdjustSeparators(separatorCount);
            // A text limit of the edit may have refused the prefix: then the character is lost
            // rather than tried again.
            int caret = 0, caretEnd = 0;
            m_pEdit->GetSel(caret, caretEnd);
            if (caret >= prefixLength)
                _OnChar(c, nRepCnt, nFlags);
        }
        return;
    }

    if (c == m_cNegativeSign && IsNegativeAllowed())
    {
        if (selStart == prefixLength)
        {
            if (bHasSign)
            {
                if (_ShouldEnter(c))
                    Overtype(selStart, selEnd, c, separatorCount);
                return;
            }
            // The sign goes in front; a selection it replaces may have held separators.
            bAdjust = true;
        }
        else
        {
            // Anywhere else the sign is switched on or off, and the selection moves with it.
            if (_ShouldEnter(c))
            {
                SelectionSaver saver(m_pEdit, selStart, selEnd);
                if (bHasSign)
                {
                    ReplaceRange(prefixLength, prefixLength + 1, "");
                    saver += -1;
                }
                else
                {
                    const char sign[2] = {m_cNegativeSign, 0};
                    ReplaceRange(prefixLength, prefixLength, sign);
                    saver += 1;
                }
            }
            return;
        }
    }
    else if (c == m_cDecimalSeparator && m_nMaxDecimalPlaces > 0)
    {
        // A second separator is not typed: the caret jumps behind the one there is.
        if (decimalPos >= 0 && (decimalPos < selStart || decimalPos >= selEnd))
        {
            if (_ShouldEnter(c))
                m_pEdit->SetSel(decimalPos + 1, decimalPos + 1);
            return;
        }
        bAdjust = true;
    }
    else if (IsDigit(c))
    {
        if (decimalPos >= 0 && selStart > decimalPos)
        {
            // Decimal places are counted in the text as it stands, padding zeros included.
            int decimals = length - decimalPos - 1;
            if (decimals >= m_nMaxDecimalPlaces)
            {
                if (selStart < decimalPos + 1 + m_nMaxDecimalPlaces && _ShouldEnter(c))
                    Overtype(selStart, selEnd, c, separatorCount);
                return;   // past the last place the digit is refused
            }
        }
        else
        {
            int limit = m_nMaxWholeDigits + (bHasSign ? 1 : 0) + separatorCount + prefixLength;
            if (selStart == limit)
            {
                // Behind a full whole part only the decimal separator can come.
                if ((m_uFlags & NumAutoDecimal) != 0 && m_nMaxDecimalPlaces > 0 && _ShouldEnter(c))
                {
                    int end = selEnd >= length ? selEnd : selStart + 2;
                    const char replacement[3] = {m_cDecimalSeparator, c, 0};
                    ReplaceRange(selStart, end, replacement);
                    AdjustSeparators(separatorCount);
                }
                return;
            }
            int wholeDigits = 0;
            int wholeEnd = decimalPos >= 0 ? decimalPos : length;
            for (int i = numberStart; i < wholeEnd; ++i)
                if (IsDigit(text[i]))
                    ++wholeDigits;
            if (wholeDigits >= m_nMaxWholeDigits)
            {
                // A full whole part is overtyped, passing over separators and the sign.
                if (_ShouldEnter(c))
                {
                    while (selStart < length && selStart == selEnd &&
                           (text[selStart] == m_cGroupSeparator || (selStart == numberStart && bHasSign)))
                        selEnd = ++selStart;
                    while (selStart < selEnd && text[selStart] == m_cGroupSeparator)
                        ++selStart;
                    Overtype(selStart, selEnd, c, separatorCount);
                }
                return;
            }
            bAdjust = true;
        }
    }
    else if (bPrintable)
        return;   // no part of a number
    else
        bAdjust = true;   // Backspace and other control characters reshape the text

    if (_ShouldEnter(c))
    {
        HWND hEdit = m_pEdit->GetSafeHwnd();
        Behavior::_OnChar(nChar, nRepCnt, nFlags);
        // Return or Escape in place end the edit, and its owner may destroy it at once; the
        // edit deletes itself with its window.
        if (!::IsWindow(hEdit))
            return;
        if (bAdjust)
            AdjustSeparators(separatorCount);
        m_bDeleted = 0;
    }
}

void CKelValueEditEx::NumericBehavior::_OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    if (nChar != VK_DELETE || m_pEdit->IsReadOnly())
    {
        _Default();
        return;
    }

    int selStart = 0, selEnd = 0;
    m_pEdit->GetSel(selStart, selEnd);
    CString text = m_pEdit->GetText();
    int length = text.GetLength();
    // Wiping the whole field is remembered, so that the parent can hear of it at focus loss.
    if (length > 0 && selStart == 0 && selEnd >= length)
    {
        m_strDeleted = text;
        m_bDeleted = 1;
    }

    int prefixLength = m_strPrefix.GetLength();
    if (selStart < prefixLength && length > prefixLength)
    {
        // The prefix goes only together with all that follows it; what is left of it then
        // is no number, and the field becomes empty.
        if (selEnd >= length)
        {
            _Default();
            AdjustSeparators(0);
        }
        return;
    }

    // A separator goes together with the digit behind it.
    if (selStart == selEnd && selStart < length && m_cGroupSeparator != 0 && text[selStart] == m_cGroupSeparator)
        _Default();

    int separatorCount = GetGroupSeparatorCount(m_pEdit->GetText());
    _Default();
    AdjustSeparators(separatorCount);

    if (selEnd >= length)
    {
        m_pEdit->SetSel(selStart, selStart, TRUE);
        m_pEdit->SendMessage(EM_SCROLLCARET);
    }
}

void CKelValueEditEx::NumericBehavior::AdjustSeparators(int oldCount)
{
    SelectionSaver saver(m_pEdit);
    m_bAdjusting = 1;
    CString valid = _GetValidText();
    if (valid != m_pEdit->GetText())
        m_pEdit->SetWindowText(static_cast<const char*>(valid));
    int newCount = GetGroupSeparatorCount(valid);
    // Separators that came or went in front of the caret would move it off its digit.
    if (newCount != oldCount && saver.GetStart() > m_strPrefix.GetLength())
        saver.MoveBy(newCount - oldCount, newCount - oldCount);
    m_bAdjusting = 0;
}
