// CPropertyPage and CPropertySheet over the common property sheet, always created
// modeless so that the framework's own loop (and pre-translation) runs a modal sheet.
#include "kelfw/fwdialog.h"

#include "kelfw/fwapp.h"
#include "modalloop.h"

#include <algorithm>

namespace
{
// Page dialog procedure: attaches the page if the creation hook did not, then initialises it.
INT_PTR CALLBACK AfxPageDlgProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_INITDIALOG)
        return 0;
    AfxUnhookWindowCreate();
    if (CWnd::FromHandlePermanent(hWnd) == nullptr)
    {
        const PROPSHEETPAGEA* pPsp = reinterpret_cast<const PROPSHEETPAGEA*>(lParam);
        CPropertyPage* pPage = reinterpret_cast<CPropertyPage*>(pPsp->lParam);
        if (pPage == nullptr || !pPage->SubclassWindow(hWnd))
            return 1;
    }
    return CDialog::AfxDlgProc(hWnd, message, wParam, lParam);
}
}

// ---------------------------------------------------------------- CPropertyPage

CPropertyPage::CPropertyPage()
{
    CommonConstruct(nullptr, 0);
}

CPropertyPage::CPropertyPage(UINT nIDTemplate, UINT nIDCaption)
{
    CommonConstruct(MAKEINTRESOURCEA(nIDTemplate), nIDCaption);
    m_nIDHelp = nIDTemplate;
}

CPropertyPage::CPropertyPage(LPCTSTR lpszTemplateName, UINT nIDCaption)
{
    CommonConstruct(lpszTemplateName, nIDCaption);
}

CPropertyPage::~CPropertyPage() = default;

void CPropertyPage::CommonConstruct(LPCTSTR lpszTemplateName, UINT nIDCaption)
{
    ZeroMemory(&m_psp, sizeof(m_psp));
    m_psp.dwSize = sizeof(m_psp);
    m_psp.dwFlags = PSP_USECALLBACK;
    m_psp.hInstance = AfxGetResourceHandle();
    m_psp.pszTemplate = lpszTemplateName;
    m_psp.pfnDlgProc = &AfxPageDlgProc;
    m_psp.lParam = reinterpret_cast<LPARAM>(this);
    m_psp.pfnCallback = &PropPageCallback;
    m_lpszTemplateName = lpszTemplateName;
    if (nIDCaption != 0 && m_strCaption.LoadString(nIDCaption))
    {
        m_psp.pszTitle = m_strCaption;
        m_psp.dwFlags |= PSP_USETITLE;
    }
}

void CPropertyPage::ConstructIndirect(LPCDLGTEMPLATE lpDialogTemplate, LPCTSTR lpszCaption)
{
    m_lpDialogTemplate = lpDialogTemplate;
    m_lpszTemplateName = nullptr;
    m_psp.dwFlags |= PSP_DLGINDIRECT;
    m_psp.pResource = lpDialogTemplate;
    if (lpszCaption != nullptr)
        SetCaption(lpszCaption);
}

void CPropertyPage::SetCaption(LPCTSTR lpszCaption)
{
    m_strCaption = lpszCaption;
    m_psp.pszTitle = m_strCaption;
    m_psp.dwFlags |= PSP_USETITLE;
}

UINT CALLBACK CPropertyPage::PropPageCallback(HWND, UINT message, LPPROPSHEETPAGEA pPropPage)
{
    // The page's dialog is created right after this: hook it so that it reaches the object
    // from its first message on.
    if (message == PSPCB_CREATE)
        AfxHookWindowCreate(reinterpret_cast<CPropertyPage*>(pPropPage->lParam));
    return 1;
}

BOOL CPropertyPage::OnSetActive()
{
    return TRUE;
}

BOOL CPropertyPage::OnKillActive()
{
    return UpdateData(TRUE);
}

void CPropertyPage::OnOK()
{
}

void CPropertyPage::OnCancel()
{
}

BOOL CPropertyPage::OnApply()
{
    OnOK();
    return TRUE;
}

void CPropertyPage::OnReset()
{
    OnCancel();
}

void CPropertyPage::SetModified(BOOL bChanged)
{
    HWND hWndSheet = ::GetParent(m_hWnd);
    if (hWndSheet == nullptr)
        return;
    ::SendMessageA(hWndSheet, bChanged ? PSM_CHANGED : PSM_UNCHANGED, reinterpret_cast<WPARAM>(m_hWnd), 0);
}

CPropertySheet* CPropertyPage::GetParentSheet() const
{
    return dynamic_cast<CPropertySheet*>(CWnd::FromHandlePermanent(::GetParent(m_hWnd)));
}

BOOL CPropertyPage::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    NMHDR* pNMHDR = reinterpret_cast<NMHDR*>(lParam);
    if (pNMHDR->hwndFrom != ::GetParent(m_hWnd))
        return CDialog::OnNotify(wParam, lParam, pResult);
    // Notifications of the sheet to its page.
    LRESULT lResult = 0;
    switch (pNMHDR->code)
    {
    case PSN_SETACTIVE:
        lResult = OnSetActive() ? 0 : -1;
        break;
    case PSN_KILLACTIVE:
        lResult = OnKillActive() ? FALSE : TRUE;
        break;
    case PSN_APPLY:
        lResult = OnApply() ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE;
        break;
    case PSN_RESET:
        OnReset();
        break;
    default:
        return CDialog::OnNotify(wParam, lParam, pResult);
    }
    *pResult = lResult;
    ::SetWindowLongPtrA(m_hWnd, DWLP_MSGRESULT, lResult);
    return TRUE;
}

BOOL CPropertyPage::PreTranslateMessage(MSG*)
{
    // The sheet runs the dialog keys for all its pages.
    return FALSE;
}

// ---------------------------------------------------------------- CPropertySheet

CPropertySheet::CPropertySheet(UINT nIDCaption, CWnd* pParentWnd, UINT iSelectPage)
    : m_psh(), m_pParentWnd(pParentWnd), m_nModalResult(-1), m_bModeless(false)
{
    m_strCaption.LoadString(nIDCaption);
    m_psh.dwSize = sizeof(m_psh);
    m_psh.dwFlags = PSH_PROPSHEETPAGE;
    m_psh.nStartPage = iSelectPage;
}

CPropertySheet::CPropertySheet(LPCTSTR pszCaption, CWnd* pParentWnd, UINT iSelectPage)
    : m_psh(), m_strCaption(pszCaption), m_pParentWnd(pParentWnd), m_nModalResult(-1), m_bModeless(false)
{
    m_psh.dwSize = sizeof(m_psh);
    m_psh.dwFlags = PSH_PROPSHEETPAGE;
    m_psh.nStartPage = iSelectPage;
}

CPropertySheet::~CPropertySheet()
{
    if (m_hWnd != nullptr && FromHandlePermanent(m_hWnd) == this)
        DestroyWindow();
}

void CPropertySheet::AddPage(CPropertyPage* pPage)
{
    m_pages.push_back(pPage);
    if (m_hWnd != nullptr)
    {
        HPROPSHEETPAGE hPage = ::CreatePropertySheetPageA(&pPage->m_psp);
        ::SendMessageA(m_hWnd, PSM_ADDPAGE, 0, reinterpret_cast<LPARAM>(hPage));
    }
}

void CPropertySheet::RemovePage(CPropertyPage* pPage)
{
    int nPage = GetPageIndex(pPage);
    if (nPage >= 0)
        RemovePage(nPage);
}

void CPropertySheet::RemovePage(int nPage)
{
    if (nPage < 0 || nPage >= GetPageCount())
        return;
    if (m_hWnd != nullptr)
        ::SendMessageA(m_hWnd, PSM_REMOVEPAGE, static_cast<WPARAM>(nPage), 0);
    m_pages.erase(m_pages.begin() + nPage);
}

int CPropertySheet::GetPageCount() const
{
    return static_cast<int>(m_pages.size());
}

CPropertyPage* CPropertySheet::GetPage(int nPage) const
{
    return nPage >= 0 && nPage < GetPageCount() ? m_pages[static_cast<size_t>(nPage)] : nullptr;
}

int CPropertySheet::GetPageIndex(CPropertyPage* pPage) const
{
    auto it = std::find(m_pages.begin(), m_pages.end(), pPage);
    return it == m_pages.end() ? -1 : static_cast<int>(it - m_pages.begin());
}

int CPropertySheet::GetActiveIndex() const
{
    if (m_hWnd == nullptr)
        return static_cast<int>(m_psh.nStartPage);
    HWND hWndTab = reinterpret_cast<HWND>(::SendMessageA(m_hWnd, PSM_GETTABCONTROL, 0, 0));
    return static_cast<int>(::SendMessageA(hWndTab, TCM_GETCURSEL, 0, 0));
}

CPropertyPage* CPropertySheet::GetActivePage() const
{
    return GetPage(GetActiveIndex());
}

BOOL CPropertySheet::SetActivePage(int nPage)
{
    if (m_hWnd == nullptr)
    {
        m_psh.nStartPage = static_cast<UINT>(nPage);
        return TRUE;
    }
    return static_cast<BOOL>(::SendMessageA(m_hWnd, PSM_SETCURSEL, static_cast<WPARAM>(nPage), 0));
}

BOOL CPropertySheet::SetActivePage(CPropertyPage* pPage)
{
    int nPage = GetPageIndex(pPage);
    return nPage >= 0 && SetActivePage(nPage);
}

void CPropertySheet::SetTitle(LPCTSTR lpszText, UINT nStyle)
{
    m_strCaption = lpszText;
    if (m_hWnd != nullptr)
        ::SendMessageA(m_hWnd, PSM_SETTITLEA, nStyle, reinterpret_cast<LPARAM>(lpszText));
}

CWnd* CPropertySheet::GetTabControl() const
{
    return CWnd::FromHandle(reinterpret_cast<HWND>(::SendMessageA(m_hWnd, PSM_GETTABCONTROL, 0, 0)));
}

void CPropertySheet::PressButton(int nButton)
{
    ::SendMessageA(m_hWnd, PSM_PRESSBUTTON, static_cast<WPARAM>(nButton), 0);
}

void CPropertySheet::BuildPropPageArray()
{
    m_pageArray.clear();
    for (CPropertyPage* pPage : m_pages)
        m_pageArray.push_back(pPage->m_psp);
    m_psh.dwFlags |= PSH_PROPSHEETPAGE | PSH_MODELESS;
    m_psh.nPages = static_cast<UINT>(m_pageArray.size());
    m_psh.ppsp = m_pageArray.data();
    m_psh.pszCaption = m_strCaption;
    m_psh.hInstance = AfxGetResourceHandle();
}

BOOL CPropertySheet::Create(CWnd* pParentWnd, DWORD dwStyle, DWORD dwExStyle)
{
    if (m_hWnd != nullptr)
        return FALSE;
    if (pParentWnd != nullptr)
        m_pParentWnd = pParentWnd;
    m_bModeless = true;
    BuildPropPageArray();
    m_psh.hwndParent = m_pParentWnd->GetSafeHwnd();
    AfxHookWindowCreate(this);
    HWND hWnd = reinterpret_cast<HWND>(::PropertySheetA(&m_psh));
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();
    if (hWnd == nullptr || m_hWnd == nullptr)
        return FALSE;
    if (dwStyle != static_cast<DWORD>(-1))
        ModifyStyle(0, dwStyle);
    if (dwExStyle != 0)
        ModifyStyleEx(0, dwExStyle);
    OnInitDialog();
    return TRUE;
}

BOOL CPropertySheet::OnInitDialog()
{
    return TRUE;
}

INT_PTR CPropertySheet::DoModal()
{
    CModalOwner owner(m_pParentWnd->GetSafeHwnd());
    m_nModalResult = -1;
    CWnd* pOldParent = m_pParentWnd;
    m_pParentWnd = CWnd::FromHandle(owner.Get());
    if (Create(m_pParentWnd))
    {
        m_bModeless = false;
        struct Ctx
        {
            static BOOL Continue(void* p) { return static_cast<CPropertySheet*>(p)->ContinueModal(); }
        };
        if (AfxRunModalLoop(m_hWnd, true, &Ctx::Continue, this) == -1)
            m_nModalResult = -1;
        ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                       SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
    }
    m_pParentWnd = pOldParent;
    owner.Release(m_hWnd);
    DestroyWindow();
    return m_nModalResult;
}

BOOL CPropertySheet::ContinueModal()
{
    if (m_hWnd == nullptr || m_nModalResult != -1)
        return FALSE;
    // A modeless sheet reports that it is done by having no current page any more. It may
    // have been closed without a WM_COMMAND passing OnCommand (PSM_PRESSBUTTON runs the
    // button inside the sheet), so ask the sheet whether OK closed it (a positive result).
    if (::SendMessageA(m_hWnd, PSM_GETCURRENTPAGEHWND, 0, 0) == 0)
    {
        m_nModalResult = ::SendMessageA(m_hWnd, PSM_GETRESULT, 0, 0) > 0 ? IDOK : IDCANCEL;
        return FALSE;
    }
    return TRUE;
}

BOOL CPropertySheet::OnCommand(WPARAM wParam, LPARAM lParam)
{
    UINT nID = LOWORD(wParam);
    if (HIWORD(wParam) == BN_CLICKED && (nID == IDOK || nID == IDCANCEL))
    {
        // Let the sheet run its pages first; it closes only if they agree.
        Default();
        if (::SendMessageA(m_hWnd, PSM_GETCURRENTPAGEHWND, 0, 0) == 0)
            m_nModalResult = static_cast<int>(nID);
        return TRUE;
    }
    return CWnd::OnCommand(wParam, lParam);
}

void CPropertySheet::EndDialog(int nEndID)
{
    m_nModalResult = nEndID;
    if (m_bModeless)
        DestroyWindow();
    else
        ::PostMessageA(m_hWnd, WM_NULL, 0, 0);
}

BOOL CPropertySheet::PreTranslateMessage(MSG* pMsg)
{
    if (m_hWnd == nullptr)
        return FALSE;
    bool bInput = (pMsg->message >= WM_KEYFIRST && pMsg->message <= WM_KEYLAST);
    if (!bInput)
        return FALSE;
    return static_cast<BOOL>(::SendMessageA(m_hWnd, PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(pMsg)));
}
