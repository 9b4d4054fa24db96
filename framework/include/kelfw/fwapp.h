// Threads with message loops, the application object with its registry profile, and
// the framework's message box.
//
//     class CMyApp : public CWinApp {
//         BOOL InitInstance() override { SetRegistryKey("MyCompany"); ... return TRUE; }
//     };
//     CMyApp theApp;                       // one per module, found by AfxGetApp()
//     theApp.WriteProfileInt("Window", "Left", 10);
//     // -> HKCU\Software\MyCompany\<profile name>\Window, value "Left"
#pragma once
#include "fwdefs.h"
#include "fwmodule.h"
#include "fwstring.h"
#include "fwwnd.h"

typedef UINT(__cdecl* AFX_THREADPROC)(LPVOID);

class KELFW_API CWinThread : public CCmdTarget
{
public:
    CWinThread();
    ~CWinThread() override;

    CWnd* m_pMainWnd;        // main window of the thread, if any
    BOOL m_bAutoDelete;      // delete the object when the thread ends
    HANDLE m_hThread;
    DWORD m_nThreadID;

    // Overridables: override as required
    virtual BOOL InitInstance();
    virtual int ExitInstance();
    virtual int Run();
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    virtual BOOL OnIdle(LONG lCount);

    // Not meant to be overridden
    virtual BOOL PumpMessage();
    virtual CWnd* GetMainWnd();
    BOOL CreateThread(DWORD dwCreateFlags = 0, UINT nStackSize = 0);

    // For threads started by AfxBeginThread with a function.
    AFX_THREADPROC m_pfnThreadProc;
    LPVOID m_pThreadParams;
};

class KELFW_API CWinApp : public CWinThread
{
public:
    explicit CWinApp(LPCTSTR lpszAppName = nullptr);
    ~CWinApp() override;

    LPCTSTR m_pszAppName;       // application name (owned, heap copy)
    LPCTSTR m_pszExeName;       // module base name without extension (owned)
    LPCTSTR m_pszRegistryKey;   // company key below HKCU\Software, or null for an .INI profile (owned)
    LPCTSTR m_pszProfileName;   // profile below the key, or the .INI file name (owned, free()d)
    LPCTSTR m_pszHelpFilePath;  // owned
    HINSTANCE m_hInstance;
    LPTSTR m_lpCmdLine;
    int m_nCmdShow;

    // Registry
    void SetRegistryKey(LPCTSTR lpszRegistryKey);
    void SetRegistryKey(UINT nIDRegistryKey);
    HKEY GetAppRegistryKey();                 // caller closes
    HKEY GetSectionKey(LPCTSTR lpszSection);  // caller closes
    UINT GetProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nDefault);
    BOOL WriteProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nValue);
    CString GetProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszDefault = nullptr);
    BOOL WriteProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszValue);
    // *ppData is allocated with new[]; the caller deletes it with delete[].
    BOOL GetProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE* ppData, UINT* pBytes);
    BOOL WriteProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE pData, UINT nBytes);

    // Overridables
    virtual int DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt);
    BOOL InitInstance() override;

    // Called once the module's instance handle and command line are known.
    void SetCurrentHandles(HINSTANCE hInstance, LPTSTR lpCmdLine, int nCmdShow);

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    const AFX_MSGMAP* GetMessageMap() const override;

private:
    AFX_MODULE_STATE* m_pModuleState;
};

// The usual body of a program's WinMain: sets the handles, runs InitInstance and the loop.
KELFW_API int AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine, int nCmdShow);

// Shows a message box owned by the active window, captioned with the application's name.
KELFW_API int AfxMessageBox(LPCTSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
KELFW_API int AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = static_cast<UINT>(-1));

// A worker thread running a function; the object deletes itself when the thread ends.
KELFW_API CWinThread* AfxBeginThread(AFX_THREADPROC pfnThreadProc, LPVOID pParam,
                                     int nPriority = THREAD_PRIORITY_NORMAL, UINT nStackSize = 0,
                                     DWORD dwCreateFlags = 0, LPSECURITY_ATTRIBUTES lpSecurityAttrs = nullptr);
