// Tests of the key-state word. They inject real key presses, which every window of the
// desktop sees; the program has a desktop of its own while it runs.
#include "kelwinctrl.h"

#include "testsupport.h"

#include <gtest/gtest.h>

namespace
{
void SendKey(WORD key, bool up)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
    ASSERT_EQ(1u, ::SendInput(1, &input, sizeof(input)));
}
}

TEST(AsyncKeyState, NoKeysHeld)
{
    EXPECT_EQ(0, GetKelWinCtrlAsyncKeyState());
}

TEST(AsyncKeyState, BitsFollowTheHeldKeys)
{
    const struct
    {
        WORD key;
        int32_t bit;
    } keys[] = {{VK_SHIFT, KELWINCTRL_KEY_SHIFT}, {VK_CONTROL, KELWINCTRL_KEY_CONTROL}, {VK_MENU, KELWINCTRL_KEY_ALT}};
    for (const auto& k : keys)
    {
        SendKey(k.key, false);
        kel_test::PumpFor(50);
        EXPECT_EQ(k.bit, GetKelWinCtrlAsyncKeyState()) << k.key;
        SendKey(k.key, true);
        kel_test::PumpFor(50);
        EXPECT_EQ(0, GetKelWinCtrlAsyncKeyState()) << k.key;
    }
    SendKey(VK_SHIFT, false);
    SendKey(VK_CONTROL, false);
    kel_test::PumpFor(50);
    EXPECT_EQ(KELWINCTRL_KEY_SHIFT | KELWINCTRL_KEY_CONTROL, GetKelWinCtrlAsyncKeyState());
    SendKey(VK_CONTROL, true);
    SendKey(VK_SHIFT, true);
    kel_test::PumpFor(50);
    EXPECT_EQ(0, GetKelWinCtrlAsyncKeyState());
}
