// The framework DLL's entry point: a thread that ends gives back its per-thread objects.
#include "threadslot.h"

// Any thread may have made temporary wrappers, also one that the framework did not start
// (a host's worker, a test's thread), so the DLL's thread notification is the one place sure
// to see every thread end.
extern "C" BOOL WINAPI DllMain(HINSTANCE /*hInstance*/, DWORD dwReason, LPVOID /*lpReserved*/)
{
    if (dwReason == DLL_THREAD_DETACH || dwReason == DLL_PROCESS_DETACH)
        CThreadSlot::ReleaseThread();
    return TRUE;
}
