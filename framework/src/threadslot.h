// A pointer per thread in the system's thread-local storage, released when its thread ends.
//
//     struct TempMap { ... };
//     CThreadLocalPtr<TempMap> s_tempMap;          // one object per module, at namespace scope
//     TempMap& map = s_tempMap.GetOrCreate();      // this thread's map, made on first use
//     s_tempMap.Reset();                           // deletes this thread's map
//
// The compiler's thread-local variables are emulated by this toolchain and their storage may be
// gone when the DLL hears of a thread's end (a thread of the POSIX layer frees it on its
// own way out), so a per-thread object that must be released at the thread's end lives here
// instead: the system's slots stay readable until the DLL's thread notification, which
// calls CThreadSlot::ReleaseThread.
#pragma once
#include <windows.h>

class CThreadSlot
{
public:
    using ReleaseFn = void (*)(void*);

    // Takes a slot of the system's thread-local storage; pfnRelease frees what a thread left.
    explicit CThreadSlot(ReleaseFn pfnRelease);
    CThreadSlot(const CThreadSlot&) = delete;   // a slot has one owner
    CThreadSlot& operator=(const CThreadSlot&) = delete;

    // The calling thread's pointer; the thread's last error code is left as it was.
    void* GetValue() const;
    void SetValue(void* pValue);
    // Frees the calling thread's pointer now and forgets it.
    void Release();

    // Frees what every slot holds for the calling thread, which is ending.
    static void ReleaseThread();

private:
    DWORD m_dwIndex;
    ReleaseFn m_pfnRelease;
};

template <class T>
class CThreadLocalPtr : public CThreadSlot
{
public:
    CThreadLocalPtr() : CThreadSlot(&Delete) {}

    T* Get() const { return static_cast<T*>(GetValue()); }
    T& GetOrCreate()
    {
        T* p = Get();
        if (p == nullptr)
        {
            p = new T;
            SetValue(p);
        }
        return *p;
    }
    void Reset() { Release(); }

private:
    static void Delete(void* p) { delete static_cast<T*>(p); }
};
