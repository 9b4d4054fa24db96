// The gallery's host services 20 (registry base) and 34 (host state guard), and the unit
// settings read by the expression parser.
#include "hostservices.h"

#include "galleryunits.h"

#include <atomic>
#include <cstring>

const char kGalleryRegistryBase[] = "Software\\KelGallery\\Gallery\\1.0";

namespace
{
CGalleryRegistryService g_registryService;
CGalleryHostStateGuard g_hostStateGuard;

// The library may query services from its worker thread as well, hence atomic counts.
std::atomic<int> g_registryQueries{0};
std::atomic<int> g_registryReleases{0};
std::atomic<int> g_guardQueries{0};
std::atomic<int> g_guardReleases{0};
std::atomic<int> g_unknownQueries{0};
std::atomic<int> g_guardEnters{0};
std::atomic<int> g_guardLeaves{0};
}

void CGalleryRegistryService::GetRegistryBase(char* buffer)
{
    if (buffer == nullptr)
        return;
    static_assert(sizeof(kGalleryRegistryBase) <= 260, "the library's buffer holds 260 bytes");
    std::memcpy(buffer, kGalleryRegistryBase, sizeof(kGalleryRegistryBase));
}

void CGalleryHostStateGuard::Enter()
{
    ++g_guardEnters;
}

void CGalleryHostStateGuard::Leave()
{
    ++g_guardLeaves;
}

GalleryServiceCounts GetGalleryServiceCounts()
{
    return {g_registryQueries.load(), g_registryReleases.load(), g_guardQueries.load(), g_guardReleases.load(),
            g_unknownQueries.load(), g_guardEnters.load(), g_guardLeaves.load()};
}

int32_t __cdecl GalleryQueryService(int serviceId, void** service)
{
    if (service == nullptr)
        return 0;
    switch (serviceId)
    {
    case KELWINCTRL_SERVICE_REGISTRY:
        ++g_registryQueries;
        *service = static_cast<IKelRegistryService*>(&g_registryService);
        return 1;
    case KELWINCTRL_SERVICE_HOST_STATE_GUARD:
        ++g_guardQueries;
        *service = static_cast<IKelHostStateGuard*>(&g_hostStateGuard);
        return 1;
    case KELHOSTKIT_SERVICE_UNIT_SETTINGS:
        *service = static_cast<IKelUnitSettings*>(GetGalleryUnitSettings());
        return 1;
    default:
        ++g_unknownQueries;
        *service = nullptr;
        return 0;
    }
}

int32_t __cdecl GalleryReleaseService(int serviceId, void* service)
{
    // The services are static objects of the gallery; giving one back only counts.
    if (service == nullptr)
        return 0;
    if (serviceId == KELWINCTRL_SERVICE_REGISTRY)
        ++g_registryReleases;
    else if (serviceId == KELWINCTRL_SERVICE_HOST_STATE_GUARD)
        ++g_guardReleases;
    return 1;
}
