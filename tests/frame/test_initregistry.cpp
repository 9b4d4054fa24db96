// Tests of the library's application object: the registry location it derives from the
// host's service 20, and the calls kept for older hosts.
#include "hostfakes.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

namespace
{
// What the fake host saw, in order.
std::vector<std::string> g_hostLog;
int g_queries = 0;
int g_releases = 0;
void* g_released = nullptr;

// Host service 20 of the fake host: hands out the base string the test chose.
class FakeRegistryService final : public IKelRegistryService
{
public:
    void GetRegistryBase(char* buffer) override
    {
        g_hostLog.push_back("GetRegistryBase");
        memcpy(buffer, base.c_str(), base.size() + 1);
    }
    std::string base;
};

FakeRegistryService g_registry;

int32_t __cdecl FakeQueryService(int serviceId, void** service)
{
    ++g_queries;
    g_hostLog.push_back("query " + std::to_string(serviceId));
    *service = serviceId == KELWINCTRL_SERVICE_REGISTRY ? static_cast<IKelRegistryService*>(&g_registry) : nullptr;
    return 1;
}

int32_t __cdecl FakeReleaseService(int serviceId, void* service)
{
    ++g_releases;
    g_released = service;
    g_hostLog.push_back("release " + std::to_string(serviceId));
    return 1;
}

std::string Text(LPCTSTR psz)
{
    return psz == nullptr ? std::string("(null)") : std::string(psz);
}

class RegistryLocation : public ::testing::Test
{
protected:
    void SetUp() override
    {
        KelWinCtrlInitRecord record = frame_test::EmptyRecord();
        record.pfnQueryService = &FakeQueryService;
        record.pfnReleaseService = &FakeReleaseService;
        ASSERT_EQ(1u, KelWinCtrlInic(&record));
        ResetHost();
    }

    static void ResetHost()
    {
        g_hostLog.clear();
        g_queries = 0;
        g_releases = 0;
        g_released = nullptr;
    }

    // Runs InitRegistry with the given base string from the host.
    static int InitWith(const std::string& base)
    {
        g_registry.base = base;
        return GetKelWinApp()->InitRegistry();
    }

    static std::string Key() { return Text(GetKelWinApp()->m_pszRegistryKey); }
    static std::string Profile() { return Text(GetKelWinApp()->m_pszProfileName); }
};
}

TEST_F(RegistryLocation, FourPartBaseGivesSecondPartAsKeyAndTheRestAsProfile)
{
    EXPECT_EQ(1, InitWith("Software\\Kel\\Gallery\\1.0"));
    EXPECT_EQ("Kel", Key());
    EXPECT_EQ("Gallery\\1.0", Profile());
}

TEST_F(RegistryLocation, QueriesAndReleasesServiceTwentyOnceEach)
{
    EXPECT_EQ(1, InitWith("Software\\Kel\\Gallery\\1.0"));
    EXPECT_EQ(1, g_queries);
    EXPECT_EQ(1, g_releases);
    // The object given back is the one handed out, and the base is read in between.
    EXPECT_EQ(static_cast<void*>(static_cast<IKelRegistryService*>(&g_registry)), g_released);
    const std::vector<std::string> expected = {"query 20", "GetRegistryBase", "release 20"};
    EXPECT_EQ(expected, g_hostLog);
}

TEST_F(RegistryLocation, ServiceIsReleasedAlsoWhenTheBaseIsLeftAlone)
{
    EXPECT_EQ(1, InitWith("\\a\\b"));
    const std::vector<std::string> expected = {"query 20", "GetRegistryBase", "release 20"};
    EXPECT_EQ(expected, g_hostLog);
}

TEST_F(RegistryLocation, BaseWithOneBackslashGivesEmptyKeyAndWholeStringAsProfile)
{
    // First 1, second -1: the key is a negative count of characters, the profile starts at 0.
    EXPECT_EQ(1, InitWith("a\\b"));
    EXPECT_EQ("", Key());
    EXPECT_EQ("a\\b", Profile());
}

TEST_F(RegistryLocation, BaseStartingWithBackslashLeavesKeyAndProfileAlone)
{
    ASSERT_EQ(1, InitWith("Software\\Kel\\Gallery\\1.0"));
    EXPECT_EQ(1, InitWith("\\a\\b"));
    EXPECT_EQ("Kel", Key());
    EXPECT_EQ("Gallery\\1.0", Profile());
}

TEST_F(RegistryLocation, BaseStartingWithBackslashLeavesAnUntouchedApplicationAsItWas)
{
    // Whatever the application holds now (its own defaults in a fresh process) stays.
    const std::string keyBefore = Key(), profileBefore = Profile();
    EXPECT_EQ(1, InitWith("\\a\\b"));
    EXPECT_EQ(keyBefore, Key());
    EXPECT_EQ(profileBefore, Profile());
}

TEST_F(RegistryLocation, BaseWithOnlyALeadingBackslashIsLeftAlone)
{
    ASSERT_EQ(1, InitWith("Software\\Kel\\Gallery\\1.0"));
    EXPECT_EQ(1, InitWith("\\Kel"));
    EXPECT_EQ("Kel", Key());
    EXPECT_EQ("Gallery\\1.0", Profile());
}

TEST_F(RegistryLocation, BaseWithoutBackslashGivesEmptyKeyAndWholeStringAsProfile)
{
    EXPECT_EQ(1, InitWith("noslash"));
    EXPECT_EQ("", Key());
    EXPECT_EQ("noslash", Profile());
}

TEST_F(RegistryLocation, EmptyBaseGivesEmptyKeyAndEmptyProfile)
{
    EXPECT_EQ(1, InitWith(""));
    EXPECT_EQ("", Key());
    EXPECT_EQ("", Profile());
}

TEST_F(RegistryLocation, ThreePartBaseGivesMiddleAsKeyAndLastAsProfile)
{
    EXPECT_EQ(1, InitWith("Software\\Kel\\Gallery"));
    EXPECT_EQ("Kel", Key());
    EXPECT_EQ("Gallery", Profile());
}

TEST_F(RegistryLocation, TrailingSecondBackslashGivesEmptyProfile)
{
    EXPECT_EQ(1, InitWith("Software\\Kel\\"));
    EXPECT_EQ("Kel", Key());
    EXPECT_EQ("", Profile());
}

TEST_F(RegistryLocation, AdjacentBackslashesGiveEmptyKey)
{
    EXPECT_EQ(1, InitWith("Software\\\\Gallery\\1.0"));
    EXPECT_EQ("", Key());
    EXPECT_EQ("Gallery\\1.0", Profile());
}

TEST_F(RegistryLocation, BaseOfFullLengthIsTakenWhole)
{
    // 259 characters and the terminator: the longest base a host may write.
    const std::string head = "Software\\Kel\\";
    const std::string tail(259 - head.size(), 'p');
    ASSERT_EQ(259u, (head + tail).size());
    EXPECT_EQ(1, InitWith(head + tail));
    EXPECT_EQ("Kel", Key());
    EXPECT_EQ(tail, Profile());
}

TEST_F(RegistryLocation, RepeatedCallReplacesKeyAndProfile)
{
    ASSERT_EQ(1, InitWith("Software\\First\\One\\1"));
    EXPECT_EQ(1, InitWith("Software\\Second\\Two\\2"));
    EXPECT_EQ("Second", Key());
    EXPECT_EQ("Two\\2", Profile());
    EXPECT_EQ(2, g_queries);
    EXPECT_EQ(2, g_releases);
}

TEST_F(RegistryLocation, ProfileIsAHeapCopyIndependentOfTheHostsBuffer)
{
    ASSERT_EQ(1, InitWith("Software\\Kel\\Gallery\\1.0"));
    // The host's string changes afterwards; the application keeps what it copied.
    g_registry.base = "Software\\Other\\Thing\\9";
    EXPECT_EQ("Kel", Key());
    EXPECT_EQ("Gallery\\1.0", Profile());
}

TEST_F(RegistryLocation, ProfileValuesLandBelowTheDerivedLocation)
{
    ASSERT_EQ(1, InitWith("Software\\KelFrameTest\\Location\\1.0"));
    ASSERT_TRUE(GetKelWinApp()->WriteProfileInt("Section", "Value", 1234));

    HKEY hKey = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\KelFrameTest\\Location\\1.0\\Section", 0,
                                           KEY_READ, &hKey));
    DWORD value = 0, type = 0, size = sizeof(value);
    const LONG result = RegQueryValueExA(hKey, "Value", nullptr, &type, reinterpret_cast<BYTE*>(&value), &size);
    RegCloseKey(hKey);
    RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\KelFrameTest");
    ASSERT_EQ(ERROR_SUCCESS, result);
    EXPECT_EQ(static_cast<DWORD>(REG_DWORD), type);
    EXPECT_EQ(1234u, value);
}

// ---------------------------------------------------------------- the application object

TEST(KelWinApp, IsTheApplicationObjectOfTheLibrarysModule)
{
    HMODULE hLibrary = GetModuleHandleA("KelWinCtrl.dll");
    ASSERT_NE(nullptr, hLibrary);
    CKelWinApp* app = GetKelWinApp();
    ASSERT_NE(nullptr, app);
    EXPECT_EQ(static_cast<CWinApp*>(app), AfxGetModuleStateOf(hLibrary)->m_pCurrentWinApp);
    EXPECT_EQ(hLibrary, app->m_hInstance);
    // The test program has no application object of its own.
    EXPECT_EQ(nullptr, AfxGetApp());
}

TEST(KelWinApp, NullNameGivesTheModulesNameAsApplicationName)
{
    EXPECT_EQ("KelWinCtrl", Text(GetKelWinApp()->m_pszAppName));
}

TEST(KelWinApp, InitBitmapsAnswersOneForAnyValueAndChangesNothing)
{
    const std::string key = Text(GetKelWinApp()->m_pszRegistryKey);
    const std::string profile = Text(GetKelWinApp()->m_pszProfileName);
    const frame_test::EntryValues entries = frame_test::CurrentEntries();
    for (int value : {0, 1, -1, 42, INT_MIN, INT_MAX})
        EXPECT_EQ(1, GetKelWinApp()->InitBitmaps(value)) << value;
    EXPECT_EQ(key, Text(GetKelWinApp()->m_pszRegistryKey));
    EXPECT_EQ(profile, Text(GetKelWinApp()->m_pszProfileName));
    EXPECT_EQ(entries, frame_test::CurrentEntries());
}
