// The main function of every test program: GoogleTest's, plus a report that names the test
// a crash happened in, so that a program running a whole group of tests still says which
// one brought it down (or that it died after the last test, at exit).
#include <gtest/gtest.h>
#include <windows.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace
{
// Writes the crash line on the raw standard error handle: the C runtime's buffers and heap
// may be what the crash damaged.
void WriteRaw(const char* text)
{
    DWORD written = 0;
    ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(lstrlenA(text)), &written, nullptr);
}

void ReportCrash(const char* what)
{
    char line[512];
    const ::testing::TestInfo* pTest = ::testing::UnitTest::GetInstance()->current_test_info();
    if (pTest != nullptr)
        wsprintfA(line, "\n[  CRASH   ] %s.%s: %s\n", pTest->test_suite_name(), pTest->name(), what);
    else
        wsprintfA(line, "\n[  CRASH   ] outside any test (before the first or after the last): %s\n", what);
    ::fflush(stdout);
    WriteRaw(line);
}

LONG WINAPI OnUnhandledException(EXCEPTION_POINTERS* pInfo)
{
    char what[128];
    wsprintfA(what, "exception 0x%08lX at %p", pInfo->ExceptionRecord->ExceptionCode,
              pInfo->ExceptionRecord->ExceptionAddress);
    ReportCrash(what);
    // No debugger and no error box: the program ends at once with the exception's code.
    ::TerminateProcess(::GetCurrentProcess(), pInfo->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

void OnAbort(int)
{
    ReportCrash("abort");
    ::TerminateProcess(::GetCurrentProcess(), 3);
}
}

int main(int argc, char** argv)
{
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    ::SetUnhandledExceptionFilter(&OnUnhandledException);
    std::signal(SIGABRT, &OnAbort);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
