// The host kit: stand-ins for the host's closed sister libraries.
#pragma once
#include <windows.h>

#ifdef KELHOSTKIT_BUILDING
#define KELHOSTKIT_API __declspec(dllexport)
#else
#define KELHOSTKIT_API __declspec(dllimport)
#endif

// Version of the host kit's interfaces, checked by hosts that load it.
extern "C" KELHOSTKIT_API unsigned long KelHostKitVersion();
