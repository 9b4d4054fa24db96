// Threads that end after the user interface has run: the framework's per-thread wrappers
// are given back at each thread's end and the heap stays whole, up to the process's exit.
// CTest runs this program as one whole process, so a crash at exit fails it too.
#include <afxwin.h>
#include <gtest/gtest.h>

#include "dlgtemplate.h"
#include "testsupport.h"

#include <process.h>
#include <thread>
#include <vector>

namespace
{
const WORD kEditId = 100;

kel_test::DlgTemplateBuilder MakeTemplate(const char* title, DWORD style)
{
    kel_test::DlgTemplateBuilder b(title, style | DS_SETFONT | WS_CAPTION | WS_SYSMENU, 10, 10, 180, 70);
    b.AddItem(0x0082, "Length:", 0xFFFF, WS_CHILD | WS_VISIBLE | SS_LEFT, 7, 9, 40, 10);
    b.AddEdit(kEditId, 50, 7, 120, 14);
    b.AddButton("OK", IDOK, BS_DEFPUSHBUTTON, 70, 40, 50, 14);
    return b;
}

// A modal dialog that types into its edit and ends itself from inside its own loop.
class CSelfEndingDialog : public CDialog
{
public:
    CString typed;

    BOOL OnInitDialog() override
    {
        CDialog::OnInitDialog();
        ::SendDlgItemMessageA(m_hWnd, kEditId, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("2.40 m"));
        ::PostMessageA(m_hWnd, WM_COMMAND, IDOK, 0);
        return TRUE;
    }
    void OnOK() override
    {
        GetDlgItemText(kEditId, typed);
        CDialog::OnOK();
    }
};

// What a worker does with the framework: temporary wrappers of every kind.
struct WorkerTouch
{
    HWND hWnd;
    HDC hDC;
    HGDIOBJ hBrush;
    HIMAGELIST hImageList;
    bool bTouch;   // false: the worker only starts and ends
};

void TouchFramework(const WorkerTouch& t)
{
    if (!t.bTouch)
        return;
    CWnd* pWnd = CWnd::FromHandle(t.hWnd);
    CWnd* pParent = pWnd->GetParent();
    CWnd::FromHandle(::GetDesktopWindow());
    CDC::FromHandle(t.hDC);
    CGdiObject::FromHandle(t.hBrush);
    CBrush::FromHandle(static_cast<HBRUSH>(t.hBrush));
    CImageList::FromHandle(t.hImageList);
    (void)pParent;
}

unsigned __stdcall CrtWorker(void* pParam)
{
    TouchFramework(*static_cast<WorkerTouch*>(pParam));
    return 0;
}

DWORD WINAPI Win32Worker(LPVOID pParam)
{
    TouchFramework(*static_cast<WorkerTouch*>(pParam));
    return 0;
}

UINT FrameworkWorker(LPVOID pParam)
{
    TouchFramework(*static_cast<WorkerTouch*>(pParam));
    return 0;
}

// Runs one round of workers of every kind the program can start and waits for their ends.
// Every worker is waited for before anything is asserted, so none outlives the round.
void RunWorkerRound(WorkerTouch touch, int perKind)
{
    std::vector<std::thread> stdThreads;
    std::vector<HANDLE> handles;
    std::vector<CWinThread*> frameworkThreads;
    for (int i = 0; i < perKind; ++i)
    {
        stdThreads.emplace_back([&touch] { TouchFramework(touch); });
        handles.push_back(reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, &CrtWorker, &touch, 0, nullptr)));
        handles.push_back(::CreateThread(nullptr, 0, &Win32Worker, &touch, 0, nullptr));
        CWinThread* pThread = AfxBeginThread(&FrameworkWorker, &touch, THREAD_PRIORITY_NORMAL, 0, CREATE_SUSPENDED);
        if (pThread != nullptr)
        {
            pThread->m_bAutoDelete = FALSE;   // kept, so that its handle can be waited for
            ::ResumeThread(pThread->m_hThread);
        }
        frameworkThreads.push_back(pThread);
    }
    int notEnded = 0;
    for (std::thread& t : stdThreads)
        t.join();
    for (HANDLE h : handles)
    {
        if (h == nullptr || ::WaitForSingleObject(h, 10000) != WAIT_OBJECT_0)
            ++notEnded;
        if (h != nullptr)
            ::CloseHandle(h);
    }
    for (CWinThread* pThread : frameworkThreads)
    {
        if (pThread == nullptr || ::WaitForSingleObject(pThread->m_hThread, 10000) != WAIT_OBJECT_0)
            ++notEnded;
        delete pThread;
    }
    EXPECT_EQ(0, notEnded) << "workers that did not start or did not end";
}

// Bytes in use in every heap of the process, walked block by block.
SIZE_T BusyHeapBytes()
{
    HANDLE heaps[64] = {};
    DWORD count = ::GetProcessHeaps(64, heaps);
    SIZE_T busy = 0;
    for (DWORD i = 0; i < count && i < 64; ++i)
    {
        if (!::HeapLock(heaps[i]))
            continue;
        PROCESS_HEAP_ENTRY entry = {};
        while (::HeapWalk(heaps[i], &entry))
        {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
                busy += entry.cbData;
        }
        ::HeapUnlock(heaps[i]);
    }
    return busy;
}

bool AllHeapsValid()
{
    HANDLE heaps[64] = {};
    DWORD count = ::GetProcessHeaps(64, heaps);
    for (DWORD i = 0; i < count && i < 64; ++i)
    {
        if (!::HeapValidate(heaps[i], 0, nullptr))
            return false;
    }
    return true;
}

class ThreadExit : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_hWnd = ::CreateWindowExA(0, "STATIC", "Walls", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 300, 200, nullptr,
                                   nullptr, nullptr, nullptr);
        ASSERT_NE(m_hWnd, nullptr);
        m_hChild = ::CreateWindowExA(0, "EDIT", "3.65", WS_CHILD | WS_VISIBLE, 10, 10, 100, 22, m_hWnd, nullptr,
                                     nullptr, nullptr);
        m_hDC = ::GetDC(m_hWnd);
        m_hBrush = ::CreateSolidBrush(RGB(200, 40, 40));
        m_hImageList = ImageList_Create(16, 16, ILC_COLOR24, 1, 1);
        m_touch = {m_hChild, m_hDC, m_hBrush, m_hImageList, true};
    }
    void TearDown() override
    {
        ImageList_Destroy(m_hImageList);
        ::DeleteObject(m_hBrush);
        ::ReleaseDC(m_hWnd, m_hDC);
        ::DestroyWindow(m_hWnd);
        kel_test::PumpPending();
    }

    HWND m_hWnd = nullptr;
    HWND m_hChild = nullptr;
    HDC m_hDC = nullptr;
    HBRUSH m_hBrush = nullptr;
    HIMAGELIST m_hImageList = nullptr;
    WorkerTouch m_touch = {};
};

// The user interface runs first: a modal dialog in the framework's loop, then a modeless
// property sheet with a page, as a host's session would before it starts workers.
TEST_F(ThreadExit, ModalDialogAndModelessSheetRunBeforeTheWorkers)
{
    kel_test::DlgTemplateBuilder dlgTemplate = MakeTemplate("Wall thickness", WS_POPUP);
    CSelfEndingDialog dlg;
    ASSERT_TRUE(dlg.InitModalIndirect(dlgTemplate.Get(), CWnd::FromHandle(m_hWnd)));
    EXPECT_EQ(IDOK, dlg.DoModal());
    EXPECT_STREQ("2.40 m", dlg.typed);

    kel_test::DlgTemplateBuilder pageTemplate = MakeTemplate("Layer", WS_CHILD);
    CPropertyPage page;
    page.ConstructIndirect(pageTemplate.Get());
    CPropertySheet sheet("Wall properties", CWnd::FromHandle(m_hWnd));
    sheet.AddPage(&page);
    ASSERT_TRUE(sheet.Create(CWnd::FromHandle(m_hWnd)));
    kel_test::PumpPending();
    EXPECT_NE(page.GetSafeHwnd(), nullptr);
    sheet.DestroyWindow();
    kel_test::PumpPending();
    AfxDeleteTempMaps();
}

// Workers of every kind wrap the windows, contexts and objects of the interface and end;
// the heap is whole after every round.
TEST_F(ThreadExit, WorkersThatWrapWindowsAndObjectsEndWithTheHeapWhole)
{
    for (int round = 0; round < 10; ++round)
    {
        RunWorkerRound(m_touch, 4);
        ASSERT_TRUE(AllHeapsValid()) << "after round " << round;
    }
    // This thread's own wrappers live on and still answer.
    EXPECT_EQ(m_hChild, CWnd::FromHandle(m_hChild)->GetSafeHwnd());
}

// A thread's wrappers go with the thread: workers that wrap leave no more behind than
// workers that only start and end (the runtime keeps a little of every thread).
TEST_F(ThreadExit, EndedWorkersLeaveNoWrappersBehind)
{
    WorkerTouch idle = m_touch;
    idle.bTouch = false;
    RunWorkerRound(m_touch, 8);   // the runtime's own first-use allocations happen here
    RunWorkerRound(idle, 8);

    SIZE_T start = BusyHeapBytes();
    for (int round = 0; round < 25; ++round)
        RunWorkerRound(idle, 8);
    SIZE_T afterIdle = BusyHeapBytes();
    for (int round = 0; round < 25; ++round)
        RunWorkerRound(m_touch, 8);
    SIZE_T afterTouching = BusyHeapBytes();

    // 800 workers, each with six wrappers in four maps: left behind, they would hold far
    // more than 100 KB beyond what idle workers leave.
    SIZE_T idleGrowth = afterIdle - start;
    SIZE_T touchingGrowth = afterTouching - afterIdle;
    EXPECT_LT(touchingGrowth, idleGrowth + 16 * 1024)
        << "idle workers left " << idleGrowth << " bytes, wrapping workers " << touchingGrowth;
}
}
