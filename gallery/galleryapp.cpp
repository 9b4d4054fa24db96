// CGalleryApp: start-up of the library as its host, then the sheet of pages or the shots.
#include "galleryapp.h"

#include "commandline.h"
#include "console.h"
#include "gallerysheet.h"
#include "hostentries.h"
#include "shots.h"

#include <cstring>

namespace
{
// How long a page gets to settle and paint before its shot.
const DWORD kSettleMilliseconds = 400;
}

CGalleryApp theApp;

CGalleryApp::CGalleryApp() : CWinApp("KelWinCtrl Gallery"), m_host(), m_nExitCode(0)
{
}

BOOL CGalleryApp::InitInstance()
{
    CWinApp::InitInstance();

    GalleryOptions options;
    std::string error;
    if (!ParseGalleryCommandLine(GetCommandLineW(), options, error))
    {
        WriteErrorLine(error);
        WritePlainErrorLine(kGalleryUsage);
        m_nExitCode = 2;
        return FALSE;
    }
    if (options.help)
    {
        WriteOutputLine(kGalleryUsage);
        return FALSE;
    }

    INITCOMMONCONTROLSEX icc = {sizeof(icc), ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&icc);

    if (!StartLibrary())
    {
        m_nExitCode = 1;
        return FALSE;
    }
    if (options.shots)
        m_nExitCode = RunShots(options.shotsFolder);
    else
        RunInteractive();
    // Everything ran above; there is no message loop left to run.
    return FALSE;
}

int CGalleryApp::ExitInstance()
{
    CWinApp::ExitInstance();
    return m_nExitCode;
}

bool CGalleryApp::StartLibrary()
{
    std::memset(&m_host.record, 0, sizeof(m_host.record));
    m_host.record.cbSize = sizeof(KelWinCtrlInitRecord);
    m_host.record.dwVersion = KELWINCTRL_RECORD_VERSION;
    FillGalleryHostEntries(m_host.record);

    m_host.inicResult = KelWinCtrlInic(&m_host.record);
    if (m_host.inicResult != 1)
    {
        // Only a refused record ends here: without its entries the library cannot work.
        WriteErrorLine("the library refused the host record");
        return false;
    }
    CKelWinApp* pLibraryApp = GetKelWinApp();
    if (pLibraryApp == nullptr)
    {
        WriteErrorLine("the library has no application object");
        return false;
    }
    m_host.initRegistryResult = pLibraryApp->InitRegistry();
    return true;
}

void CGalleryApp::RunInteractive()
{
    CGallerySheet sheet(m_host);
    m_pMainWnd = &sheet;
    sheet.DoModal();
    m_pMainWnd = nullptr;
}

int CGalleryApp::RunShots(const std::wstring& folder)
{
    std::string error;
    CShotWriter writer;
    if (!writer.Open(folder, error))
    {
        WriteErrorLine(error + ": " + NarrowText(folder));
        return 1;
    }

    CGallerySheet sheet(m_host);
    if (!sheet.Create())
    {
        WriteErrorLine("cannot create the gallery's sheet");
        return 1;
    }
    m_pMainWnd = &sheet;
    // Top left of the screen, in front, so that nothing covers what the capture reads.
    sheet.SetWindowPos(nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_SHOWWINDOW);
    sheet.SetForegroundWindow();

    int nResult = 0;
    for (int nPage = 0; nPage < sheet.GetPageCount(); ++nPage)
    {
        if (!sheet.SetActivePage(nPage))
        {
            WriteErrorLine(std::string("cannot show the page \"") + sheet.GetPageName(nPage) + "\"");
            nResult = 1;
            break;
        }
        SettleWindow(sheet.GetSafeHwnd(), kSettleMilliseconds);

        CString fileName;
        fileName.Format("%02d-%s.png", nPage + 1, sheet.GetPageName(nPage));
        std::wstring path;
        if (!writer.WriteWindow(sheet.GetSafeHwnd(), std::string(fileName), path, error))
        {
            WriteErrorLine(error);
            nResult = 1;
            break;
        }
        WriteOutputLine("wrote " + NarrowText(path));
    }

    sheet.DestroyWindow();
    m_pMainWnd = nullptr;
    return nResult;
}

int WINAPI WinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nCmdShow)
{
    return AfxWinMain(hInstance, hPrevInstance, lpCmdLine, nCmdShow);
}
