// Tests of KelWinCtrlInic: which words of the host record are taken, and the box that a
// record of another size or version brings up.
#include "hostfakes.h"
#include "testsupport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <thread>

using frame_test::CurrentEntries;
using frame_test::EntryValues;
using frame_test::RecordEntries;

namespace
{
const char kBoxCaption[] = "KelWinCtrl";
const char kBoxText[] = "Wrong dll version!\n\nContinue? (May crash)";

// A size that is not the record's on this platform: the 32-bit size on 64-bit and back.
const uint32_t kOtherPlatformSize = sizeof(void*) == 8 ? 72u : 136u;

// Every test starts from set A in all fifteen variables, whatever ran before in the process.
class HostRecord : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(1u, KelWinCtrlInic(&m_a));
        ASSERT_EQ(RecordEntries(m_a), CurrentEntries());
    }

    const KelWinCtrlInitRecord m_a = frame_test::FullRecordA();
    const KelWinCtrlInitRecord m_b = frame_test::FullRecordB();
};

// A record whose reserved last word, and all that follows it, lies on a page that may not be
// touched: reading word 17 or anything behind it ends the program.
class GuardedRecord
{
public:
    GuardedRecord()
    {
        SYSTEM_INFO info;
        GetSystemInfo(&info);
        m_pageSize = info.dwPageSize;
        m_pages = static_cast<char*>(VirtualAlloc(nullptr, 2 * m_pageSize, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        DWORD oldProtect = 0;
        m_guarded = m_pages != nullptr &&
                    VirtualProtect(m_pages + m_pageSize, m_pageSize, PAGE_NOACCESS, &oldProtect) != FALSE;
    }
    ~GuardedRecord()
    {
        if (m_pages != nullptr)
            VirtualFree(m_pages, 0, MEM_RELEASE);
    }
    GuardedRecord(const GuardedRecord&) = delete;
    GuardedRecord& operator=(const GuardedRecord&) = delete;

    bool IsGuarded() const { return m_guarded; }

    // Copies words 0 to 16 of the record in front of the guarded page.
    KelWinCtrlInitRecord* Place(const KelWinCtrlInitRecord& source)
    {
        const size_t usable = offsetof(KelWinCtrlInitRecord, reserved);
        char* start = m_pages + m_pageSize - usable;
        memcpy(start, &source, usable);
        return reinterpret_cast<KelWinCtrlInitRecord*>(start);
    }

private:
    DWORD m_pageSize = 0;
    char* m_pages = nullptr;
    bool m_guarded = false;
};

// A plain window on the test's thread that, when asked, notes which module state is current
// on that thread at that moment.
class ProbeWindow
{
public:
    static const UINT kProbe = WM_APP + 1;

    ProbeWindow()
    {
        WNDCLASSA wc = {};
        wc.lpfnWndProc = &ProbeWindow::WndProc;
        wc.hInstance = GetModuleHandleA(nullptr);
        wc.lpszClassName = "FrameTestProbe";
        RegisterClassA(&wc);
        m_hWnd = CreateWindowExA(0, "FrameTestProbe", "probe", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 200, 120,
                                 nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
        s_seenState = nullptr;
    }
    ~ProbeWindow() { DestroyWindow(m_hWnd); }
    ProbeWindow(const ProbeWindow&) = delete;
    ProbeWindow& operator=(const ProbeWindow&) = delete;

    HWND Handle() const { return m_hWnd; }
    static AFX_MODULE_STATE* SeenState() { return s_seenState; }

private:
    static LRESULT CALLBACK WndProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam)
    {
        if (msg == kProbe)
        {
            s_seenState = AfxGetModuleState();
            return 1;
        }
        return DefWindowProcA(hWnd, msg, wParam, lParam);
    }

    HWND m_hWnd = nullptr;
    static AFX_MODULE_STATE* s_seenState;
};

AFX_MODULE_STATE* ProbeWindow::s_seenState = nullptr;

struct FindBoxCtx
{
    HWND found;
};

BOOL CALLBACK FindOwnBox(HWND hWnd, LPARAM lParam)
{
    DWORD pid = 0;
    GetWindowThreadProcessId(hWnd, &pid);
    char cls[64] = {}, text[64] = {};
    GetClassNameA(hWnd, cls, sizeof(cls));
    GetWindowTextA(hWnd, text, sizeof(text));
    if (pid == GetCurrentProcessId() && lstrcmpA(cls, "#32770") == 0 && lstrcmpA(text, kBoxCaption) == 0)
    {
        reinterpret_cast<FindBoxCtx*>(lParam)->found = hWnd;
        return FALSE;
    }
    return TRUE;
}

// On a thread of its own: waits for the box, notes its owner and how its buttons are set up,
// has the probe window (if any) note the module state current on the box's thread while the
// box runs, then presses a button.
class BoxProbe
{
public:
    BoxProbe(HWND hProbe, int button)
        : m_thread([this, hProbe, button] {
              HWND hBox = nullptr;
              for (int i = 0; i < 500 && hBox == nullptr; ++i)
              {
                  FindBoxCtx ctx = {nullptr};
                  EnumWindows(&FindOwnBox, reinterpret_cast<LPARAM>(&ctx));
                  hBox = ctx.found;
                  if (hBox == nullptr)
                      Sleep(20);
              }
              if (hBox == nullptr)
                  return;
              // Let the box finish its initialisation before it is read.
              Sleep(100);
              m_owner = GetWindow(hBox, GW_OWNER);
              m_yesIsDefault = IsDefaultPushButton(GetDlgItem(hBox, IDYES));
              m_noIsDefault = IsDefaultPushButton(GetDlgItem(hBox, IDNO));
              GUITHREADINFO info = {};
              info.cbSize = sizeof(info);
              if (GetGUIThreadInfo(GetWindowThreadProcessId(hBox, nullptr), &info) && info.hwndFocus != nullptr)
                  m_focusId = GetDlgCtrlID(info.hwndFocus);
              if (hProbe != nullptr)
              {
                  DWORD_PTR answer = 0;
                  m_probed = SendMessageTimeoutA(hProbe, ProbeWindow::kProbe, 0, 0, SMTO_NORMAL, 5000, &answer) != 0 &&
                             answer == 1;
              }
              m_found = true;
              PostMessageA(hBox, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                           reinterpret_cast<LPARAM>(GetDlgItem(hBox, button)));
          })
    {
    }
    ~BoxProbe() { Wait(); }
    BoxProbe(const BoxProbe&) = delete;
    BoxProbe& operator=(const BoxProbe&) = delete;

    void Wait()
    {
        if (m_thread.joinable())
            m_thread.join();
    }
    bool Found() const { return m_found; }
    bool Probed() const { return m_probed; }
    HWND Owner() const { return m_owner; }
    bool YesIsDefault() const { return m_yesIsDefault; }
    bool NoIsDefault() const { return m_noIsDefault; }
    int FocusId() const { return m_focusId; }

private:
    static bool IsDefaultPushButton(HWND hButton)
    {
        return hButton != nullptr && (GetWindowLongA(hButton, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    }

    std::atomic<bool> m_found{false};
    std::atomic<bool> m_probed{false};
    std::atomic<HWND> m_owner{nullptr};
    std::atomic<bool> m_yesIsDefault{false};
    std::atomic<bool> m_noIsDefault{false};
    std::atomic<int> m_focusId{0};
    std::thread m_thread;
};

AFX_MODULE_STATE* LibraryModuleState()
{
    return AfxGetModuleStateOf(GetModuleHandleA("KelWinCtrl.dll"));
}
}

// ---------------------------------------------------------------- the entries

TEST(HostEntries, AllFifteenAreNullWhenTheLibraryIsLoaded)
{
    // Read as the test program started, before any test called into the library.
    for (int i = 0; i < frame_test::kEntryCount; ++i)
        EXPECT_EQ(nullptr, frame_test::EntriesAtStart()[static_cast<size_t>(i)]) << "word " << i + 2;
}

TEST_F(HostRecord, ValidRecordTakesAllFifteenEntriesAndReturnsOne)
{
    EXPECT_EQ(1u, KelWinCtrlInic(&m_b));
    EXPECT_EQ(RecordEntries(m_b), CurrentEntries());
}

TEST_F(HostRecord, TakenEntriesCallTheHostsFunctions)
{
    ASSERT_EQ(1u, KelWinCtrlInic(&m_b));
    int32_t colour = 3;
    char text[254] = {};
    wchar_t path[260] = {}, name[260] = {};
    // Each fake of set B answers 2000 plus its word.
    EXPECT_EQ(2002u, pfnGetColorRgb(&colour));
    EXPECT_EQ(2005, pfnGetMasstabText(text, 254, 0));
    EXPECT_EQ(2006, pfnSelectLayer(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(2009, pfnQueryService(20, nullptr));
    EXPECT_EQ(2010, pfnReleaseService(20, nullptr));
    EXPECT_EQ(2011, pfnIsMaskeFnAborted());
    EXPECT_EQ(reinterpret_cast<HWND>(static_cast<INT_PTR>(2012)), pfnGetMainWindow());
    EXPECT_EQ(reinterpret_cast<HWND>(static_cast<INT_PTR>(2013)), pfnGetEmbeddedMainWindow());
    EXPECT_EQ(2016, pfnEditBitmapPath(0, path, name));
}

TEST_F(HostRecord, SecondCallWithAllEntriesNullChangesNothingAndReturnsOne)
{
    const KelWinCtrlInitRecord empty = frame_test::EmptyRecord();
    EXPECT_EQ(1u, KelWinCtrlInic(&empty));
    EXPECT_EQ(RecordEntries(m_a), CurrentEntries());
}

TEST_F(HostRecord, SecondCallWithOneEntryReplacesThatEntryAlone)
{
    for (int word = 2; word <= 16; ++word)
    {
        SCOPED_TRACE(::testing::Message() << "word " << word);
        ASSERT_EQ(1u, KelWinCtrlInic(&m_a));
        KelWinCtrlInitRecord single = frame_test::EmptyRecord();
        frame_test::CopyWord(single, m_b, word);
        EXPECT_EQ(1u, KelWinCtrlInic(&single));

        EntryValues expected = RecordEntries(m_a);
        expected[static_cast<size_t>(word - 2)] = RecordEntries(m_b)[static_cast<size_t>(word - 2)];
        EXPECT_EQ(expected, CurrentEntries());
    }
}

TEST_F(HostRecord, NullWordsKeepEarlierEntriesWhileOthersAreReplaced)
{
    // Odd words from B, even words null: the even entries stay those of A.
    KelWinCtrlInitRecord mixed = frame_test::EmptyRecord();
    for (int word = 3; word <= 16; word += 2)
        frame_test::CopyWord(mixed, m_b, word);
    EXPECT_EQ(1u, KelWinCtrlInic(&mixed));

    const EntryValues a = RecordEntries(m_a), b = RecordEntries(m_b);
    const EntryValues now = CurrentEntries();
    for (int word = 2; word <= 16; ++word)
    {
        const size_t i = static_cast<size_t>(word - 2);
        EXPECT_EQ(word % 2 == 1 ? b[i] : a[i], now[i]) << "word " << word;
    }
}

TEST_F(HostRecord, GarbageInReservedWordIsIgnored)
{
    KelWinCtrlInitRecord record = m_b;
    record.reserved = reinterpret_cast<void*>(static_cast<uintptr_t>(0xDEADBEEFu));
    kel_test::BoxAnswerer answerer(kBoxCaption, IDNO, 1500);
    EXPECT_EQ(1u, KelWinCtrlInic(&record));
    EXPECT_FALSE(answerer.Wait().found);
    EXPECT_EQ(RecordEntries(m_b), CurrentEntries());
}

TEST_F(HostRecord, ReservedWordIsNeverRead)
{
    GuardedRecord guard;
    ASSERT_TRUE(guard.IsGuarded());
    const KelWinCtrlInitRecord* record = guard.Place(m_b);
    EXPECT_EQ(1u, KelWinCtrlInic(record));
    EXPECT_EQ(RecordEntries(m_b), CurrentEntries());
}

TEST_F(HostRecord, ValidRecordShowsNoBox)
{
    // A watcher that would answer the box; it must find none.
    kel_test::BoxAnswerer answerer(kBoxCaption, IDNO, 1500);
    EXPECT_EQ(1u, KelWinCtrlInic(&m_b));
    EXPECT_FALSE(answerer.Wait().found);
    EXPECT_FALSE(kel_test::BoxIsOpen(kBoxCaption));
}

TEST_F(HostRecord, ValidRecordLeavesCallersModuleCurrent)
{
    AFX_MODULE_STATE* before = AfxGetModuleState();
    ASSERT_NE(LibraryModuleState(), before);
    EXPECT_EQ(1u, KelWinCtrlInic(&m_b));
    EXPECT_EQ(before, AfxGetModuleState());
}

// ---------------------------------------------------------------- a record of another size or version

TEST_F(HostRecord, WrongSizeShowsBoxAndNoReturnsZeroTakingNothing)
{
    KelWinCtrlInitRecord record = m_b;
    record.cbSize = sizeof(KelWinCtrlInitRecord) - 4;
    kel_test::BoxAnswerer answerer(kBoxCaption, IDNO);
    EXPECT_EQ(0u, KelWinCtrlInic(&record));
    EXPECT_TRUE(answerer.Wait().found);
    EXPECT_EQ(RecordEntries(m_a), CurrentEntries());
}

TEST_F(HostRecord, OtherPlatformsSizeShowsBox)
{
    KelWinCtrlInitRecord record = m_b;
    record.cbSize = kOtherPlatformSize;
    kel_test::BoxAnswerer answerer(kBoxCaption, IDNO);
    EXPECT_EQ(0u, KelWinCtrlInic(&record));
    EXPECT_TRUE(answerer.Wait().found);
    EXPECT_EQ(RecordEntries(m_a), CurrentEntries());
}

TEST_F(HostRecord, WrongVersionShowsBoxAndNoReturnsZeroTakingNothing)
{
    KelWinCtrlInitRecord record = m_b;
    record.dwVersion = KELWINCTRL_RECORD_VERSION - 1;
    kel_test::BoxAnswerer answerer(kBoxCaption, IDNO);
    EXPECT_EQ(0u, KelWinCtrlInic(&record));
    EXPECT_TRUE(answerer.Wait().found);
    EXPECT_EQ(RecordEntries(m_a), CurrentEntries());
}

TEST_F(HostRecord, WrongVersionWithRightSizeYesTakesEntriesAndReturnsOne)
{
    KelWinCtrlInitRecord record = m_b;
    record.dwVersion = 0x24060501u;
    kel_test::BoxAnswerer answerer(kBoxCaption, IDYES);
    EXPECT_EQ(1u, KelWinCtrlInic(&record));
    EXPECT_TRUE(answerer.Wait().found);
    EXPECT_EQ(RecordEntries(m_b), CurrentEntries());
}

TEST_F(HostRecord, WrongSizeYesTakesEntriesAndReturnsOne)
{
    KelWinCtrlInitRecord record = m_b;
    record.cbSize = kOtherPlatformSize;
    kel_test::BoxAnswerer answerer(kBoxCaption, IDYES);
    EXPECT_EQ(1u, KelWinCtrlInic(&record));
    EXPECT_TRUE(answerer.Wait().found);
    EXPECT_EQ(RecordEntries(m_b), CurrentEntries());
}

TEST_F(HostRecord, YesAfterWrongRecordStillSkipsNullWords)
{
    KelWinCtrlInitRecord record = frame_test::EmptyRecord();
    record.dwVersion = 0;
    frame_test::CopyWord(record, m_b, 9);
    kel_test::BoxAnswerer answerer(kBoxCaption, IDYES);
    EXPECT_EQ(1u, KelWinCtrlInic(&record));
    EXPECT_TRUE(answerer.Wait().found);
    EntryValues expected = RecordEntries(m_a);
    expected[9 - 2] = RecordEntries(m_b)[9 - 2];
    EXPECT_EQ(expected, CurrentEntries());
}

TEST_F(HostRecord, SmallSizeDoesNotLimitTheWordsRead)
{
    // A size that covers only the first two words: after Yes all fifteen entries are read.
    KelWinCtrlInitRecord record = m_b;
    record.cbSize = 8;
    kel_test::BoxAnswerer answerer(kBoxCaption, IDYES);
    EXPECT_EQ(1u, KelWinCtrlInic(&record));
    EXPECT_TRUE(answerer.Wait().found);
    EXPECT_EQ(RecordEntries(m_b), CurrentEntries());
}

TEST_F(HostRecord, LargeSizeDoesNotExtendTheWordsRead)
{
    // A size past the record: after Yes nothing behind word 16 is touched.
    GuardedRecord guard;
    ASSERT_TRUE(guard.IsGuarded());
    KelWinCtrlInitRecord source = m_b;
    source.cbSize = sizeof(KelWinCtrlInitRecord) + 64;
    const KelWinCtrlInitRecord* record = guard.Place(source);
    kel_test::BoxAnswerer answerer(kBoxCaption, IDYES);
    EXPECT_EQ(1u, KelWinCtrlInic(record));
    EXPECT_TRUE(answerer.Wait().found);
    EXPECT_EQ(RecordEntries(m_b), CurrentEntries());
}

// ---------------------------------------------------------------- the box itself

TEST_F(HostRecord, BoxShowsCaptionTextYesNoAndErrorIcon)
{
    KelWinCtrlInitRecord record = m_b;
    record.dwVersion = 0;
    kel_test::BoxAnswerer answerer(kBoxCaption, IDNO);
    EXPECT_EQ(0u, KelWinCtrlInic(&record));
    const kel_test::BoxSeen& seen = answerer.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(kBoxCaption, seen.caption);
    EXPECT_EQ(kBoxText, seen.text);
    EXPECT_TRUE(seen.hasYes);
    EXPECT_TRUE(seen.hasNo);
    EXPECT_FALSE(seen.hasOk);
    EXPECT_FALSE(seen.hasCancel);
    // The error icon is the system's shared hand icon.
    ASSERT_NE(nullptr, seen.icon);
    EXPECT_EQ(LoadIcon(nullptr, IDI_HAND), seen.icon);
}

TEST_F(HostRecord, BoxMakesNoTheDefaultButton)
{
    // Wine's message box answers DM_GETDEFID with IDOK whatever its default button is; what
    // it shares with Windows is the default push button style and the focus on that button.
    KelWinCtrlInitRecord record = m_b;
    record.dwVersion = 0;
    BoxProbe boxProbe(nullptr, IDNO);
    EXPECT_EQ(0u, KelWinCtrlInic(&record));
    boxProbe.Wait();
    ASSERT_TRUE(boxProbe.Found());
    EXPECT_TRUE(boxProbe.NoIsDefault());
    EXPECT_FALSE(boxProbe.YesIsDefault());
    EXPECT_EQ(IDNO, boxProbe.FocusId());
}

TEST_F(HostRecord, BoxHasNoOwnerEvenWithAnActiveWindow)
{
    ProbeWindow probe;
    ASSERT_NE(nullptr, probe.Handle());
    SetForegroundWindow(probe.Handle());
    SetActiveWindow(probe.Handle());
    kel_test::PumpFor(50);
    ASSERT_EQ(probe.Handle(), GetActiveWindow());

    KelWinCtrlInitRecord record = m_b;
    record.dwVersion = 0;
    BoxProbe boxProbe(probe.Handle(), IDNO);
    EXPECT_EQ(0u, KelWinCtrlInic(&record));
    boxProbe.Wait();
    ASSERT_TRUE(boxProbe.Found());
    EXPECT_EQ(nullptr, boxProbe.Owner());
}

TEST_F(HostRecord, BoxRunsWithTheLibrarysModuleCurrentAndNoRestoresTheCallers)
{
    ProbeWindow probe;
    ASSERT_NE(nullptr, probe.Handle());
    AFX_MODULE_STATE* before = AfxGetModuleState();
    ASSERT_NE(LibraryModuleState(), before);

    KelWinCtrlInitRecord record = m_b;
    record.cbSize = kOtherPlatformSize;
    BoxProbe boxProbe(probe.Handle(), IDNO);
    EXPECT_EQ(0u, KelWinCtrlInic(&record));
    boxProbe.Wait();
    ASSERT_TRUE(boxProbe.Found());
    ASSERT_TRUE(boxProbe.Probed());
    EXPECT_EQ(LibraryModuleState(), ProbeWindow::SeenState());
    EXPECT_EQ(before, AfxGetModuleState());
}

TEST_F(HostRecord, YesRestoresTheCallersModule)
{
    ProbeWindow probe;
    ASSERT_NE(nullptr, probe.Handle());
    AFX_MODULE_STATE* before = AfxGetModuleState();

    KelWinCtrlInitRecord record = m_b;
    record.dwVersion = 0;
    BoxProbe boxProbe(probe.Handle(), IDYES);
    EXPECT_EQ(1u, KelWinCtrlInic(&record));
    boxProbe.Wait();
    ASSERT_TRUE(boxProbe.Probed());
    EXPECT_EQ(LibraryModuleState(), ProbeWindow::SeenState());
    EXPECT_EQ(before, AfxGetModuleState());
    EXPECT_EQ(RecordEntries(m_b), CurrentEntries());
}
