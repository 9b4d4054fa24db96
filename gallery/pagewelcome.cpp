// CPageWelcome: what the library is, and the host state it was started with.
#include "pagewelcome.h"

#include "hostservices.h"
#include "resource.h"

namespace
{
// The colour numbers the strip shows.
const int kFirstColour = 0;
const int kLastColour = 15;

CString TextOrNone(LPCTSTR psz)
{
    return psz != nullptr && *psz != '\0' ? CString(psz) : CString("(none)");
}

// The host's scale list, read through its entry as the library reads it.
CString ListScales(PFN_KEL_GETMASSTABTEXT pfnGetMasstabText)
{
    if (pfnGetMasstabText == nullptr)
        return CString("(no scale entry)");
    CString list;
    char buffer[254] = {};
    for (int i = 0; pfnGetMasstabText(buffer, static_cast<int>(sizeof(buffer)), i) != -1; ++i)
    {
        if (i > 0)
            list += ",  ";
        list += buffer;
    }
    return list.IsEmpty() ? CString("(empty)") : list;
}
}

CPageWelcome::CPageWelcome(const GalleryHostState& host) : CPropertyPage(IDD_PAGE_WELCOME), m_host(host)
{
}

BOOL CPageWelcome::OnInitDialog()
{
    CPropertyPage::OnInitDialog();
    m_colourStrip.SubclassDlgItem(IDC_WELCOME_COLOURS, this);
    m_colourStrip.SetColourSource(m_host.record.pfnGetColorRgb, kFirstColour, kLastColour);
    m_samples.SubclassDlgItem(IDC_WELCOME_SAMPLES, this);
    m_samples.SetHostRecord(&m_host.record);
    Refresh();
    return TRUE;
}

BOOL CPageWelcome::OnSetActive()
{
    Refresh();
    return CPropertyPage::OnSetActive();
}

void CPageWelcome::Refresh()
{
    CString text;
    if (m_host.inicResult == 1)
        text.Format("answered 1, the record was taken (%u bytes, version 0x%08X)",
                    static_cast<unsigned>(m_host.record.cbSize), static_cast<unsigned>(m_host.record.dwVersion));
    else
        text.Format("answered %u: the library refused the record", static_cast<unsigned>(m_host.inicResult));
    SetDlgItemText(IDC_WELCOME_INIC, text);

    SetDlgItemText(IDC_WELCOME_BASE, kGalleryRegistryBase);
    CKelWinApp* pLibraryApp = GetKelWinApp();
    SetDlgItemText(IDC_WELCOME_KEY, pLibraryApp != nullptr ? TextOrNone(pLibraryApp->m_pszRegistryKey)
                                                           : CString("(no application object)"));
    SetDlgItemText(IDC_WELCOME_PROFILE, pLibraryApp != nullptr ? TextOrNone(pLibraryApp->m_pszProfileName)
                                                               : CString("(no application object)"));

    GalleryServiceCounts counts = GetGalleryServiceCounts();
    text.Format("registry (20): handed out %d, given back %d\n"
                "state guard (34): handed out %d, given back %d, Enter %d, Leave %d",
                counts.registryQueries, counts.registryReleases, counts.guardQueries, counts.guardReleases,
                counts.guardEnters, counts.guardLeaves);
    if (counts.unknownQueries > 0)
        text.AppendFormat("; other numbers asked for: %d", counts.unknownQueries);
    SetDlgItemText(IDC_WELCOME_SERVICES, text);

    SetDlgItemText(IDC_WELCOME_SCALES, ListScales(m_host.record.pfnGetMasstabText));
}
