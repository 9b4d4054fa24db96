// Module states: which module's resources and application object are current on a thread.
//
// Each module (the program and every DLL written on the framework) has one state. An
// exported function of a DLL makes its own module current for the length of the call:
//
//     void ExportedShowDialog() {
//         AFX_MANAGE_STATE(AfxGetStaticModuleState());
//         CMyDialog dlg; dlg.DoModal();   // template found in this DLL
//     }                                  // the caller's module is current again
#pragma once
#include "fwdefs.h"

class CWinApp;

struct KELFW_API AFX_MODULE_STATE
{
    HINSTANCE m_hCurrentInstanceHandle;   // the module itself
    HINSTANCE m_hCurrentResourceHandle;   // where its resources are looked up
    CWinApp* m_pCurrentWinApp;            // its application object, if it has one
};

// The state that is current on the calling thread (the program's when none was set).
KELFW_API AFX_MODULE_STATE* AfxGetModuleState();
// Makes a state current on the calling thread; returns the one it replaced.
KELFW_API AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* pState);
// The state of a module, created at first use.
KELFW_API AFX_MODULE_STATE* AfxGetModuleStateOf(HINSTANCE hModule);
// The state of the module that contains the given address (the program's if none does).
KELFW_API AFX_MODULE_STATE* AfxGetModuleStateOfAddress(const void* pAddress);

// The state of the module this call is compiled into: every module that includes this
// header gets its own, through the linker's image base of that module.
extern "C" IMAGE_DOS_HEADER __ImageBase;
inline AFX_MODULE_STATE* AfxGetStaticModuleState()
{
    return AfxGetModuleStateOf(reinterpret_cast<HINSTANCE>(&__ImageBase));
}

KELFW_API HINSTANCE AfxGetInstanceHandle();
KELFW_API HINSTANCE AfxGetResourceHandle();
KELFW_API void AfxSetResourceHandle(HINSTANCE hInstResource);
KELFW_API CWinApp* AfxGetApp();

// Makes a module state current and restores the previous one on every way out of the scope.
class KELFW_API AFX_MAINTAIN_STATE2
{
public:
    explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* pNewState);
    ~AFX_MAINTAIN_STATE2();
    AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
    AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

private:
    AFX_MODULE_STATE* m_pPrevModuleState;
};

#define AFX_MANAGE_STATE(p) AFX_MAINTAIN_STATE2 _ctlState(p)
