// CString: the framework's 8-bit string (system code page) with its usual members.
//
//     CString name("  Layer 7  ");
//     name.Trim();                               // "Layer 7"
//     CString label;
//     label.Format("%s of %d", name.GetString(), 12);
//     int pos = 0;
//     for (CString tok = label.Tokenize(" ", pos); pos != -1; tok = label.Tokenize(" ", pos))
//         ...;                                   // "Layer", "7", "of", "12"
//
// Classes: CString, plus the free operators +, ==, !=, <, >, <=, >=.
//
// Copies are deep (no shared buffer), so a CString may be handed between threads by value.
// Positions and lengths are int and are clamped the way the framework documents it (a
// negative count is empty, a start past the end is empty); nothing here throws. A CString
// is not a POD: pass GetString() or (LPCSTR)str, not the object, to a printf-style list.
#pragma once
#include "kelfw/fwdefs.h"

#include <cstdarg>

#if defined(__GNUC__) && defined(__MINGW_PRINTF_FORMAT)
#define KELFW_PRINTF_LIKE(fmt, first) __attribute__((format(__MINGW_PRINTF_FORMAT, fmt, first)))
#else
#define KELFW_PRINTF_LIKE(fmt, first)
#endif

class KELFW_API CString
{
public:
    typedef char XCHAR;
    typedef LPSTR PXSTR;
    typedef LPCSTR PCXSTR;

    // Construction
    CString() noexcept;
    CString(const CString& src);
    CString(CString&& src) noexcept;
    // A null pointer gives an empty string; a MAKEINTRESOURCE value loads that string
    // resource from the current resource module.
    CString(PCXSTR psz);
    CString(PCXSTR pch, int nLength);
    CString(XCHAR ch, int nRepeat = 1);
    ~CString();

    CString& operator=(const CString& src);
    CString& operator=(CString&& src) noexcept;
    CString& operator=(PCXSTR psz);
    CString& operator=(XCHAR ch);

    CString& operator+=(const CString& str);
    CString& operator+=(PCXSTR psz);
    CString& operator+=(XCHAR ch);

    // Attributes
    int GetLength() const { return m_nDataLength; }
    bool IsEmpty() const { return m_nDataLength == 0; }
    void Empty();
    PCXSTR GetString() const { return m_pszData; }
    operator PCXSTR() const { return m_pszData; }
    // Out of range reads give '\0'; out of range writes are ignored.
    XCHAR GetAt(int iChar) const;
    void SetAt(int iChar, XCHAR ch);
    XCHAR operator[](int iChar) const { return GetAt(iChar); }

    // Comparison: Compare is byte-wise like strcmp; CompareNoCase folds both sides to
    // lower case in the system code page first. A null pointer compares as "".
    int Compare(PCXSTR psz) const;
    int CompareNoCase(PCXSTR psz) const;

    // Extraction
    CString Mid(int iFirst) const;
    CString Mid(int iFirst, int nCount) const;
    CString Left(int nCount) const;
    CString Right(int nCount) const;
    CString SpanIncluding(PCXSTR pszCharSet) const;
    CString SpanExcluding(PCXSTR pszCharSet) const;

    // Case and order
    CString& MakeUpper();
    CString& MakeLower();
    CString& MakeReverse();

    // Editing; each returns a count of replaced/removed characters or the new length.
    int Replace(XCHAR chOld, XCHAR chNew);
    int Replace(PCXSTR pszOld, PCXSTR pszNew);
    int Remove(XCHAR chRemove);
    int Insert(int iIndex, XCHAR ch);
    int Insert(int iIndex, PCXSTR psz);
    int Delete(int iIndex, int nCount = 1);

    // Searching: -1 when not found or when iStart lies outside the string.
    int Find(XCHAR ch, int iStart = 0) const;
    int Find(PCXSTR pszSub, int iStart = 0) const;
    int ReverseFind(XCHAR ch) const;
    int FindOneOf(PCXSTR pszCharSet) const;

    // printf-style formatting; the output has no length limit.
    void Format(PCXSTR pszFormat, ...) KELFW_PRINTF_LIKE(2, 3);
    void FormatV(PCXSTR pszFormat, va_list args);
    void AppendFormat(PCXSTR pszFormat, ...) KELFW_PRINTF_LIKE(2, 3);
    void AppendFormatV(PCXSTR pszFormat, va_list args);

    // Trimming: white space, one character, or any character of a set.
    CString& Trim();
    CString& Trim(XCHAR chTarget);
    CString& Trim(PCXSTR pszTargets);
    CString& TrimLeft();
    CString& TrimLeft(XCHAR chTarget);
    CString& TrimLeft(PCXSTR pszTargets);
    CString& TrimRight();
    CString& TrimRight(XCHAR chTarget);
    CString& TrimRight(PCXSTR pszTargets);

    // Direct buffer access: the buffer holds at least nMinBufferLength characters plus the
    // terminator; ReleaseBuffer(-1) takes the length up to the first '\0'.
    PXSTR GetBuffer();
    PXSTR GetBuffer(int nMinBufferLength);
    PXSTR GetBufferSetLength(int nLength);
    void ReleaseBuffer(int nNewLength = -1);

    // Loads a string resource from AfxGetResourceHandle(); FALSE (string unchanged) when
    // the module has no such string or it is empty.
    BOOL LoadString(UINT nID);

    // Returns the next token after iStart and moves iStart past it; at the end returns ""
    // and sets iStart to -1.
    CString Tokenize(PCXSTR pszTokens, int& iStart) const;

private:
    bool IsShared() const;
    void Reserve(int nLength);
    void SetLength(int nLength);
    void Assign(PCXSTR pch, int nLength);
    void Append(PCXSTR pch, int nLength);

    PXSTR m_pszData;     // never null: the shared empty string until something is stored
    int m_nDataLength;   // characters before the terminator
    int m_nAllocLength;  // characters the buffer can hold besides the terminator
};

inline CString operator+(const CString& str1, const CString& str2)
{
    CString result(str1);
    result += str2;
    return result;
}

inline CString operator+(const CString& str1, LPCSTR psz2)
{
    CString result(str1);
    result += psz2;
    return result;
}

inline CString operator+(LPCSTR psz1, const CString& str2)
{
    CString result(psz1);
    result += str2;
    return result;
}

inline CString operator+(const CString& str1, char ch2)
{
    CString result(str1);
    result += ch2;
    return result;
}

inline CString operator+(char ch1, const CString& str2)
{
    CString result(ch1);
    result += str2;
    return result;
}

inline bool operator==(const CString& str1, const CString& str2) { return str1.Compare(str2) == 0; }
inline bool operator==(const CString& str1, LPCSTR psz2) { return str1.Compare(psz2) == 0; }
inline bool operator==(LPCSTR psz1, const CString& str2) { return str2.Compare(psz1) == 0; }
inline bool operator!=(const CString& str1, const CString& str2) { return str1.Compare(str2) != 0; }
inline bool operator!=(const CString& str1, LPCSTR psz2) { return str1.Compare(psz2) != 0; }
inline bool operator!=(LPCSTR psz1, const CString& str2) { return str2.Compare(psz1) != 0; }
inline bool operator<(const CString& str1, const CString& str2) { return str1.Compare(str2) < 0; }
inline bool operator<(const CString& str1, LPCSTR psz2) { return str1.Compare(psz2) < 0; }
inline bool operator<(LPCSTR psz1, const CString& str2) { return str2.Compare(psz1) > 0; }
inline bool operator>(const CString& str1, const CString& str2) { return str1.Compare(str2) > 0; }
inline bool operator>(const CString& str1, LPCSTR psz2) { return str1.Compare(psz2) > 0; }
inline bool operator>(LPCSTR psz1, const CString& str2) { return str2.Compare(psz1) < 0; }
inline bool operator<=(const CString& str1, const CString& str2) { return str1.Compare(str2) <= 0; }
inline bool operator<=(const CString& str1, LPCSTR psz2) { return str1.Compare(psz2) <= 0; }
inline bool operator<=(LPCSTR psz1, const CString& str2) { return str2.Compare(psz1) >= 0; }
inline bool operator>=(const CString& str1, const CString& str2) { return str1.Compare(str2) >= 0; }
inline bool operator>=(const CString& str1, LPCSTR psz2) { return str1.Compare(psz2) >= 0; }
inline bool operator>=(LPCSTR psz1, const CString& str2) { return str2.Compare(psz1) <= 0; }
