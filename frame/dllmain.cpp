// Entry point of the library DLL.
//
// The module's state (instance and resource handle, application object) is found through the
// module's own image base, and theApp registers itself there as it is constructed, before this
// entry runs; nothing is left to do at attach or detach.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID)
{
    return TRUE;
}
