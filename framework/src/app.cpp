// CWinThread and CWinApp: message loops, the application object and its profile.
#include "kelfw/fwapp.h"

#include <cstdlib>
#include <cstring>
#include <process.h>

namespace
{
char* DupString(LPCTSTR psz)
{
    return psz == nullptr ? nullptr : _strdup(psz);
}

void FreeString(LPCTSTR& psz)
{
    free(const_cast<char*>(psz));
    psz = nullptr;
}

// The code of the WM_QUIT that ended this thread's message loop: what ExitInstance reports,
// so that PostQuitMessage(n) becomes the exit code of the thread or the program.
thread_local int t_nQuitCode = 0;

// Base name of a module file without folder and extension.
CString ModuleBaseName(HINSTANCE hModule)
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(hModule, path, MAX_PATH);
    CString name(path);
    int slash = name.ReverseFind('\\');
    if (slash >= 0)
        name = name.Mid(slash + 1);
    int dot = name.ReverseFind('.');
    if (dot > 0)
        name = name.Left(dot);
    return name;
}
}

// ---------------------------------------------------------------- CWinThread

CWinThread::CWinThread()
    : m_pMainWnd(nullptr), m_bAutoDelete(TRUE), m_hThread(nullptr), m_nThreadID(GetCurrentThreadId()),
      m_pfnThreadProc(nullptr), m_pThreadParams(nullptr)
{
}

CWinThread::~CWinThread()
{
    if (m_hThread != nullptr)
        CloseHandle(m_hThread);
}

BOOL CWinThread::InitInstance()
{
    return FALSE;
}

int CWinThread::ExitInstance()
{
    AfxDeleteTempMaps();
    return t_nQuitCode;
}

CWnd* CWinThread::GetMainWnd()
{
    return m_pMainWnd;
}

BOOL CWinThread::PreTranslateMessage(MSG* pMsg)
{
    return AfxPreTranslateMessage(pMsg);
}

BOOL CWinThread::OnIdle(LONG lCount)
{
    if (lCount <= 0)
        AfxDeleteTempMaps();
    return FALSE;
}

BOOL CWinThread::PumpMessage()
{
    MSG msg;
    if (!::GetMessageA(&msg, nullptr, 0, 0))
    {
        t_nQuitCode = static_cast<int>(msg.wParam);
        return FALSE;
    }
    if (!PreTranslateMessage(&msg))
    {
        ::TranslateMessage(&msg);
        ::DispatchMessageA(&msg);
    }
    return TRUE;
}

int CWinThread::Run()
{
    LONG lIdleCount = 0;
    MSG msg;
    for (;;)
    {
        while (!::PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE))
        {
            if (!OnIdle(lIdleCount++))
            {
                ::WaitMessage();
                lIdleCount = 0;
            }
        }
        if (!PumpMessage())
            return ExitInstance();
        lIdleCount = 0;
    }
}

namespace
{
unsigned __stdcall ThreadEntry(void* pParam)
{
    CWinThread* pThread = static_cast<CWinThread*>(pParam);
    UINT nResult = 0;
    try
    {
        if (pThread->m_pfnThreadProc != nullptr)
            nResult = pThread->m_pfnThreadProc(pThread->m_pThreadParams);
        else if (pThread->InitInstance())
            nResult = static_cast<UINT>(pThread->Run());
        else
            nResult = static_cast<UINT>(pThread->ExitInstance());
    }
    catch (...)
    {
        nResult = static_cast<UINT>(-1);
    }
    AfxDeleteTempMaps();
    if (pThread->m_bAutoDelete)
        delete pThread;
    return nResult;
}
}

BOOL CWinThread::CreateThread(DWORD dwCreateFlags, UINT nStackSize)
{
    unsigned threadId = 0;
    // Start suspended so that the handle and id are stored before the thread can end.
    HANDLE hThread = reinterpret_cast<HANDLE>(
        _beginthreadex(nullptr, nStackSize, &ThreadEntry, this, CREATE_SUSPENDED, &threadId));
    if (hThread == nullptr)
        return FALSE;
    m_hThread = hThread;
    m_nThreadID = threadId;
    if ((dwCreateFlags & CREATE_SUSPENDED) == 0)
        ResumeThread(hThread);
    return TRUE;
}

CWinThread* AfxBeginThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam, int nPriority, UINT nStackSize,
                           DWORD dwCreateFlags, LPSECURITY_ATTRIBUTES)
{
    CWinThread* pThread = new CWinThread;
    pThread->m_pfnThreadProc = pfnThreadProc;
    pThread->m_pThreadParams = pParam;
    pThread->m_nThreadID = 0;
    if (!pThread->CreateThread(dwCreateFlags | CREATE_SUSPENDED, nStackSize))
    {
        delete pThread;
        return nullptr;
    }
    SetThreadPriority(pThread->m_hThread, nPriority);
    if ((dwCreateFlags & CREATE_SUSPENDED) == 0)
        ResumeThread(pThread->m_hThread);
    return pThread;
}

// ---------------------------------------------------------------- CWinApp

const AFX_MSGMAP* CWinApp::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr}};
    static const AFX_MSGMAP messageMap = {&CWinThread::GetThisMessageMap, &entries[0]};
    return &messageMap;
}

const AFX_MSGMAP* CWinApp::GetMessageMap() const
{
    return GetThisMessageMap();
}

CWinApp::CWinApp(LPCTSTR lpszAppName)
    : m_pszAppName(DupString(lpszAppName)), m_pszExeName(nullptr), m_pszRegistryKey(nullptr),
      m_pszProfileName(nullptr), m_pszHelpFilePath(nullptr), m_hInstance(nullptr), m_lpCmdLine(nullptr),
      m_nCmdShow(SW_SHOWNORMAL), m_pModuleState(AfxGetModuleStateOfAddress(this))
{
    // The application object of a module is a global of that module: its address names it.
    if (m_pModuleState->m_pCurrentWinApp == nullptr)
        m_pModuleState->m_pCurrentWinApp = this;
    SetCurrentHandles(m_pModuleState->m_hCurrentInstanceHandle, nullptr, SW_SHOWNORMAL);
}

CWinApp::~CWinApp()
{
    if (m_pModuleState->m_pCurrentWinApp == this)
        m_pModuleState->m_pCurrentWinApp = nullptr;
    FreeString(m_pszAppName);
    FreeString(m_pszExeName);
    FreeString(m_pszRegistryKey);
    FreeString(m_pszProfileName);
    FreeString(m_pszHelpFilePath);
}

void CWinApp::SetCurrentHandles(HINSTANCE hInstance, LPTSTR lpCmdLine, int nCmdShow)
{
    m_hInstance = hInstance;
    m_lpCmdLine = lpCmdLine;
    m_nCmdShow = nCmdShow;
    if (m_pszExeName == nullptr)
        m_pszExeName = DupString(ModuleBaseName(hInstance));
    if (m_pszAppName == nullptr)
        m_pszAppName = DupString(m_pszExeName);
    if (m_pszProfileName == nullptr)
    {
        CString ini(m_pszExeName);
        ini += ".INI";
        m_pszProfileName = DupString(ini);
    }
}

BOOL CWinApp::InitInstance()
{
    return TRUE;
}

void CWinApp::SetRegistryKey(LPCTSTR lpszRegistryKey)
{
    // From now on the profile lives in the registry, below the key and the application name.
    FreeString(m_pszRegistryKey);
    m_pszRegistryKey = DupString(lpszRegistryKey);
    FreeString(m_pszProfileName);
    m_pszProfileName = DupString(m_pszAppName);
}

void CWinApp::SetRegistryKey(UINT nIDRegistryKey)
{
    CString key;
    key.LoadString(nIDRegistryKey);
    SetRegistryKey(key);
}

HKEY CWinApp::GetAppRegistryKey()
{
    if (m_pszRegistryKey == nullptr || m_pszProfileName == nullptr)
        return nullptr;
    HKEY hSoftKey = nullptr, hCompanyKey = nullptr, hAppKey = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, KEY_WRITE | KEY_READ, &hSoftKey) == ERROR_SUCCESS)
    {
        DWORD dw = 0;
        if (RegCreateKeyExA(hSoftKey, m_pszRegistryKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE | KEY_READ,
                            nullptr, &hCompanyKey, &dw) == ERROR_SUCCESS)
        {
            RegCreateKeyExA(hCompanyKey, m_pszProfileName, 0, nullptr, REG_OPTION_NON_VOLATILE,
                            KEY_WRITE | KEY_READ, nullptr, &hAppKey, &dw);
            RegCloseKey(hCompanyKey);
        }
        RegCloseKey(hSoftKey);
    }
    return hAppKey;
}

HKEY CWinApp::GetSectionKey(LPCTSTR lpszSection)
{
    HKEY hAppKey = GetAppRegistryKey();
    if (hAppKey == nullptr)
        return nullptr;
    HKEY hSectionKey = nullptr;
    DWORD dw = 0;
    RegCreateKeyExA(hAppKey, lpszSection, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE | KEY_READ, nullptr,
                    &hSectionKey, &dw);
    RegCloseKey(hAppKey);
    return hSectionKey;
}

UINT CWinApp::GetProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nDefault)
{
    if (m_pszRegistryKey == nullptr)
        return GetPrivateProfileIntA(lpszSection, lpszEntry, nDefault, m_pszProfileName);
    HKEY hSecKey = GetSectionKey(lpszSection);
    if (hSecKey == nullptr)
        return static_cast<UINT>(nDefault);
    DWORD dwValue = 0, dwType = 0, dwCount = sizeof(DWORD);
    LONG lResult = RegQueryValueExA(hSecKey, lpszEntry, nullptr, &dwType, reinterpret_cast<LPBYTE>(&dwValue),
                                    &dwCount);
    RegCloseKey(hSecKey);
    if (lResult == ERROR_SUCCESS && dwType == REG_DWORD && dwCount == sizeof(DWORD))
        return static_cast<UINT>(dwValue);
    return static_cast<UINT>(nDefault);
}

BOOL CWinApp::WriteProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nValue)
{
    if (m_pszRegistryKey == nullptr)
    {
        char text[16];
        wsprintfA(text, "%d", nValue);
        return WritePrivateProfileStringA(lpszSection, lpszEntry, text, m_pszProfileName);
    }
    HKEY hSecKey = GetSectionKey(lpszSection);
    if (hSecKey == nullptr)
        return FALSE;
    DWORD dwValue = static_cast<DWORD>(nValue);
    LONG lResult =
        RegSetValueExA(hSecKey, lpszEntry, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&dwValue), sizeof(dwValue));
    RegCloseKey(hSecKey);
    return lResult == ERROR_SUCCESS;
}

CString CWinApp::GetProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszDefault)
{
    if (lpszDefault == nullptr)
        lpszDefault = "";
    if (m_pszRegistryKey == nullptr)
    {
        char text[4096] = {};
        GetPrivateProfileStringA(lpszSection, lpszEntry, lpszDefault, text, sizeof(text), m_pszProfileName);
        return CString(text);
    }
    HKEY hSecKey = GetSectionKey(lpszSection);
    if (hSecKey == nullptr)
        return CString(lpszDefault);
    CString value;
    DWORD dwType = 0, dwCount = 0;
    LONG lResult = RegQueryValueExA(hSecKey, lpszEntry, nullptr, &dwType, nullptr, &dwCount);
    if (lResult == ERROR_SUCCESS && dwType == REG_SZ)
    {
        lResult = RegQueryValueExA(hSecKey, lpszEntry, nullptr, &dwType,
                                   reinterpret_cast<LPBYTE>(value.GetBuffer(static_cast<int>(dwCount))), &dwCount);
        value.ReleaseBuffer();
    }
    RegCloseKey(hSecKey);
    if (lResult == ERROR_SUCCESS && dwType == REG_SZ)
        return value;
    return CString(lpszDefault);
}

BOOL CWinApp::WriteProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszValue)
{
    if (m_pszRegistryKey == nullptr)
        return WritePrivateProfileStringA(lpszSection, lpszEntry, lpszValue, m_pszProfileName);
    LONG lResult = ERROR_SUCCESS;
    if (lpszEntry == nullptr)
    {
        // A null entry removes the whole section.
        HKEY hAppKey = GetAppRegistryKey();
        if (hAppKey == nullptr)
            return FALSE;
        lResult = RegDeleteKeyA(hAppKey, lpszSection);
        RegCloseKey(hAppKey);
    }
    else if (lpszValue == nullptr)
    {
        HKEY hSecKey = GetSectionKey(lpszSection);
        if (hSecKey == nullptr)
            return FALSE;
        lResult = RegDeleteValueA(hSecKey, lpszEntry);
        RegCloseKey(hSecKey);
    }
    else
    {
        HKEY hSecKey = GetSectionKey(lpszSection);
        if (hSecKey == nullptr)
            return FALSE;
        lResult = RegSetValueExA(hSecKey, lpszEntry, 0, REG_SZ, reinterpret_cast<const BYTE*>(lpszValue),
                                 static_cast<DWORD>(strlen(lpszValue) + 1));
        RegCloseKey(hSecKey);
    }
    return lResult == ERROR_SUCCESS;
}

BOOL CWinApp::GetProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE* ppData, UINT* pBytes)
{
    *ppData = nullptr;
    *pBytes = 0;
    if (m_pszRegistryKey == nullptr)
    {
        // An .INI profile keeps binary data as hex text.
        CString text = GetProfileString(lpszSection, lpszEntry);
        int nLen = text.GetLength();
        if (nLen == 0 || nLen % 2 != 0)
            return FALSE;
        *pBytes = static_cast<UINT>(nLen / 2);
        *ppData = new BYTE[*pBytes];
        for (UINT i = 0; i < *pBytes; ++i)
        {
            auto nibble = [](char c) { return c >= 'A' ? (c - 'A' + 10) & 0xF : (c - '0') & 0xF; };
            (*ppData)[i] = static_cast<BYTE>((nibble(text[2 * i]) << 4) | nibble(text[2 * i + 1]));
        }
        return TRUE;
    }
    HKEY hSecKey = GetSectionKey(lpszSection);
    if (hSecKey == nullptr)
        return FALSE;
    DWORD dwType = 0, dwCount = 0;
    LONG lResult = RegQueryValueExA(hSecKey, lpszEntry, nullptr, &dwType, nullptr, &dwCount);
    if (lResult == ERROR_SUCCESS && dwType == REG_BINARY)
    {
        *ppData = new BYTE[dwCount > 0 ? dwCount : 1];
        lResult = RegQueryValueExA(hSecKey, lpszEntry, nullptr, &dwType, *ppData, &dwCount);
    }
    RegCloseKey(hSecKey);
    if (lResult == ERROR_SUCCESS && dwType == REG_BINARY)
    {
        *pBytes = dwCount;
        return TRUE;
    }
    delete[] *ppData;
    *ppData = nullptr;
    return FALSE;
}

BOOL CWinApp::WriteProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE pData, UINT nBytes)
{
    if (m_pszRegistryKey == nullptr)
    {
        CString text;
        for (UINT i = 0; i < nBytes; ++i)
            text.AppendFormat("%02X", pData[i]);
        return WriteProfileString(lpszSection, lpszEntry, text);
    }
    HKEY hSecKey = GetSectionKey(lpszSection);
    if (hSecKey == nullptr)
        return FALSE;
    LONG lResult = RegSetValueExA(hSecKey, lpszEntry, 0, REG_BINARY, pData, nBytes);
    RegCloseKey(hSecKey);
    return lResult == ERROR_SUCCESS;
}

int CWinApp::DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT)
{
    // Owned by the active window of this thread, or the main window, so that it is modal to it.
    HWND hWndOwner = ::GetActiveWindow();
    if (hWndOwner == nullptr && m_pMainWnd != nullptr)
        hWndOwner = m_pMainWnd->GetSafeHwnd();
    if (hWndOwner != nullptr)
        hWndOwner = ::GetLastActivePopup(::GetAncestor(hWndOwner, GA_ROOT));
    if ((nType & MB_ICONMASK) == 0)
    {
        UINT buttons = nType & MB_TYPEMASK;
        if (buttons == MB_OK || buttons == MB_OKCANCEL)
            nType |= MB_ICONEXCLAMATION;
        else if (buttons == MB_YESNO || buttons == MB_YESNOCANCEL)
            nType |= MB_ICONQUESTION;
    }
    return ::MessageBoxA(hWndOwner, lpszPrompt, m_pszAppName, nType);
}

// ---------------------------------------------------------------- free functions

int AfxMessageBox(LPCTSTR lpszText, UINT nType, UINT nIDHelp)
{
    CWinApp* pApp = AfxGetApp();
    if (pApp != nullptr)
        return pApp->DoMessageBox(lpszText, nType, nIDHelp);
    return ::MessageBoxA(::GetActiveWindow(), lpszText, nullptr, nType);
}

int AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp)
{
    CString prompt;
    prompt.LoadString(nIDPrompt);
    if (nIDHelp == static_cast<UINT>(-1))
        nIDHelp = nIDPrompt;
    return AfxMessageBox(prompt, nType, nIDHelp);
}

int AfxWinMain(HINSTANCE hInstance, HINSTANCE, LPTSTR lpCmdLine, int nCmdShow)
{
    CWinApp* pApp = AfxGetApp();
    if (pApp == nullptr)
        return -1;
    pApp->SetCurrentHandles(hInstance, lpCmdLine, nCmdShow);
    int nReturnCode = -1;
    if (!pApp->InitInstance())
        nReturnCode = pApp->ExitInstance();
    else
        nReturnCode = pApp->Run();
    return nReturnCode;
}
