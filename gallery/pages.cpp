// The list of the gallery's pages, in the order of their tabs.
#include "pages.h"

#include "pagevaluefields.h"
// BEGIN numbers page
#include "pagenumbers.h"
// END numbers page
#include "pagewelcome.h"

const std::vector<GalleryPageEntry>& GetGalleryPages()
{
    static const std::vector<GalleryPageEntry> pages = {
        {"welcome", &MakeGalleryPage<CPageWelcome>},
        {"valuefields", &MakeGalleryPage<CPageValueFields>},
        {"numbers", &MakeGalleryPage<CPageNumbers>},
    };
    return pages;
}
