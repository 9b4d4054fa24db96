// CString: storage, editing, searching, formatting and resource loading.
#include "kelfw/fwstring.h"

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#if __has_include("kelfw/fwmodule.h")
#include "kelfw/fwmodule.h"
#else
// Until the module state exists, strings come from the program's own resources.
static HINSTANCE AfxGetResourceHandle()
{
    return GetModuleHandleA(nullptr);
}
#endif

namespace
{
// The buffer of every empty string that has never held characters. It is never written:
// every path that stores characters first gives the string a buffer of its own.
char g_emptyString[1] = {'\0'};

// Running out of memory is not something a caller can recover from here; like a heap
// created with HEAP_GENERATE_EXCEPTIONS we raise a structured exception instead of
// returning a string that silently lost characters.
[[noreturn]] void FailAllocation()
{
    RaiseException(static_cast<DWORD>(STATUS_NO_MEMORY), EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::abort();
}

int CheckedLength(size_t length)
{
    if (length > static_cast<size_t>(INT_MAX - 1))
        FailAllocation();
    return static_cast<int>(length);
}

int SafeLength(LPCSTR psz)
{
    return psz == nullptr ? 0 : CheckedLength(std::strlen(psz));
}

bool IsWhite(char ch)
{
    return std::isspace(static_cast<unsigned char>(ch)) != 0;
}

// True when ch is one of the characters of the set (the terminator is never a member).
bool InSet(LPCSTR pszSet, char ch)
{
    return ch != '\0' && std::strchr(pszSet, ch) != nullptr;
}
} // namespace

// --- Storage -------------------------------------------------------------------------------

bool CString::IsShared() const
{
    return m_pszData == g_emptyString;
}

void CString::Reserve(int nLength)
{
    if (nLength < 0)
        nLength = 0;
    if (!IsShared() && nLength <= m_nAllocLength)
        return;
    int newAlloc = nLength;
    if (!IsShared())
    {
        // Grow by half again so that repeated appends stay linear.
        const long long grown = static_cast<long long>(m_nAllocLength) * 3 / 2;
        if (grown > newAlloc)
            newAlloc = static_cast<int>(std::min<long long>(grown, INT_MAX - 1));
    }
    const size_t bytes = static_cast<size_t>(newAlloc) + 1;
    char* p = IsShared() ? static_cast<char*>(std::malloc(bytes))
                         : static_cast<char*>(std::realloc(m_pszData, bytes));
    if (p == nullptr)
        FailAllocation();
    if (IsShared())
        p[0] = '\0';
    m_pszData = p;
    m_nAllocLength = newAlloc;
}

void CString::SetLength(int nLength)
{
    if (IsShared())
        return; // only an empty length can reach here without a buffer
    m_nDataLength = nLength;
    m_pszData[nLength] = '\0';
}

void CString::Assign(PCXSTR pch, int nLength)
{
    if (nLength <= 0 || pch == nullptr)
    {
        SetLength(0);
        return;
    }
    if (!IsShared() && pch >= m_pszData && pch <= m_pszData + m_nAllocLength)
    {
        // Part of ourselves (s = s.GetString() + 2): it already fits.
        std::memmove(m_pszData, pch, static_cast<size_t>(nLength));
    }
    else
    {
        Reserve(nLength);
        std::memcpy(m_pszData, pch, static_cast<size_t>(nLength));
    }
    SetLength(nLength);
}

void CString::Append(PCXSTR pch, int nLength)
{
    if (nLength <= 0 || pch == nullptr)
        return;
    const int newLength = CheckedLength(static_cast<size_t>(m_nDataLength) + nLength);
    if (!IsShared() && pch >= m_pszData && pch <= m_pszData + m_nAllocLength)
    {
        // Appending part of ourselves (s += s): the buffer may move.
        const ptrdiff_t offset = pch - m_pszData;
        Reserve(newLength);
        pch = m_pszData + offset;
    }
    else
    {
        Reserve(newLength);
    }
    std::memmove(m_pszData + m_nDataLength, pch, static_cast<size_t>(nLength));
    SetLength(newLength);
}

// --- Construction --------------------------------------------------------------------------

CString::CString() noexcept : m_pszData(g_emptyString), m_nDataLength(0), m_nAllocLength(0)
{
}

CString::CString(const CString& src) : CString()
{
    Assign(src.m_pszData, src.m_nDataLength);
}

CString::CString(CString&& src) noexcept
    : m_pszData(src.m_pszData), m_nDataLength(src.m_nDataLength), m_nAllocLength(src.m_nAllocLength)
{
    src.m_pszData = g_emptyString;
    src.m_nDataLength = 0;
    src.m_nAllocLength = 0;
}

CString::CString(PCXSTR psz) : CString()
{
    if (psz == nullptr)
        return;
    if (IS_INTRESOURCE(psz))
        LoadString(LOWORD(reinterpret_cast<ULONG_PTR>(psz)));
    else
        Assign(psz, SafeLength(psz));
}

CString::CString(PCXSTR pch, int nLength) : CString()
{
    Assign(pch, nLength);
}

CString::CString(XCHAR ch, int nRepeat) : CString()
{
    if (nRepeat <= 0)
        return;
    Reserve(nRepeat);
    std::memset(m_pszData, ch, static_cast<size_t>(nRepeat));
    SetLength(nRepeat);
}

CString::~CString()
{
    if (!IsShared())
        std::free(m_pszData);
}

CString& CString::operator=(const CString& src)
{
    if (this != &src)
        Assign(src.m_pszData, src.m_nDataLength);
    return *this;
}

CString& CString::operator=(CString&& src) noexcept
{
    if (this != &src)
    {
        if (!IsShared())
            std::free(m_pszData);
        m_pszData = src.m_pszData;
        m_nDataLength = src.m_nDataLength;
        m_nAllocLength = src.m_nAllocLength;
        src.m_pszData = g_emptyString;
        src.m_nDataLength = 0;
        src.m_nAllocLength = 0;
    }
    return *this;
}

CString& CString::operator=(PCXSTR psz)
{
    Assign(psz, SafeLength(psz));
    return *this;
}

CString& CString::operator=(XCHAR ch)
{
    Assign(&ch, 1);
    return *this;
}

CString& CString::operator+=(const CString& str)
{
    Append(str.m_pszData, str.m_nDataLength);
    return *this;
}

CString& CString::operator+=(PCXSTR psz)
{
    Append(psz, SafeLength(psz));
    return *this;
}

CString& CString::operator+=(XCHAR ch)
{
    Append(&ch, 1);
    return *this;
}

// --- Attributes ----------------------------------------------------------------------------

void CString::Empty()
{
    if (!IsShared())
        std::free(m_pszData);
    m_pszData = g_emptyString;
    m_nDataLength = 0;
    m_nAllocLength = 0;
}

CString::XCHAR CString::GetAt(int iChar) const
{
    if (iChar < 0 || iChar >= m_nDataLength)
        return '\0';
    return m_pszData[iChar];
}

void CString::SetAt(int iChar, XCHAR ch)
{
    if (iChar < 0 || iChar >= m_nDataLength)
        return;
    m_pszData[iChar] = ch;
}

// --- Comparison ----------------------------------------------------------------------------

int CString::Compare(PCXSTR psz) const
{
    return std::strcmp(m_pszData, psz != nullptr ? psz : "");
}

int CString::CompareNoCase(PCXSTR psz) const
{
    // Folding whole strings lets the system handle double-byte code pages correctly.
    CString left(*this);
    CString right(psz);
    left.MakeLower();
    right.MakeLower();
    return std::strcmp(left.m_pszData, right.m_pszData);
}

// --- Extraction ----------------------------------------------------------------------------

CString CString::Mid(int iFirst) const
{
    if (iFirst < 0)
        iFirst = 0;
    return Mid(iFirst, m_nDataLength - std::min(iFirst, m_nDataLength));
}

CString CString::Mid(int iFirst, int nCount) const
{
    if (iFirst < 0)
        iFirst = 0;
    if (nCount < 0)
        nCount = 0;
    if (iFirst >= m_nDataLength)
        return CString();
    if (nCount > m_nDataLength - iFirst)
        nCount = m_nDataLength - iFirst;
    return CString(m_pszData + iFirst, nCount);
}

CString CString::Left(int nCount) const
{
    return Mid(0, nCount);
}

CString CString::Right(int nCount) const
{
    if (nCount < 0)
        nCount = 0;
    if (nCount > m_nDataLength)
        nCount = m_nDataLength;
    return CString(m_pszData + m_nDataLength - nCount, nCount);
}

CString CString::SpanIncluding(PCXSTR pszCharSet) const
{
    if (pszCharSet == nullptr)
        return CString();
    return Left(static_cast<int>(std::strspn(m_pszData, pszCharSet)));
}

CString CString::SpanExcluding(PCXSTR pszCharSet) const
{
    if (pszCharSet == nullptr)
        return *this;
    return Left(static_cast<int>(std::strcspn(m_pszData, pszCharSet)));
}

// --- Case and order ------------------------------------------------------------------------

CString& CString::MakeUpper()
{
    if (m_nDataLength > 0)
        CharUpperBuffA(m_pszData, static_cast<DWORD>(m_nDataLength));
    return *this;
}

CString& CString::MakeLower()
{
    if (m_nDataLength > 0)
        CharLowerBuffA(m_pszData, static_cast<DWORD>(m_nDataLength));
    return *this;
}

CString& CString::MakeReverse()
{
    std::reverse(m_pszData, m_pszData + m_nDataLength);
    return *this;
}

// --- Editing -------------------------------------------------------------------------------

int CString::Replace(XCHAR chOld, XCHAR chNew)
{
    if (chOld == chNew)
        return 0;
    int count = 0;
    for (int i = 0; i < m_nDataLength; ++i)
    {
        if (m_pszData[i] == chOld)
        {
            m_pszData[i] = chNew;
            ++count;
        }
    }
    return count;
}

int CString::Replace(PCXSTR pszOld, PCXSTR pszNew)
{
    const int oldLength = SafeLength(pszOld);
    if (oldLength == 0)
        return 0;
    const std::string_view text(m_pszData, static_cast<size_t>(m_nDataLength));
    const std::string_view target(pszOld, static_cast<size_t>(oldLength));
    size_t pos = text.find(target);
    if (pos == std::string_view::npos)
        return 0;

    // Built apart from ourselves: either argument may point into this string.
    const int newLength = SafeLength(pszNew);
    CString result;
    size_t done = 0;
    int count = 0;
    while (pos != std::string_view::npos)
    {
        result.Append(m_pszData + done, static_cast<int>(pos - done));
        result.Append(pszNew, newLength);
        done = pos + static_cast<size_t>(oldLength);
        ++count;
        pos = text.find(target, done);
    }
    result.Append(m_pszData + done, static_cast<int>(text.size() - done));
    *this = std::move(result);
    return count;
}

int CString::Remove(XCHAR chRemove)
{
    char* end = std::remove(m_pszData, m_pszData + m_nDataLength, chRemove);
    const int removed = m_nDataLength - static_cast<int>(end - m_pszData);
    if (removed > 0)
        SetLength(m_nDataLength - removed);
    return removed;
}

int CString::Insert(int iIndex, XCHAR ch)
{
    if (iIndex < 0)
        iIndex = 0;
    if (iIndex > m_nDataLength)
        iIndex = m_nDataLength;
    Reserve(CheckedLength(static_cast<size_t>(m_nDataLength) + 1));
    std::memmove(m_pszData + iIndex + 1, m_pszData + iIndex, static_cast<size_t>(m_nDataLength - iIndex));
    m_pszData[iIndex] = ch;
    SetLength(m_nDataLength + 1);
    return m_nDataLength;
}

int CString::Insert(int iIndex, PCXSTR psz)
{
    if (iIndex < 0)
        iIndex = 0;
    if (iIndex > m_nDataLength)
        iIndex = m_nDataLength;
    const int insertLength = SafeLength(psz);
    if (insertLength == 0)
        return m_nDataLength;
    // Copy first: psz may point into this string's buffer, which is about to move.
    const CString inserted(psz, insertLength);
    const int newLength = CheckedLength(static_cast<size_t>(m_nDataLength) + insertLength);
    Reserve(newLength);
    std::memmove(m_pszData + iIndex + insertLength, m_pszData + iIndex,
                 static_cast<size_t>(m_nDataLength - iIndex));
    std::memcpy(m_pszData + iIndex, inserted.m_pszData, static_cast<size_t>(insertLength));
    SetLength(newLength);
    return m_nDataLength;
}

int CString::Delete(int iIndex, int nCount)
{
    if (iIndex < 0)
        iIndex = 0;
    if (nCount <= 0 || iIndex >= m_nDataLength)
        return m_nDataLength;
    if (nCount > m_nDataLength - iIndex)
        nCount = m_nDataLength - iIndex;
    std::memmove(m_pszData + iIndex, m_pszData + iIndex + nCount,
                 static_cast<size_t>(m_nDataLength - iIndex - nCount));
    SetLength(m_nDataLength - nCount);
    return m_nDataLength;
}

// --- Searching -----------------------------------------------------------------------------

int CString::Find(XCHAR ch, int iStart) const
{
    if (iStart < 0 || iStart >= m_nDataLength)
        return -1;
    const void* hit = std::memchr(m_pszData + iStart, ch, static_cast<size_t>(m_nDataLength - iStart));
    return hit == nullptr ? -1 : static_cast<int>(static_cast<const char*>(hit) - m_pszData);
}

int CString::Find(PCXSTR pszSub, int iStart) const
{
    if (pszSub == nullptr || iStart < 0 || iStart > m_nDataLength)
        return -1;
    const std::string_view text(m_pszData, static_cast<size_t>(m_nDataLength));
    const size_t pos = text.find(pszSub, static_cast<size_t>(iStart));
    return pos == std::string_view::npos ? -1 : static_cast<int>(pos);
}

int CString::ReverseFind(XCHAR ch) const
{
    const std::string_view text(m_pszData, static_cast<size_t>(m_nDataLength));
    const size_t pos = text.rfind(ch);
    return pos == std::string_view::npos ? -1 : static_cast<int>(pos);
}

int CString::FindOneOf(PCXSTR pszCharSet) const
{
    if (pszCharSet == nullptr || *pszCharSet == '\0')
        return -1;
    const std::string_view text(m_pszData, static_cast<size_t>(m_nDataLength));
    const size_t pos = text.find_first_of(pszCharSet);
    return pos == std::string_view::npos ? -1 : static_cast<int>(pos);
}

// --- Formatting ----------------------------------------------------------------------------

void CString::Format(PCXSTR pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    FormatV(pszFormat, args);
    va_end(args);
}

void CString::FormatV(PCXSTR pszFormat, va_list args)
{
    // Formatted apart from ourselves: an argument may be this very string.
    CString result;
    result.AppendFormatV(pszFormat, args);
    *this = std::move(result);
}

void CString::AppendFormat(PCXSTR pszFormat, ...)
{
    va_list args;
    va_start(args, pszFormat);
    AppendFormatV(pszFormat, args);
    va_end(args);
}

void CString::AppendFormatV(PCXSTR pszFormat, va_list args)
{
    if (pszFormat == nullptr)
        return;
    // Most output fits on the stack; longer output is measured and formatted again. A
    // runtime whose vsnprintf answers -1 on truncation gets a doubling buffer instead.
    char local[512];
    va_list copy;
    va_copy(copy, args);
    int written = std::vsnprintf(local, sizeof(local), pszFormat, copy);
    va_end(copy);
    if (written >= 0 && written < static_cast<int>(sizeof(local)))
    {
        Append(local, written);
        return;
    }

    size_t size = written > 0 ? static_cast<size_t>(written) + 1 : sizeof(local) * 2;
    for (;;)
    {
        if (size > static_cast<size_t>(INT_MAX))
            return; // a broken format: leave the string as it was
        char* buffer = static_cast<char*>(std::malloc(size));
        if (buffer == nullptr)
            FailAllocation();
        va_copy(copy, args);
        written = std::vsnprintf(buffer, size, pszFormat, copy);
        va_end(copy);
        if (written >= 0 && static_cast<size_t>(written) < size)
        {
            Append(buffer, written);
            std::free(buffer);
            return;
        }
        std::free(buffer);
        size = written > 0 ? static_cast<size_t>(written) + 1 : size * 2;
    }
}

// --- Trimming ------------------------------------------------------------------------------

CString& CString::Trim()
{
    return TrimRight().TrimLeft();
}

CString& CString::Trim(XCHAR chTarget)
{
    return TrimRight(chTarget).TrimLeft(chTarget);
}

CString& CString::Trim(PCXSTR pszTargets)
{
    return TrimRight(pszTargets).TrimLeft(pszTargets);
}

CString& CString::TrimLeft()
{
    int n = 0;
    while (n < m_nDataLength && IsWhite(m_pszData[n]))
        ++n;
    Delete(0, n);
    return *this;
}

CString& CString::TrimLeft(XCHAR chTarget)
{
    int n = 0;
    while (n < m_nDataLength && m_pszData[n] == chTarget)
        ++n;
    Delete(0, n);
    return *this;
}

CString& CString::TrimLeft(PCXSTR pszTargets)
{
    if (pszTargets == nullptr || *pszTargets == '\0')
        return *this;
    int n = 0;
    while (n < m_nDataLength && InSet(pszTargets, m_pszData[n]))
        ++n;
    Delete(0, n);
    return *this;
}

CString& CString::TrimRight()
{
    int n = m_nDataLength;
    while (n > 0 && IsWhite(m_pszData[n - 1]))
        --n;
    if (n < m_nDataLength)
        SetLength(n);
    return *this;
}

CString& CString::TrimRight(XCHAR chTarget)
{
    int n = m_nDataLength;
    while (n > 0 && m_pszData[n - 1] == chTarget)
        --n;
    if (n < m_nDataLength)
        SetLength(n);
    return *this;
}

CString& CString::TrimRight(PCXSTR pszTargets)
{
    if (pszTargets == nullptr || *pszTargets == '\0')
        return *this;
    int n = m_nDataLength;
    while (n > 0 && InSet(pszTargets, m_pszData[n - 1]))
        --n;
    if (n < m_nDataLength)
        SetLength(n);
    return *this;
}

// --- Buffer access -------------------------------------------------------------------------

CString::PXSTR CString::GetBuffer()
{
    Reserve(m_nDataLength);
    return m_pszData;
}

CString::PXSTR CString::GetBuffer(int nMinBufferLength)
{
    Reserve(std::max(nMinBufferLength, m_nDataLength));
    return m_pszData;
}

CString::PXSTR CString::GetBufferSetLength(int nLength)
{
    if (nLength < 0)
        nLength = 0;
    Reserve(nLength);
    SetLength(nLength);
    return m_pszData;
}

void CString::ReleaseBuffer(int nNewLength)
{
    if (IsShared())
        return; // no buffer was handed out
    if (nNewLength < 0)
        nNewLength = static_cast<int>(strnlen(m_pszData, static_cast<size_t>(m_nAllocLength)));
    if (nNewLength > m_nAllocLength)
        nNewLength = m_nAllocLength;
    SetLength(nNewLength);
}

// --- Resources and tokens ------------------------------------------------------------------

BOOL CString::LoadString(UINT nID)
{
    // LoadStringA cuts a string to the buffer without saying so; a result that fills the
    // buffer is read again with a larger one.
    const HINSTANCE module = AfxGetResourceHandle();
    for (int size = 256; size <= (1 << 20); size *= 2)
    {
        CString text;
        char* buffer = text.GetBuffer(size - 1);
        const int length = ::LoadStringA(module, nID, buffer, size);
        if (length <= 0)
            return FALSE;
        if (length < size - 1)
        {
            text.ReleaseBuffer(length);
            *this = std::move(text);
            return TRUE;
        }
    }
    return FALSE;
}

CString CString::Tokenize(PCXSTR pszTokens, int& iStart) const
{
    if (iStart < 0 || iStart >= m_nDataLength)
    {
        iStart = -1;
        return CString();
    }
    if (pszTokens == nullptr || *pszTokens == '\0')
    {
        // No delimiters: the rest of the string is one token.
        CString rest = Mid(iStart);
        iStart = m_nDataLength;
        return rest;
    }
    const std::string_view text(m_pszData, static_cast<size_t>(m_nDataLength));
    const size_t from = text.find_first_not_of(pszTokens, static_cast<size_t>(iStart));
    if (from == std::string_view::npos)
    {
        iStart = -1;
        return CString();
    }
    size_t to = text.find_first_of(pszTokens, from);
    if (to == std::string_view::npos)
        to = text.size();
    iStart = static_cast<int>(to) + 1;
    return CString(m_pszData + from, static_cast<int>(to - from));
}
