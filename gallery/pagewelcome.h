// CPageWelcome: the gallery's first page. It says what the library is and reads out the
// state of the host as the library took it: the answer of KelWinCtrlInic, the registry key
// and profile the library derived from service 20, the use of the services, the host's
// scales and colours, and samples drawn by its drawing entries.
#pragma once
#include "colourstrip.h"
#include "hostsamples.h"
#include "pages.h"

#include <afxwin.h>

class CPageWelcome : public CPropertyPage
{
public:
    explicit CPageWelcome(const GalleryHostState& host);

    BOOL OnInitDialog() override;
    BOOL OnSetActive() override;

private:
    // Reads the state again; the service counts change as the library works.
    void Refresh();

    const GalleryHostState& m_host;
    CHostColourStrip m_colourStrip;
    CHostSampleStrip m_samples;
};
