// Key state and the keys that an in-place edit keeps away from the host's accelerators.
#include "kelwinctrl.h"

#include "resource.h"

namespace
{
bool IsDown(int virtualKey)
{
    return (::GetKeyState(virtualKey) & 0x8000) != 0;
}

// Keys that type a character (digits, letters, number pad, punctuation of the layouts).
bool IsCharacterKey(WPARAM key)
{
    return (key >= 0x30 && key <= 0x39) || (key >= 0x41 && key <= 0x5A) || (key >= 0x60 && key <= 0x6F) ||
           (key >= 0xBA && key <= 0xC0) || (key >= 0xDB && key <= 0xE4) || key == 0xE6 ||
           (key >= 0xE9 && key <= 0xF5);
}
}

int32_t GetKelWinCtrlAsyncKeyState()
{
    int32_t state = 0;
    if (::GetAsyncKeyState(VK_SHIFT) & 0x8000)
        state |= KELWINCTRL_KEY_SHIFT;
    if (::GetAsyncKeyState(VK_CONTROL) & 0x8000)
        state |= KELWINCTRL_KEY_CONTROL;
    if (::GetAsyncKeyState(VK_MENU) & 0x8000)
        state |= KELWINCTRL_KEY_ALT;
    return state;
}

int32_t IsReservedKeyForEditControl(HWND hwnd, MSG* msg)
{
    AFX_MANAGE_STATE(AfxGetStaticModuleState());

    // Loaded once and kept for the process; only the user-interface thread comes here.
    static HACCEL s_accelerators = ::LoadAcceleratorsA(AfxGetResourceHandle(), MAKEINTRESOURCEA(IDR_EDIT_ACCELERATORS));

    if (s_accelerators != nullptr && ::TranslateAcceleratorA(hwnd, s_accelerators, msg))
        return 1;
    // The queued key state, the one the accelerators were matched against. Shift alone still
    // types a character.
    if (msg->message == WM_KEYDOWN && !IsDown(VK_CONTROL) && !IsDown(VK_MENU) && IsCharacterKey(msg->wParam))
        return 1;
    return 0;
}
