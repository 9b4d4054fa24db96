// Process-wide live counts of the handles held by the framework's owners.
#include "kelfw/fwlivecount.h"

namespace
{
volatile LONG g_liveCounts[afxLiveKindCount] = {};
}

long AfxGetLiveCount(AfxLiveKind kind)
{
    if (kind < 0 || kind >= afxLiveKindCount)
        return 0;
    return InterlockedCompareExchange(&g_liveCounts[kind], 0, 0);
}

void AfxAdjustLiveCount(AfxLiveKind kind, long delta)
{
    if (kind < 0 || kind >= afxLiveKindCount)
        return;
    InterlockedExchangeAdd(&g_liveCounts[kind], delta);
}
