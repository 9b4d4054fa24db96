// KelWinCtrl value field behaviors: the rules a field's text obeys while it is typed.
//
// Classes in this header:
//   CKelValueEditEx::NumericBehavior   a plain decimal number: prefix, sign, whole digits,
//                                      decimal places, group separators and a range
//
// A behavior keeps a pointer to the control it serves; a concrete field inherits from
// CKelValueEditEx and a behavior and hands its messages to the behavior's hooks (see the
// field classes in valueedit.h). A field of one's own over the numeric rules:
//
//     class CLevelEdit : public CKelValueEditEx, public CKelValueEditEx::NumericBehavior
//     {
//     public:
//         CLevelEdit() : CKelValueEditEx::NumericBehavior(this, 3, 2) {}
//         CString GetValidText() const override { return _GetValidText(); }
//         ...   // WM_CHAR, WM_KEYDOWN, WM_KILLFOCUS to _OnChar, _OnKeyDown, _OnKillFocus
//     };
//
// This header may be included on its own; it reads valueedit.h, which reads this header back
// at the point where the behaviors belong.
#include "valueedit.h"

#if defined(KELWINCTRL_VALUEEDIT_LAYERS_DECLARED) && !defined(KELWINCTRL_BEHAVIORS_DECLARED)
#define KELWINCTRL_BEHAVIORS_DECLARED

// BEGIN numeric behavior
// Posted (not sent) to a numeric field's parent when the user wiped the whole field and then
// left it. No parameters; the field's GetDeletedItemText gives what stood there.
#define KEL_WM_VALUE_DELETED 0xB466

// Keeps the text a well-formed number while it is typed: an optional fixed prefix, an
// optional sign, at most so many digits before and after the decimal separator, and group
// separators that move by themselves. Refused keys vanish silently; the range is checked by
// Validate, which runs when the focus leaves.
class KELWINCTRL_API CKelValueEditEx::NumericBehavior : public CKelValueEditEx::Behavior
{
public:
    // Bits of the behavior flags.
    enum : uint32_t
    {
        NumBeepIfInvalid = 0x00000001,          // Validate beeps on a value out of range
        NumBeepIfEmpty = 0x00000002,            // Validate beeps on an empty text
        NumFixIfInvalid = 0x00000004,           // Validate pulls the value into the range
        NumFixIfEmpty = 0x00000008,             // likewise for an empty text
        NumFocusIfInvalid = 0x00000010,         // Validate keeps the focus in the field
        NumFocusIfEmpty = 0x00000020,           // likewise for an empty text
        NumMessageIfInvalid = 0x00000040,       // Validate shows the range; only with 0x10
        NumMessageIfEmpty = 0x00000080,         // likewise for an empty text; only with 0x20
        NumPadWholeZeros = 0x00000100,          // Validate fills the whole digits with zeros
        NumPadDecimalZeros = 0x00000200,        // Validate fills the decimal places with zeros
        NumCurrencyField = 0x00000400,          // marks a currency field; no rule reads it
        NumTrimLeadingZeros = 0x00000800,       // Validate drops leading zeros
        NumNoNegative = 0x00001000,             // no sign allowed
        NumAutoDecimal = 0x00002000,            // a digit past the whole part enters the separator
        NumPadDecimalsAlways = 0x00004000,      // the valid text always has all decimal places
        NumPadDecimalsOnSet = 0x00008000,       // likewise, except while typing reshapes the text
        NumNoValidateOnKillFocus = 0x00010000,  // leaving the field does not call Validate
    };

    // Flags start at 0xFF: every failure beeps, is fixed, is shown and keeps the focus. A
    // negative maxWholeDigits allows no sign. The sign is the user's locale's negative sign.
    NumericBehavior(CKelValueEditEx* edit, int maxWholeDigits, int maxDecimalPlaces);
    ~NumericBehavior() override;

    // Attributes. Each setter reshapes the text at once when something changed.
    // A negative count allows no sign; a positive one leaves the sign rule as it is.
    void SetMaxWholeDigits(int maxWholeDigits);
    int GetMaxWholeDigits() const;
    // A negative count counts as 0.
    void SetMaxDecimalPlaces(int maxDecimalPlaces);
    int GetMaxDecimalPlaces() const;
    void AllowNegative(bool allow = true);
    bool IsNegativeAllowed() const;
    // 0 switches grouping off; a negative count counts as 0.
    void SetDigitsInGroup(int digitsInGroup);
    int GetDigitsInGroup() const;
    // group 0 means none. When the two would be equal, the group separator becomes "," (or
    // "." where the decimal separator is ","). A decimal separator of 0 keeps the current one.
    // The number shown keeps its value under the new separators.
    void SetSeparators(char decimal, char group);
    void GetSeparators(char* decimal, char* group) const;
    // Fixed text in front of the number; an empty field shows no prefix.
    void SetPrefix(const CString& prefix);
    const CString& GetPrefix() const;
    // A picture such as "$ ##,###.##": prefix, whole digits, group size and separator, decimal
    // separator and decimal places in one. Allows the sign.
    void SetMask(const CString& mask);
    // The picture of the current rules, prefix in front, every digit a "#".
    CString GetMask() const;
    // Bounds that Validate checks; a reversed pair is taken in order. Always reshapes.
    void SetRange(double min, double max);
    void GetRange(double* min, double* max) const;

    // The value: trimTrailingZeros shows 10 as "10.0" rather than "10.000000" (before the
    // rules cut the decimals to the places allowed).
    void SetDouble(double value, bool trimTrailingZeros = true);
    double GetDouble() const;
    void SetInt(int value);
    int GetInt() const;

    // The text as it stood when the user deleted all of it.
    void GetDeletedItemText(CString& text) const;

    // Checks and repairs the text as the flags say. preset, when given, is set as the value
    // first. Fills *text with the number as text and *value with it. Answers 0 when a failure
    // occurred that the flags act on, 1 otherwise.
    int32_t Validate(CString* text = nullptr, double* value = nullptr, const CString* preset = nullptr);
    // The value lies within the range.
    virtual bool IsValid() const;
    // A disabled field is valid. Otherwise, when the value is out of range and showError is
    // true, shows the range and puts the focus back into the field.
    bool CheckIfValid(bool showError = true);
    // Shows the range that the value must lie in.
    virtual void ShowErrorMessage() const;

protected:
    // Hooks of Behavior
    CString _GetValidText() const override;
    void _OnChar(UINT nChar, UINT nRepCnt, UINT nFlags) override;
    void _OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) override;
    void _OnKillFocus(CWnd* pNewWnd) override;

    // Implementation
    // How many group separators the number part of text holds.
    int GetGroupSeparatorCount(const CString& text) const;
    // Digits, the first decimal separator and the sign (in front) of text, without prefix
    // and without trailing decimal zeros. useMathSymbols writes "." and "-" for the
    // separator and the sign, so that the C library can read the result.
    CString GetNumericText(const CString& text, bool useMathSymbols) const;
    // value as text with the decimal separator; trim drops trailing zeros down to one.
    CString GetDoubleText(double value, bool trim = true) const;
    // Brings the text in line with the rules after a key, keeping the caret at its digit
    // when group separators came or went; oldCount is the separators before the key.
    void AdjustSeparators(int oldCount);
    // The number of text with group separators and the prefix.
    CString GetSeparatedText(const CString& text) const;
    // Inserts count zeros at position (the end when negative).
    void InsertZeros(CString& text, int position, int count) const;
    // Pulls the value into the range.
    void AdjustWithinRange();

    CString m_strDeleted;        // the text when the user deleted all of it
    int32_t m_bDeleted;          // set from such a deletion to the next key or the focus loss
    int32_t m_nMaxWholeDigits;   // digits before the decimal separator; never negative
    int32_t m_nMaxDecimalPlaces; // digits after it
    char m_cNegativeSign;        // the locale's negative sign
    char m_cDecimalSeparator;    // "." by default
    char m_cGroupSeparator;      // 0: none; never equal to the decimal separator
    int32_t m_nDigitsInGroup;    // 0: no grouping
    CString m_strPrefix;         // fixed text in front of the number
    double m_dMin;               // lower bound; -DBL_MAX: none
    double m_dMax;               // upper bound; DBL_MAX: none
    int32_t m_bAdjusting;        // set while AdjustSeparators runs

private:
    // Where the number starts in text: behind the prefix when text begins with it.
    int NumberStart(const CString& text) const;
    // Digits, first separator and sign of text (prefix skipped when skipPrefix), with or
    // without the trim of trailing decimal zeros.
    CString ExtractNumber(const CString& text, bool useMathSymbols, bool trimZeros, bool skipPrefix) const;
    // Groups the whole part of a plain number and puts the prefix in front.
    CString SeparateNumber(const CString& numeric) const;
    // Sets the text of a number in the separators' form, with the prefix in front.
    void SetNumberText(const CString& number);
    // Replaces the text from start to end (end -1: to the end of the text) by replacement.
    void ReplaceRange(int start, int end, const char* replacement);
    // Overtypes the character at start (or the selection, when it reaches the text's end),
    // then brings the text in line; oldCount is the group separators before.
    void Overtype(int start, int end, char c, int oldCount);
    // The number of the text in the C library's form, taken before the separators or the
    // prefix change, and shown again under the new ones by ShowNumber.
    CString TakeNumber() const;
    void ShowNumber(const CString& number);
    // The group separator that may stand beside the given decimal separator.
    void KeepSeparatorsApart();
    // Beeps, fixes, speaks and keeps the focus as the flags ask for a failed value; the
    // flags are the IfInvalid ones, shifted left by one for the IfEmpty ones. Answers 0
    // when the failure was acted on, 1 when it is let pass.
    int32_t ReactToFailure(int shift);
};
// END numeric behavior

#endif
