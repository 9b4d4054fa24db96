// Per-thread pointers in the system's thread-local storage, released at each thread's end.
#include "threadslot.h"

namespace
{
// Every slot of the module, registered while the DLL initialises (one thread, under the
// loader's lock), read when a thread ends.
const int kMaxSlots = 16;
CThreadSlot* s_slots[kMaxSlots] = {};
int s_nSlots = 0;
}

CThreadSlot::CThreadSlot(ReleaseFn pfnRelease) : m_dwIndex(::TlsAlloc()), m_pfnRelease(pfnRelease)
{
    if (m_dwIndex != TLS_OUT_OF_INDEXES && s_nSlots < kMaxSlots)
        s_slots[s_nSlots++] = this;
}

void* CThreadSlot::GetValue() const
{
    if (m_dwIndex == TLS_OUT_OF_INDEXES)
        return nullptr;
    // TlsGetValue clears the last error on success; callers read it after their own calls.
    DWORD dwLastError = ::GetLastError();
    void* pValue = ::TlsGetValue(m_dwIndex);
    ::SetLastError(dwLastError);
    return pValue;
}

void CThreadSlot::SetValue(void* pValue)
{
    if (m_dwIndex != TLS_OUT_OF_INDEXES)
        ::TlsSetValue(m_dwIndex, pValue);
}

void CThreadSlot::Release()
{
    void* pValue = GetValue();
    if (pValue == nullptr)
        return;
    // Forgotten first: a release that reaches this slot again finds nothing to free.
    SetValue(nullptr);
    m_pfnRelease(pValue);
}

void CThreadSlot::ReleaseThread()
{
    for (int i = 0; i < s_nSlots; ++i)
        s_slots[i]->Release();
}
