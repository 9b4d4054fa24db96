// Tests of the keys an in-place edit keeps away from the host: table 108 and the character keys.
#include "kelwinctrl.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
// A window that records the WM_COMMAND messages the accelerators send it.
std::vector<WPARAM> g_commands;
HWND g_recorded = nullptr;

LRESULT CALLBACK RecorderProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND && hwnd == g_recorded)
        g_commands.push_back(wParam);
    return ::DefWindowProcA(hwnd, message, wParam, lParam);
}

class ReservedKeys : public ::testing::Test
{
protected:
    void SetUp() override
    {
        WNDCLASSA wc = {};
        wc.lpfnWndProc = &RecorderProc;
        wc.hInstance = ::GetModuleHandleA(nullptr);
        wc.lpszClassName = "KelKeyRecorder";
        ::RegisterClassA(&wc);
        m_parent = ::CreateWindowA("KelKeyRecorder", "keys", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, nullptr,
                                   wc.hInstance, nullptr);
        ASSERT_NE(nullptr, m_parent);
        // The key goes to a child, as it does to an in-place edit: a child has neither a menu
        // nor a system menu in which the accelerators could find their command.
        m_hwnd = ::CreateWindowA("KelKeyRecorder", "", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20, m_parent, nullptr,
                                 wc.hInstance, nullptr);
        ASSERT_NE(nullptr, m_hwnd);
        g_recorded = m_hwnd;
        g_commands.clear();
        Hold(0);
    }
    void TearDown() override
    {
        Hold(0);
        g_recorded = nullptr;
        ::DestroyWindow(m_parent);
    }

    // Sets the queued key state: which of Shift, Control and Alt are held.
    static void Hold(int keys)
    {
        BYTE state[256];
        ::GetKeyboardState(state);
        const BYTE shift = (keys & KELWINCTRL_KEY_SHIFT) ? 0x80 : 0;
        const BYTE control = (keys & KELWINCTRL_KEY_CONTROL) ? 0x80 : 0;
        const BYTE alt = (keys & KELWINCTRL_KEY_ALT) ? 0x80 : 0;
        state[VK_SHIFT] = state[VK_LSHIFT] = shift;
        state[VK_CONTROL] = state[VK_LCONTROL] = control;
        state[VK_MENU] = state[VK_LMENU] = alt;
        ::SetKeyboardState(state);
    }

    int32_t Key(UINT message, WPARAM key, int held = 0)
    {
        Hold(held);
        MSG msg = {};
        msg.hwnd = m_hwnd;
        msg.message = message;
        msg.wParam = key;
        msg.lParam = 1;
        const int32_t result = IsReservedKeyForEditControl(m_hwnd, &msg);
        Hold(0);
        return result;
    }
    int32_t Down(WPARAM key, int held = 0) { return Key(WM_KEYDOWN, key, held); }

    HWND m_parent = nullptr;
    HWND m_hwnd = nullptr;
};

const int kShift = KELWINCTRL_KEY_SHIFT;
const int kControl = KELWINCTRL_KEY_CONTROL;
const int kAlt = KELWINCTRL_KEY_ALT;
}

TEST_F(ReservedKeys, AcceleratorTableHoldsExactlyTheEditKeys)
{
    HMODULE library = ::GetModuleHandleA("KelWinCtrl.dll");
    ASSERT_NE(nullptr, library);
    HACCEL table = ::LoadAcceleratorsA(library, MAKEINTRESOURCEA(108));
    ASSERT_NE(nullptr, table);
    ACCEL entries[16] = {};
    const int count = ::CopyAcceleratorTableA(table, entries, 16);
    ASSERT_EQ(8, count);
    const struct
    {
        BYTE fVirt;
        WORD key;
    } expected[] = {{FVIRTKEY | FCONTROL, 'C'}, {FVIRTKEY | FCONTROL, VK_INSERT}, {FVIRTKEY | FCONTROL, 'V'},
                    {FVIRTKEY | FSHIFT, VK_INSERT}, {FVIRTKEY | FCONTROL, 'X'},  {FVIRTKEY | FSHIFT, VK_DELETE},
                    {FVIRTKEY, VK_DELETE},          {FVIRTKEY, VK_SPACE}};
    for (int i = 0; i < count; ++i)
    {
        EXPECT_EQ(expected[i].fVirt, entries[i].fVirt & ~0x80) << i;
        EXPECT_EQ(expected[i].key, entries[i].key) << i;
        EXPECT_EQ(0, entries[i].cmd) << i;
    }
}

TEST_F(ReservedKeys, ClipboardKeysGoThroughTheAccelerators)
{
    const struct
    {
        WPARAM key;
        int held;
    } keys[] = {{'C', kControl},      {VK_INSERT, kControl}, {'V', kControl}, {VK_INSERT, kShift},
                {'X', kControl},      {VK_DELETE, kShift},   {VK_DELETE, 0},  {VK_SPACE, 0}};
    for (const auto& k : keys)
    {
        g_commands.clear();
        EXPECT_EQ(1, Down(k.key, k.held)) << k.key << "/" << k.held;
        ASSERT_EQ(1u, g_commands.size()) << k.key << "/" << k.held;
        EXPECT_EQ(0u, LOWORD(g_commands[0]));
        EXPECT_EQ(1u, HIWORD(g_commands[0])) << "sent as an accelerator";
    }
}

TEST_F(ReservedKeys, ControlLetterNotInTheTableIsNotReserved)
{
    EXPECT_EQ(0, Down('A', kControl));
    EXPECT_EQ(0, Down('Z', kControl));
    EXPECT_EQ(0, Down('5', kControl));
    EXPECT_TRUE(g_commands.empty());
}

TEST_F(ReservedKeys, AltKeysAreNotReserved)
{
    EXPECT_EQ(0, Down('A', kAlt));
    EXPECT_EQ(0, Down('1', kAlt | kShift));
    EXPECT_EQ(0, Down(VK_SPACE, kAlt));
}

TEST_F(ReservedKeys, CharacterKeysAloneOrWithShift)
{
    EXPECT_EQ(1, Down('A'));
    EXPECT_EQ(1, Down('A', kShift));
    EXPECT_EQ(1, Down('0'));
    EXPECT_TRUE(g_commands.empty()) << "typed keys are not accelerators";
}

TEST_F(ReservedKeys, ExactRangesOfCharacterKeys)
{
    for (int key = 1; key < 256; ++key)
    {
        const bool character = (key >= 0x30 && key <= 0x39) || (key >= 0x41 && key <= 0x5A) ||
                               (key >= 0x60 && key <= 0x6F) || (key >= 0xBA && key <= 0xC0) ||
                               (key >= 0xDB && key <= 0xE4) || key == 0xE6 || (key >= 0xE9 && key <= 0xF5);
        const bool accelerator = key == VK_DELETE || key == VK_SPACE;
        const bool modifier = key == VK_SHIFT || key == VK_CONTROL || key == VK_MENU || key == VK_LSHIFT ||
                              key == VK_RSHIFT || key == VK_LCONTROL || key == VK_RCONTROL || key == VK_LMENU ||
                              key == VK_RMENU;
        if (modifier)
            continue;   // pressing these would change the state being tested
        EXPECT_EQ(character || accelerator ? 1 : 0, Down(static_cast<WPARAM>(key))) << "key 0x" << std::hex << key;
    }
}

TEST_F(ReservedKeys, SpaceWithShiftAndControlDeleteAreNotInTheTable)
{
    EXPECT_EQ(0, Down(VK_SPACE, kShift));
    EXPECT_EQ(0, Down(VK_DELETE, kControl));
    EXPECT_EQ(0, Down(VK_INSERT, 0));
    EXPECT_TRUE(g_commands.empty());
}

TEST_F(ReservedKeys, OnlyKeyDownMessagesCount)
{
    EXPECT_EQ(0, Key(WM_KEYUP, 'A'));
    EXPECT_EQ(0, Key(WM_CHAR, 'a'));
    EXPECT_EQ(0, Key(WM_SYSKEYDOWN, 'A'));
    EXPECT_EQ(0, Key(WM_MOUSEMOVE, 0));
}
