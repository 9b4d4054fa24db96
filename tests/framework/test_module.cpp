// Module states: which module's resources are current, how a scope makes another module
// current and gives the caller's back on every way out, and that lookups follow it.
#include <afxwin.h>
#include <gtest/gtest.h>

#include "test_framework_res.h"
#include "testsupport.h"

#include <stdexcept>
#include <thread>

namespace
{
// Another module of the process: the framework's DLL, which has no resources of its own.
HINSTANCE OtherModule()
{
    return GetModuleHandleA("kelframework.dll");
}

HINSTANCE ProgramModule()
{
    return GetModuleHandleA(nullptr);
}

struct ModuleStateTest : ::testing::Test
{
    AFX_MODULE_STATE* pStateBefore = nullptr;
    HINSTANCE hResourceBefore = nullptr;
    void SetUp() override
    {
        ASSERT_NE(nullptr, OtherModule());
        ASSERT_NE(OtherModule(), ProgramModule());
        pStateBefore = AfxGetModuleState();
        hResourceBefore = AfxGetResourceHandle();
    }
    void TearDown() override
    {
        // Whatever a test did, the thread is back where it started.
        EXPECT_EQ(pStateBefore, AfxGetModuleState());
        EXPECT_EQ(hResourceBefore, AfxGetResourceHandle());
    }
};

// Helpers that leave a managed scope in the different ways.
HINSTANCE ResourceHandleInOtherModule()
{
    AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
    return AfxGetResourceHandle();
}

int EarlyReturnInOtherModule(int stopAt, HINSTANCE* pSeen)
{
    AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
    for (int i = 0; i < 10; ++i)
    {
        *pSeen = AfxGetResourceHandle();
        if (i == stopAt)
            return i;
    }
    return -1;
}

void ThrowInOtherModule(HINSTANCE* pSeen)
{
    AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
    *pSeen = AfxGetResourceHandle();
    throw std::runtime_error("failed inside the other module");
}
}

TEST_F(ModuleStateTest, StaticModuleStateOfProgramIsProgramModule)
{
    AFX_MODULE_STATE* pState = AfxGetStaticModuleState();
    ASSERT_NE(nullptr, pState);
    EXPECT_EQ(ProgramModule(), pState->m_hCurrentInstanceHandle);
    EXPECT_EQ(ProgramModule(), pState->m_hCurrentResourceHandle);
    // With nothing else made current, the program's state is the current one.
    EXPECT_EQ(pState, AfxGetModuleState());
    EXPECT_EQ(ProgramModule(), AfxGetInstanceHandle());
    EXPECT_EQ(ProgramModule(), AfxGetResourceHandle());
    // One state per module: asking again gives the same one.
    EXPECT_EQ(pState, AfxGetModuleStateOf(ProgramModule()));
    EXPECT_NE(pState, AfxGetModuleStateOf(OtherModule()));
}

TEST_F(ModuleStateTest, ManagedScopeMakesOtherModuleCurrentOnlyInside)
{
    EXPECT_EQ(OtherModule(), ResourceHandleInOtherModule());
    EXPECT_EQ(ProgramModule(), AfxGetResourceHandle());
    {
        AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
        EXPECT_EQ(OtherModule(), AfxGetResourceHandle());
        EXPECT_EQ(OtherModule(), AfxGetInstanceHandle());
        EXPECT_EQ(AfxGetModuleStateOf(OtherModule()), AfxGetModuleState());
    }
    EXPECT_EQ(ProgramModule(), AfxGetResourceHandle());
    EXPECT_EQ(pStateBefore, AfxGetModuleState());
}

TEST_F(ModuleStateTest, ManagedScopeRestoresCallerOnEarlyReturn)
{
    HINSTANCE seen = nullptr;
    EXPECT_EQ(3, EarlyReturnInOtherModule(3, &seen));
    EXPECT_EQ(OtherModule(), seen);
    EXPECT_EQ(ProgramModule(), AfxGetResourceHandle());
    EXPECT_EQ(pStateBefore, AfxGetModuleState());
}

TEST_F(ModuleStateTest, ManagedScopeRestoresCallerWhenExceptionLeavesIt)
{
    HINSTANCE seen = nullptr;
    bool caught = false;
    try
    {
        ThrowInOtherModule(&seen);
    }
    catch (const std::runtime_error&)
    {
        caught = true;
        // Already restored when the handler runs.
        EXPECT_EQ(ProgramModule(), AfxGetResourceHandle());
    }
    EXPECT_TRUE(caught);
    EXPECT_EQ(OtherModule(), seen);
    EXPECT_EQ(pStateBefore, AfxGetModuleState());
}

TEST_F(ModuleStateTest, NestedManagedScopesRestoreEachLevel)
{
    {
        AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
        EXPECT_EQ(OtherModule(), AfxGetResourceHandle());
        {
            AFX_MANAGE_STATE(AfxGetStaticModuleState());
            EXPECT_EQ(ProgramModule(), AfxGetResourceHandle());
        }
        EXPECT_EQ(OtherModule(), AfxGetResourceHandle());
    }
    EXPECT_EQ(ProgramModule(), AfxGetResourceHandle());
}

TEST_F(ModuleStateTest, SetResourceHandleChangesOnlyCurrentModule)
{
    HINSTANCE hUser32 = GetModuleHandleA("user32.dll");
    ASSERT_NE(nullptr, hUser32);
    AFX_MODULE_STATE* pOther = AfxGetModuleStateOf(OtherModule());
    AfxSetResourceHandle(hUser32);
    EXPECT_EQ(hUser32, AfxGetResourceHandle());
    EXPECT_EQ(hUser32, AfxGetStaticModuleState()->m_hCurrentResourceHandle);
    EXPECT_EQ(ProgramModule(), AfxGetInstanceHandle());   // the instance stays
    EXPECT_EQ(OtherModule(), pOther->m_hCurrentResourceHandle);
    {
        AFX_MANAGE_STATE(pOther);
        EXPECT_EQ(OtherModule(), AfxGetResourceHandle());
    }
    EXPECT_EQ(hUser32, AfxGetResourceHandle());
    AfxSetResourceHandle(ProgramModule());
}

TEST_F(ModuleStateTest, CurrentModuleIsPerThread)
{
    AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
    HINSTANCE seenOnWorker = nullptr;
    HINSTANCE seenOnWorkerInScope = nullptr;
    std::thread worker([&] {
        seenOnWorker = AfxGetResourceHandle();
        AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
        seenOnWorkerInScope = AfxGetResourceHandle();
    });
    worker.join();
    // The worker starts with the program's module, whatever this thread made current.
    EXPECT_EQ(ProgramModule(), seenOnWorker);
    EXPECT_EQ(OtherModule(), seenOnWorkerInScope);
    EXPECT_EQ(OtherModule(), AfxGetResourceHandle());
}

TEST_F(ModuleStateTest, LoadStringFollowsCurrentResourceModule)
{
    CString text;
    EXPECT_TRUE(text.LoadString(IDS_KELFW_TEST_ONLY_HERE));
    EXPECT_STREQ("Only the test program has this string", text);
    {
        AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
        CString other;
        EXPECT_FALSE(other.LoadString(IDS_KELFW_TEST_ONLY_HERE));
        EXPECT_STREQ("", other);
    }
    // Pointing the program's own state elsewhere has the same effect.
    AfxSetResourceHandle(OtherModule());
    CString moved;
    EXPECT_FALSE(moved.LoadString(IDS_KELFW_TEST_ONLY_HERE));
    AfxSetResourceHandle(ProgramModule());
    EXPECT_TRUE(moved.LoadString(IDS_KELFW_TEST_ONLY_HERE));
}

namespace
{
class CCountingDialog : public CDialog
{
public:
    CCountingDialog() : CDialog() {}
    explicit CCountingDialog(UINT nIDTemplate) : CDialog(nIDTemplate) {}
    int initCount = 0;
    BOOL OnInitDialog() override
    {
        ++initCount;
        EndDialog(IDOK);   // a modal run ends at once; a modeless one just hides
        return TRUE;
    }
};
}

TEST_F(ModuleStateTest, DialogTemplateLookupFollowsCurrentResourceModule)
{
    long windowsBefore = AfxGetLiveCount(afxLiveWindows);
    {
        AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
        CCountingDialog modal(IDD_KELFW_TEST_EDIT);
        EXPECT_EQ(-1, modal.DoModal());   // not in that module
        EXPECT_EQ(0, modal.initCount);
        CCountingDialog modeless;
        EXPECT_FALSE(modeless.Create(IDD_KELFW_TEST_EDIT));
        EXPECT_EQ(nullptr, modeless.m_hWnd);
    }
    CCountingDialog modal(IDD_KELFW_TEST_EDIT);
    EXPECT_EQ(IDOK, modal.DoModal());
    EXPECT_EQ(1, modal.initCount);
    CCountingDialog modeless;
    ASSERT_TRUE(modeless.Create(IDD_KELFW_TEST_EDIT));
    EXPECT_EQ(1, modeless.initCount);
    EXPECT_TRUE(modeless.DestroyWindow());
    kel_test::PumpPending();
    EXPECT_EQ(windowsBefore, AfxGetLiveCount(afxLiveWindows));
}

TEST_F(ModuleStateTest, ApplicationObjectBelongsToItsModule)
{
    ASSERT_EQ(nullptr, AfxGetApp());
    CWinApp app("KelFwModuleApp");
    EXPECT_EQ(&app, AfxGetApp());
    EXPECT_EQ(&app, AfxGetStaticModuleState()->m_pCurrentWinApp);
    {
        AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
        EXPECT_EQ(nullptr, AfxGetApp());   // the other module has none
    }
    EXPECT_EQ(&app, AfxGetApp());
}

TEST_F(ModuleStateTest, PropertyPageKeepsTheResourceModuleItWasMadeIn)
{
    CPropertyPage page(IDD_KELFW_TEST_PAGE_ONE, IDS_KELFW_TEST_PAGE_ONE);
    EXPECT_EQ(ProgramModule(), page.m_psp.hInstance);
    CPropertySheet sheet("Layer properties");
    sheet.AddPage(&page);
    {
        // The sheet is made while another module is current; the page still finds its
        // template and its caption where it was constructed.
        AFX_MANAGE_STATE(AfxGetModuleStateOf(OtherModule()));
        ASSERT_TRUE(sheet.Create());
    }
    ASSERT_NE(nullptr, page.m_hWnd);
    EXPECT_NE(nullptr, page.GetDlgItem(IDC_KELFW_TEST_PAGE_EDIT));
    sheet.DestroyWindow();
    kel_test::PumpPending();
}
