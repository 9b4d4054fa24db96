// The application object: its registry profile, checked against the registry itself, its
// message box, and worker threads.
#include <afxwin.h>
#include <gtest/gtest.h>

#include "dlgtemplate.h"
#include "test_framework_res.h"
#include "testsupport.h"

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace
{
const char kCompany[] = "KelFwTest";
const char kCompanyPath[] = "Software\\KelFwTest";

// The registry outlives a test program (later programs run in the same Wine prefix), so each
// names its application after its process: what a program that died before its clean-up
// left is never read by another.
std::string MakeAppName()
{
    return "KelFwTestApp" + std::to_string(GetCurrentProcessId());
}
const std::string kAppNameString = MakeAppName();
const char* const kAppName = kAppNameString.c_str();
const std::string kAppPathString = std::string(kCompanyPath) + "\\" + kAppNameString;
const char* const kAppPath = kAppPathString.c_str();
const std::string kSectionPathString = kAppPathString + "\\Plotting";
const char* const kSectionPath = kSectionPathString.c_str();

// Reads one value of HKCU\<path> straight from the registry.
struct RegValue
{
    bool found = false;
    DWORD type = REG_NONE;
    std::vector<BYTE> data;
};

RegValue ReadRegValue(const char* path, const char* name)
{
    RegValue value;
    HKEY hKey = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, path, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
        return value;
    DWORD size = 0;
    if (RegQueryValueExA(hKey, name, nullptr, &value.type, nullptr, &size) == ERROR_SUCCESS)
    {
        value.data.resize(size);
        value.found = RegQueryValueExA(hKey, name, nullptr, &value.type, value.data.data(), &size) == ERROR_SUCCESS;
    }
    RegCloseKey(hKey);
    return value;
}

bool KeyExists(const char* path)
{
    HKEY hKey = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, path, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
        return false;
    RegCloseKey(hKey);
    return true;
}

// Each test gets an application object of its own (not a global, so that it does not
// outlive the test) and leaves no trace in the registry.
struct AppTest : ::testing::Test
{
    std::unique_ptr<CWinApp> app;
    void SetUp() override
    {
        RegDeleteTreeA(HKEY_CURRENT_USER, kAppPath);
        ASSERT_EQ(nullptr, AfxGetApp()) << "another application object is current";
        app.reset(new CWinApp(kAppName));
    }
    void TearDown() override
    {
        app.reset();
        RegDeleteTreeA(HKEY_CURRENT_USER, kAppPath);
        EXPECT_FALSE(KeyExists(kAppPath));
        // The company key goes too once no other application is left below it.
        RegDeleteKeyA(HKEY_CURRENT_USER, kCompanyPath);
    }
};
}

TEST_F(AppTest, ApplicationObjectIsCurrentWhileItLives)
{
    EXPECT_EQ(app.get(), AfxGetApp());
    EXPECT_STREQ(kAppName, app->m_pszAppName);
    EXPECT_EQ(GetModuleHandleA(nullptr), app->m_hInstance);
    EXPECT_STREQ("test_framework", app->m_pszExeName);
    app.reset();
    EXPECT_EQ(nullptr, AfxGetApp());
}

TEST_F(AppTest, SetRegistryKeyMakesApplicationNameTheProfileName)
{
    // Without a key the profile is an .INI file named after the program.
    EXPECT_EQ(nullptr, app->m_pszRegistryKey);
    EXPECT_STREQ("test_framework.INI", app->m_pszProfileName);
    app->SetRegistryKey(kCompany);
    EXPECT_STREQ(kCompany, app->m_pszRegistryKey);
    EXPECT_STREQ(kAppName, app->m_pszProfileName);
    HKEY hAppKey = app->GetAppRegistryKey();
    ASSERT_NE(nullptr, hAppKey);
    RegCloseKey(hAppKey);
    EXPECT_TRUE(KeyExists(kAppPath));
}

TEST_F(AppTest, ProfileIntRoundTripLandsInSectionKey)
{
    app->SetRegistryKey(kCompany);
    EXPECT_TRUE(app->WriteProfileInt("Plotting", "PenWidth", 35));
    EXPECT_TRUE(app->WriteProfileInt("Plotting", "Offset", -12));
    EXPECT_EQ(35u, app->GetProfileInt("Plotting", "PenWidth", 0));
    EXPECT_EQ(-12, static_cast<int>(app->GetProfileInt("Plotting", "Offset", 0)));

    RegValue v = ReadRegValue(kSectionPath, "PenWidth");
    ASSERT_TRUE(v.found);
    EXPECT_EQ(static_cast<DWORD>(REG_DWORD), v.type);
    ASSERT_EQ(sizeof(DWORD), v.data.size());
    DWORD stored = 0;
    std::memcpy(&stored, v.data.data(), sizeof(stored));
    EXPECT_EQ(35u, stored);

    // A value written behind the application's back is what it reads.
    HKEY hKey = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_CURRENT_USER, kSectionPath, 0, KEY_WRITE, &hKey));
    DWORD changed = 99;
    RegSetValueExA(hKey, "PenWidth", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&changed), sizeof(changed));
    RegCloseKey(hKey);
    EXPECT_EQ(99u, app->GetProfileInt("Plotting", "PenWidth", 0));
}

TEST_F(AppTest, ProfileStringRoundTripLandsInSectionKey)
{
    app->SetRegistryKey(kCompany);
    EXPECT_TRUE(app->WriteProfileString("Plotting", "Device", "PDF writer"));
    EXPECT_STREQ("PDF writer", app->GetProfileString("Plotting", "Device"));

    RegValue v = ReadRegValue(kSectionPath, "Device");
    ASSERT_TRUE(v.found);
    EXPECT_EQ(static_cast<DWORD>(REG_SZ), v.type);
    EXPECT_STREQ("PDF writer", reinterpret_cast<const char*>(v.data.data()));

    // An empty string is a value, not a missing one.
    EXPECT_TRUE(app->WriteProfileString("Plotting", "Device", ""));
    EXPECT_STREQ("", app->GetProfileString("Plotting", "Device", "fallback"));
}

TEST_F(AppTest, ProfileBinaryRoundTripLandsInSectionKey)
{
    app->SetRegistryKey(kCompany);
    BYTE data[] = {0x00, 0x01, 0x7F, 0x80, 0xFE, 0xFF, 0x42};
    EXPECT_TRUE(app->WriteProfileBinary("Plotting", "Window", data, sizeof(data)));

    LPBYTE pRead = nullptr;
    UINT nBytes = 0;
    ASSERT_TRUE(app->GetProfileBinary("Plotting", "Window", &pRead, &nBytes));
    std::vector<BYTE> read(pRead, pRead + nBytes);
    delete[] pRead;
    EXPECT_EQ(std::vector<BYTE>(data, data + sizeof(data)), read);

    RegValue v = ReadRegValue(kSectionPath, "Window");
    ASSERT_TRUE(v.found);
    EXPECT_EQ(static_cast<DWORD>(REG_BINARY), v.type);
    EXPECT_EQ(std::vector<BYTE>(data, data + sizeof(data)), v.data);
}

TEST_F(AppTest, MissingProfileValuesGiveDefaults)
{
    app->SetRegistryKey(kCompany);
    EXPECT_EQ(17u, app->GetProfileInt("Nowhere", "Missing", 17));
    EXPECT_STREQ("fallback", app->GetProfileString("Nowhere", "Missing", "fallback"));
    EXPECT_STREQ("", app->GetProfileString("Nowhere", "Missing"));
    LPBYTE pRead = reinterpret_cast<LPBYTE>(1);
    UINT nBytes = 5;
    EXPECT_FALSE(app->GetProfileBinary("Nowhere", "Missing", &pRead, &nBytes));
    EXPECT_EQ(nullptr, pRead);
    EXPECT_EQ(0u, nBytes);
    // A value of another type is missing for the reader of this type.
    app->WriteProfileString("Plotting", "Text", "12");
    EXPECT_EQ(3u, app->GetProfileInt("Plotting", "Text", 3));
}

TEST_F(AppTest, WriteProfileStringWithNullRemovesEntryAndSection)
{
    app->SetRegistryKey(kCompany);
    app->WriteProfileString("Plotting", "Device", "Plotter");
    app->WriteProfileInt("Plotting", "Copies", 2);
    EXPECT_TRUE(app->WriteProfileString("Plotting", "Device", nullptr));
    EXPECT_FALSE(ReadRegValue(kSectionPath, "Device").found);
    EXPECT_TRUE(ReadRegValue(kSectionPath, "Copies").found);
    EXPECT_TRUE(app->WriteProfileString("Plotting", nullptr, nullptr));
    EXPECT_FALSE(KeyExists(kSectionPath));
}

TEST_F(AppTest, ProfileWithoutRegistryKeyUsesIniFileOfProgram)
{
    char windowsDir[MAX_PATH] = {};
    GetWindowsDirectoryA(windowsDir, MAX_PATH);
    std::string iniPath = std::string(windowsDir) + "\\test_framework.INI";
    DeleteFileA(iniPath.c_str());

    EXPECT_TRUE(app->WriteProfileInt("Units", "Precision", 4));
    EXPECT_TRUE(app->WriteProfileString("Units", "Name", "Millimetres"));
    BYTE data[] = {0x0A, 0xB0, 0xFF};
    EXPECT_TRUE(app->WriteProfileBinary("Units", "Raw", data, sizeof(data)));

    EXPECT_EQ(4u, app->GetProfileInt("Units", "Precision", 0));
    EXPECT_STREQ("Millimetres", app->GetProfileString("Units", "Name"));
    LPBYTE pRead = nullptr;
    UINT nBytes = 0;
    ASSERT_TRUE(app->GetProfileBinary("Units", "Raw", &pRead, &nBytes));
    std::vector<BYTE> read(pRead, pRead + nBytes);
    delete[] pRead;
    EXPECT_EQ(std::vector<BYTE>(data, data + sizeof(data)), read);

    // The file itself holds them, the binary as hex text.
    char text[64] = {};
    GetPrivateProfileStringA("Units", "Raw", "", text, sizeof(text), "test_framework.INI");
    EXPECT_STREQ("0AB0FF", text);
    EXPECT_EQ(4u, GetPrivateProfileIntA("Units", "Precision", 0, "test_framework.INI"));
    EXPECT_FALSE(KeyExists(kAppPath));

    WritePrivateProfileStringA(nullptr, nullptr, nullptr, "test_framework.INI");   // flush the cache
    EXPECT_TRUE(DeleteFileA(iniPath.c_str()));
}

TEST_F(AppTest, MessageBoxIsCaptionedWithApplicationNameAndReturnsPressedButton)
{
    kel_test::BoxAnswerer answerer(kAppName, IDNO);
    int result = AfxMessageBox("Save changes to Plan A?", MB_YESNO | MB_DEFBUTTON2);
    const kel_test::BoxSeen& seen = answerer.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(IDNO, result);
    EXPECT_EQ(kAppName, seen.caption);
    EXPECT_EQ("Save changes to Plan A?", seen.text);
    EXPECT_TRUE(seen.hasYes);
    EXPECT_TRUE(seen.hasNo);
    EXPECT_FALSE(seen.hasOk);
    EXPECT_FALSE(seen.hasCancel);
    EXPECT_EQ(IDNO, seen.defaultButton);
    // A question gets the question icon when the caller named none.
    EXPECT_EQ(LoadIconA(nullptr, IDI_QUESTION), seen.icon);
}

TEST_F(AppTest, MessageBoxReturnsYesWhenYesIsPressed)
{
    kel_test::BoxAnswerer answerer(kAppName, IDYES);
    int result = AfxMessageBox("Remove unused layers?", MB_YESNO);
    const kel_test::BoxSeen& seen = answerer.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(IDYES, result);
    EXPECT_EQ(IDYES, seen.defaultButton);
}

TEST_F(AppTest, MessageBoxWithOkOnlyShowsOkAndTheCallersIcon)
{
    kel_test::BoxAnswerer answerer(kAppName, IDOK);
    int result = AfxMessageBox("The symbol is in use.", MB_OK | MB_ICONSTOP);
    const kel_test::BoxSeen& seen = answerer.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(IDOK, result);
    EXPECT_EQ("The symbol is in use.", seen.text);
    EXPECT_TRUE(seen.hasOk);
    EXPECT_FALSE(seen.hasYes);
    EXPECT_FALSE(seen.hasCancel);
    EXPECT_EQ(LoadIconA(nullptr, IDI_HAND), seen.icon);
}

namespace
{
struct WorkerData
{
    int input = 0;
    int output = 0;
    DWORD threadId = 0;
};

UINT __cdecl DoubleOnWorker(LPVOID pParam)
{
    WorkerData* pData = static_cast<WorkerData*>(pParam);
    pData->threadId = GetCurrentThreadId();
    pData->output = pData->input * 2;
    return 5;
}

// A thread object whose deletion the test can see.
class CCountedThread : public CWinThread
{
public:
    explicit CCountedThread(LONG* pDeleted) : m_pDeleted(pDeleted) {}
    ~CCountedThread() override { InterlockedIncrement(m_pDeleted); }
    BOOL InitInstance() override
    {
        ranOn = GetCurrentThreadId();
        return FALSE;   // nothing to run: the thread ends through ExitInstance
    }
    DWORD ranOn = 0;

private:
    LONG* m_pDeleted;
};
}

TEST(ThreadTest, BeginThreadRunsFunctionOnAnotherThreadAndObjectDeletesItself)
{
    WorkerData data;
    data.input = 21;
    CWinThread* pThread = AfxBeginThread(&DoubleOnWorker, &data, THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED);
    ASSERT_NE(nullptr, pThread);
    EXPECT_TRUE(pThread->m_bAutoDelete);
    HANDLE hThread = pThread->m_hThread;
    DWORD threadId = pThread->m_nThreadID;
    ASSERT_NE(nullptr, hThread);
    EXPECT_NE(GetCurrentThreadId(), threadId);
    HANDLE hWatch = nullptr;
    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), hThread, GetCurrentProcess(), &hWatch, 0, FALSE,
                                DUPLICATE_SAME_ACCESS));
    Sleep(30);
    EXPECT_EQ(0, data.output);   // created suspended: nothing ran yet

    ASSERT_NE(static_cast<DWORD>(-1), ResumeThread(hThread));
    ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(hWatch, 10000));
    DWORD exitCode = 0;
    GetExitCodeThread(hWatch, &exitCode);
    CloseHandle(hWatch);
    EXPECT_EQ(5u, exitCode);
    EXPECT_EQ(42, data.output);
    EXPECT_EQ(threadId, data.threadId);
    // The object deleted itself before the thread ended, closing its handle with it.
    DWORD flags = 0;
    EXPECT_FALSE(GetHandleInformation(hThread, &flags));
}

TEST(ThreadTest, AutoDeletingThreadObjectIsDeletedWhenItsThreadEnds)
{
    LONG deleted = 0;
    CCountedThread* pThread = new CCountedThread(&deleted);
    ASSERT_TRUE(pThread->CreateThread(CREATE_SUSPENDED));
    HANDLE hWatch = nullptr;
    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), pThread->m_hThread, GetCurrentProcess(), &hWatch, 0, FALSE,
                                DUPLICATE_SAME_ACCESS));
    DWORD threadId = pThread->m_nThreadID;
    EXPECT_EQ(0, deleted);
    ResumeThread(hWatch);
    ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(hWatch, 10000));
    CloseHandle(hWatch);
    EXPECT_EQ(1, deleted);
    EXPECT_NE(GetCurrentThreadId(), threadId);
}

TEST(ThreadTest, ThreadObjectWithoutAutoDeleteOutlivesItsThread)
{
    LONG deleted = 0;
    CCountedThread* pThread = new CCountedThread(&deleted);
    pThread->m_bAutoDelete = FALSE;
    ASSERT_TRUE(pThread->CreateThread());
    ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(pThread->m_hThread, 10000));
    EXPECT_EQ(0, deleted);
    EXPECT_EQ(pThread->m_nThreadID, pThread->ranOn);
    EXPECT_NE(GetCurrentThreadId(), pThread->ranOn);
    delete pThread;
    EXPECT_EQ(1, deleted);
}

namespace
{
// A thread with a message loop: it counts the thread messages its loop pre-translates and
// quits with the code a message carries.
class CLoopThread : public CWinThread
{
public:
    static const UINT WM_APP_COUNT = WM_APP + 1;
    static const UINT WM_APP_QUIT = WM_APP + 2;
    HANDLE hReady = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    LONG counted = 0;
    LONG exitInstanceCalls = 0;
    ~CLoopThread() override { CloseHandle(hReady); }

    BOOL InitInstance() override
    {
        MSG msg;
        ::PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE);   // the thread's queue exists from here
        SetEvent(hReady);
        return TRUE;
    }
    BOOL PreTranslateMessage(MSG* pMsg) override
    {
        if (pMsg->hwnd == nullptr && pMsg->message == WM_APP_COUNT)
        {
            ++counted;
            return TRUE;
        }
        if (pMsg->hwnd == nullptr && pMsg->message == WM_APP_QUIT)
        {
            ::PostQuitMessage(static_cast<int>(pMsg->wParam));
            return TRUE;
        }
        return CWinThread::PreTranslateMessage(pMsg);
    }
    int ExitInstance() override
    {
        ++exitInstanceCalls;
        return CWinThread::ExitInstance();
    }
};
}

TEST(ThreadTest, MessageLoopThreadPreTranslatesAndEndsWithQuitCode)
{
    CLoopThread* pThread = new CLoopThread;
    pThread->m_bAutoDelete = FALSE;
    ASSERT_TRUE(pThread->CreateThread());
    ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(pThread->hReady, 10000));
    EXPECT_TRUE(PostThreadMessageA(pThread->m_nThreadID, CLoopThread::WM_APP_COUNT, 0, 0));
    EXPECT_TRUE(PostThreadMessageA(pThread->m_nThreadID, CLoopThread::WM_APP_COUNT, 0, 0));
    EXPECT_TRUE(PostThreadMessageA(pThread->m_nThreadID, CLoopThread::WM_APP_QUIT, 7, 0));
    ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(pThread->m_hThread, 10000));
    DWORD exitCode = 0;
    GetExitCodeThread(pThread->m_hThread, &exitCode);
    EXPECT_EQ(2, pThread->counted);
    EXPECT_EQ(1, pThread->exitInstanceCalls);
    // Run ends through ExitInstance, which reports the code the loop quit with.
    EXPECT_EQ(7u, exitCode);
    delete pThread;
}

TEST(ThreadTest, BeginThreadSetsRequestedPriority)
{
    struct Seen
    {
        int priority = 0;
    } seen;
    CWinThread* pThread = AfxBeginThread(
        [](LPVOID p) -> UINT {
            static_cast<Seen*>(p)->priority = GetThreadPriority(GetCurrentThread());
            return 0;
        },
        &seen, THREAD_PRIORITY_BELOW_NORMAL, 0, CREATE_SUSPENDED);
    ASSERT_NE(nullptr, pThread);
    HANDLE hWatch = nullptr;
    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), pThread->m_hThread, GetCurrentProcess(), &hWatch, 0, FALSE,
                                DUPLICATE_SAME_ACCESS));
    ResumeThread(hWatch);
    ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(hWatch, 10000));
    CloseHandle(hWatch);
    EXPECT_EQ(THREAD_PRIORITY_BELOW_NORMAL, seen.priority);
}

namespace
{
// Asks a question from inside its own modal loop, then ends with the answer.
class CAskingDialog : public CDialog
{
public:
    HWND hWndSeen = nullptr;
    BOOL OnInitDialog() override
    {
        hWndSeen = m_hWnd;
        SetTimer(1, 20);
        return TRUE;
    }

protected:
    afx_msg void OnTimer(UINT_PTR)
    {
        KillTimer(1);
        // The box's owner is the active window, which this program has only in the foreground.
        kel_test::TakeForeground(m_hWnd);
        EndDialog(AfxMessageBox("Rebuild the view?", MB_OKCANCEL));
    }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(CAskingDialog, CDialog)
    ON_WM_TIMER()
END_MESSAGE_MAP()
}

TEST_F(AppTest, MessageBoxFromModalDialogIsOwnedByTheDialog)
{
    kel_test::DlgTemplateBuilder tmpl("Rebuild", DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION, 0, 0, 150, 60);
    tmpl.AddButton("OK", IDOK, BS_DEFPUSHBUTTON, 50, 35, 50, 14);
    CAskingDialog dlg;
    dlg.InitModalIndirect(tmpl.Get());
    kel_test::BoxAnswerer answerer(kAppName, IDCANCEL);
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    const kel_test::BoxSeen& seen = answerer.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(dlg.hWndSeen, seen.owner);
    EXPECT_TRUE(seen.hasOk);
    EXPECT_TRUE(seen.hasCancel);
    EXPECT_FALSE(::IsWindow(dlg.hWndSeen));
}

TEST_F(AppTest, RegistryKeyAndPromptCanComeFromStringResources)
{
    app->SetRegistryKey(IDS_KELFW_TEST_COMPANY);
    EXPECT_STREQ(kCompany, app->m_pszRegistryKey);
    EXPECT_TRUE(app->WriteProfileInt("Plotting", "Copies", 3));
    EXPECT_TRUE(ReadRegValue(kSectionPath, "Copies").found);

    kel_test::BoxAnswerer answerer(kAppName, IDNO);
    int result = AfxMessageBox(IDS_KELFW_TEST_PROMPT, MB_YESNO);
    const kel_test::BoxSeen& seen = answerer.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(IDNO, result);
    EXPECT_EQ("Split the selected group?", seen.text);
}
