// Entry points of the host kit as a whole.
#include "hostkit.h"

extern "C" unsigned long KelHostKitVersion()
{
    return 0x00010000UL;
}
