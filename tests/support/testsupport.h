// Helpers shared by the tests: pumping messages and answering modal boxes.
#pragma once
#include <windows.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace kel_test
{
// Dispatches every pending message of this thread, with the framework's pre-translation.
void PumpPending();
// Pumps messages for the given time.
void PumpFor(DWORD milliseconds);

// Posts a key press as the keyboard would, with its scan code, so that TranslateMessage
// makes the character of it. Nothing is pumped.
void PostKeyDown(HWND hWnd, UINT vk);
// Posts each character of the text as a WM_CHAR. Nothing is pumped.
void PostChars(HWND hWnd, const char* text);

// Makes a top-level window of this process the foreground and active window, pumping until
// the display has said so. Each test program runs on a desktop of its own, so nothing else
// takes the foreground; a test that depends on activation or focus still takes it first,
// since an earlier test of the same program may have left another window active.
bool TakeForeground(HWND hWnd);
// Takes the foreground for the window and runs a step that needs it. True when the step
// ran and this process still had the foreground at its end.
bool RunHoldingForeground(HWND hWnd, const std::function<void()>& step);

// What a modal box looked like when it was answered.
struct BoxSeen
{
    bool found = false;
    std::string caption;
    std::string text;          // the box's message text
    int defaultButton = 0;     // id of the default push button
    bool hasYes = false, hasNo = false, hasOk = false, hasCancel = false;
    HICON icon = nullptr;      // icon the box shows, if any
    HWND owner = nullptr;      // the window the box is modal to
};

// Waits on a thread of its own for a dialog box of this process with the given caption,
// records what it shows and presses the button with the given id. Join with Wait().
class BoxAnswerer
{
public:
    BoxAnswerer(const char* caption, int buttonToPress, DWORD timeoutMs = 10000);
    ~BoxAnswerer();
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;

    // Joins the watcher and returns what it saw.
    const BoxSeen& Wait();

private:
    void Run(std::string caption, int button, DWORD timeoutMs);
    std::thread m_thread;
    BoxSeen m_seen;
};

// True when a top-level window of this process with the caption exists.
bool BoxIsOpen(const char* caption);
}
