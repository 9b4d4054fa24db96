// Module states, one per module of the process, and the current one per thread.
#include "kelfw/fwmodule.h"

#include <map>
#include <memory>

namespace
{
struct ModuleRegistry
{
    CRITICAL_SECTION lock;
    std::map<HINSTANCE, std::unique_ptr<AFX_MODULE_STATE>> states;
    ModuleRegistry() { InitializeCriticalSection(&lock); }
};

ModuleRegistry& Registry()
{
    static ModuleRegistry* s_registry = new ModuleRegistry;   // lives as long as the process
    return *s_registry;
}

thread_local AFX_MODULE_STATE* t_pCurrentState = nullptr;
}

AFX_MODULE_STATE* AfxGetModuleStateOf(HINSTANCE hModule)
{
    ModuleRegistry& reg = Registry();
    EnterCriticalSection(&reg.lock);
    std::unique_ptr<AFX_MODULE_STATE>& slot = reg.states[hModule];
    if (!slot)
    {
        slot.reset(new AFX_MODULE_STATE);
        slot->m_hCurrentInstanceHandle = hModule;
        slot->m_hCurrentResourceHandle = hModule;
        slot->m_pCurrentWinApp = nullptr;
    }
    AFX_MODULE_STATE* pState = slot.get();
    LeaveCriticalSection(&reg.lock);
    return pState;
}

AFX_MODULE_STATE* AfxGetModuleStateOfAddress(const void* pAddress)
{
    HMODULE hModule = nullptr;
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            static_cast<LPCSTR>(pAddress), &hModule))
        hModule = GetModuleHandleA(nullptr);
    return AfxGetModuleStateOf(hModule);
}

AFX_MODULE_STATE* AfxGetModuleState()
{
    if (t_pCurrentState)
        return t_pCurrentState;
    return AfxGetModuleStateOf(GetModuleHandleA(nullptr));
}

AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* pState)
{
    AFX_MODULE_STATE* pPrev = t_pCurrentState;
    t_pCurrentState = pState;
    return pPrev;
}

HINSTANCE AfxGetInstanceHandle()
{
    return AfxGetModuleState()->m_hCurrentInstanceHandle;
}

HINSTANCE AfxGetResourceHandle()
{
    return AfxGetModuleState()->m_hCurrentResourceHandle;
}

void AfxSetResourceHandle(HINSTANCE hInstResource)
{
    AfxGetModuleState()->m_hCurrentResourceHandle = hInstResource;
}

CWinApp* AfxGetApp()
{
    return AfxGetModuleState()->m_pCurrentWinApp;
}

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* pNewState)
    : m_pPrevModuleState(AfxSetModuleState(pNewState))
{
}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2()
{
    AfxSetModuleState(m_pPrevModuleState);
}
