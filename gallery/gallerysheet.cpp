// CGallerySheet: the gallery's property sheet, which is also the host's main window.
#include "gallerysheet.h"

#include "hostentries.h"

BEGIN_MESSAGE_MAP(CGallerySheet, CPropertySheet)
    ON_WM_DESTROY()
END_MESSAGE_MAP()

CGallerySheet::CGallerySheet(const GalleryHostState& host) : CPropertySheet("KelWinCtrl Gallery")
{
    // Nothing on the pages is applied anywhere; OK and Cancel both just close the gallery.
    m_psh.dwFlags |= PSH_NOAPPLYNOW;
    for (const GalleryPageEntry& entry : GetGalleryPages())
    {
        m_ownedPages.push_back(entry.create(host));
        m_pageNames.push_back(entry.name);
        AddPage(m_ownedPages.back().get());
    }
}

CGallerySheet::~CGallerySheet()
{
    // The sheet's window goes before the pages it shows.
    if (m_hWnd != nullptr)
        DestroyWindow();
}

const char* CGallerySheet::GetPageName(int nPage) const
{
    if (nPage < 0 || nPage >= static_cast<int>(m_pageNames.size()))
        return "";
    return m_pageNames[static_cast<size_t>(nPage)];
}

BOOL CGallerySheet::OnInitDialog()
{
    // From now on the library's walks over parent windows end at the sheet.
    SetGalleryMainWindow(m_hWnd);
    return CPropertySheet::OnInitDialog();
}

void CGallerySheet::OnDestroy()
{
    SetGalleryMainWindow(nullptr);
    CPropertySheet::OnDestroy();
}
