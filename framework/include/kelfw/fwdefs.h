// Common definitions of the class framework: Windows headers, the export macro, asserts.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#include <commctrl.h>
#include <tchar.h>

// Names of the framework's members that the system headers define as macros.
#undef GetNextWindow
#undef SubclassWindow

#ifdef KELFW_BUILDING
#define KELFW_API __declspec(dllexport)
#else
#define KELFW_API __declspec(dllimport)
#endif

#ifndef afx_msg
#define afx_msg
#endif

#ifndef ASSERT
#ifdef NDEBUG
#define ASSERT(f) ((void)0)
#else
#include <cassert>
#define ASSERT(f) assert(f)
#endif
#endif
#ifndef VERIFY
#define VERIFY(f) ((void)(f))
#endif
#ifndef ASSERT_VALID
#define ASSERT_VALID(p) ((void)0)
#endif
#ifndef TRACE
#define TRACE(...) ((void)0)
#endif
