// The list of the gallery's pages, in the order of their tabs.
#include "pages.h"

#include "pagenumbers.h"
#include "pageproperties.h"
#include "pagevaluefields.h"
#include "pagewelcome.h"

const std::vector<GalleryPageEntry>& GetGalleryPages()
{
    static const std::vector<GalleryPageEntry> pages = {
        {"welcome", &MakeGalleryPage<CPageWelcome>},
        {"valuefields", &MakeGalleryPage<CPageValueFields>},
        {"numbers", &MakeGalleryPage<CPageNumbers>},
        {"properties", &MakeGalleryPage<CPageProperties>},
    };
    return pages;
}
