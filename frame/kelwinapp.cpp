// CKelWinApp: the library's application object and the registry location it takes from the host.
#include "hostentries.h"

#include <cstdlib>
#include <cstring>

namespace
{
// The host writes at most 260 bytes, terminator included; the buffer holds 260 characters
// and its own terminator.
const int kRegistryBaseCapacity = 260;
}

// The map has no entries of its own, so the class alias the map macros declare for the
// entries goes unused.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-local-typedefs"
BEGIN_MESSAGE_MAP(CKelWinApp, CWinApp)
END_MESSAGE_MAP()
#pragma GCC diagnostic pop

CKelWinApp::CKelWinApp() : CWinApp(nullptr)
{
}

int CKelWinApp::InitBitmaps(int)
{
    return 1;
}

int CKelWinApp::InitRegistry()
{
    void* service = nullptr;
    pfnQueryService(KELWINCTRL_SERVICE_REGISTRY, &service);

    CString base;
    static_cast<IKelRegistryService*>(service)->GetRegistryBase(base.GetBuffer(kRegistryBaseCapacity));
    base.ReleaseBuffer();

    // "root\company\product\version": the company becomes the key below HKCU\Software and the
    // rest the profile below it. Only a base that begins with a backslash is left alone; one
    // with fewer backslashes still goes through, with the positions at -1.
    const int first = base.Find('\\');
    const int second = base.Find('\\', first + 1);
    if (first != 0 && second != 0)
    {
        SetRegistryKey(base.Mid(first + 1, second - first - 1));
        free(const_cast<char*>(m_pszProfileName));
        m_pszProfileName = _strdup(base.Mid(second + 1));
    }

    pfnReleaseService(KELWINCTRL_SERVICE_REGISTRY, service);
    return 1;
}

// The library's one application object.
CKelWinApp theApp;

CKelWinApp* GetKelWinApp()
{
    return &theApp;
}
