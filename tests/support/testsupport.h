// Helpers shared by the tests: pumping messages and answering modal boxes.
#pragma once
#include <windows.h>

#include <atomic>
#include <string>
#include <thread>

namespace kel_test
{
// Dispatches every pending message of this thread, with the framework's pre-translation.
void PumpPending();
// Pumps messages for the given time.
void PumpFor(DWORD milliseconds);

// What a modal box looked like when it was answered.
struct BoxSeen
{
    bool found = false;
    std::string caption;
    std::string text;          // the box's message text
    int defaultButton = 0;     // id of the default push button
    bool hasYes = false, hasNo = false, hasOk = false, hasCancel = false;
    HICON icon = nullptr;      // icon the box shows, if any
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
