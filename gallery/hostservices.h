// The gallery's host services, reached by the library through pfnQueryService:
//   20  IKelRegistryService   the registry base of the gallery
//   34  IKelHostStateGuard    brackets each host call that runs a selection dialog
//   90  IKelUnitSettings      length unit and input mode for the expression parser
//                             (galleryunits.h)
//
//     void* p = nullptr;
//     GalleryQueryService(KELWINCTRL_SERVICE_REGISTRY, &p);   // p is an IKelRegistryService*
//     GalleryReleaseService(KELWINCTRL_SERVICE_REGISTRY, p);
#pragma once
#include <kelwinctrl.h>

#include <stdint.h>

// The registry base the gallery answers: the library derives the key "KelGallery" and the
// profile "Gallery\1.0" from it.
extern const char kGalleryRegistryBase[];

// Service 20: answers the gallery's registry base.
class CGalleryRegistryService final : public IKelRegistryService
{
public:
    void GetRegistryBase(char* buffer) override;
};

// Service 34: counts how often the library entered and left a host call (see
// GetGalleryServiceCounts). The gallery has no state of its own to protect; the counts show
// that the library brackets its calls.
class CGalleryHostStateGuard final : public IKelHostStateGuard
{
public:
    void Enter() override;
    void Leave() override;
};

// How often each service was handed out and given back.
struct GalleryServiceCounts
{
    int registryQueries;
    int registryReleases;
    int guardQueries;
    int guardReleases;
    int unknownQueries;   // numbers the gallery does not offer; they get null
    int guardEnters;
    int guardLeaves;
};
GalleryServiceCounts GetGalleryServiceCounts();

// The record's entries 9 and 10. Unknown numbers store null.
int32_t __cdecl GalleryQueryService(int serviceId, void** service);
int32_t __cdecl GalleryReleaseService(int serviceId, void* service);
