// CGallerySheet: the gallery's main window, a property sheet with one page per entry of
// GetGalleryPages().
//
//     CGallerySheet sheet(hostState);
//     sheet.DoModal();                       // or sheet.Create() for a modeless sheet
#pragma once
#include "pages.h"

#include <afxwin.h>

#include <memory>
#include <vector>

class CGallerySheet : public CPropertySheet
{
public:
    explicit CGallerySheet(const GalleryHostState& host);
    ~CGallerySheet() override;

    // The short name of page nPage, as listed in GetGalleryPages().
    const char* GetPageName(int nPage) const;

    BOOL OnInitDialog() override;

protected:
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

private:
    std::vector<std::unique_ptr<CPropertyPage>> m_ownedPages;
    std::vector<const char*> m_pageNames;
};
