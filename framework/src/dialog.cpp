// CDialog: creation from templates, the modal loop, and the dialog procedure.
#include "kelfw/fwdialog.h"

#include "kelfw/fwapp.h"
#include "modalloop.h"

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_COMMAND(IDOK, &CDialog::OnOK)
    ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
END_MESSAGE_MAP()

CDialog::CDialog()
    : m_lpszTemplateName(nullptr), m_nIDHelp(0), m_lpDialogTemplate(nullptr), m_pParentWnd(nullptr),
      m_nModalResult(-1), m_bContinueModal(false), m_bInModalLoop(false)
{
}

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog()
{
    m_lpszTemplateName = MAKEINTRESOURCEA(nIDTemplate);
    m_nIDHelp = nIDTemplate;
    m_pParentWnd = pParentWnd;
}

CDialog::CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd) : CDialog()
{
    m_lpszTemplateName = lpszTemplateName;
    m_pParentWnd = pParentWnd;
}

CDialog::~CDialog()
{
    if (m_hWnd != nullptr && FromHandlePermanent(m_hWnd) == this)
        DestroyWindow();
}

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void*)
{
    m_lpDialogTemplate = lpDialogTemplate;
    m_lpszTemplateName = nullptr;
    m_pParentWnd = pParentWnd;
    return TRUE;
}

LPCDLGTEMPLATE CDialog::LoadTemplate(HINSTANCE* phInst) const
{
    HINSTANCE hInst = AfxGetResourceHandle();
    HRSRC hResource = ::FindResourceA(hInst, m_lpszTemplateName, MAKEINTRESOURCEA(5) /* RT_DIALOG */);
    if (hResource == nullptr)
        return nullptr;
    HGLOBAL hTemplate = ::LoadResource(hInst, hResource);
    if (hTemplate == nullptr)
        return nullptr;
    *phInst = hInst;
    return static_cast<LPCDLGTEMPLATE>(::LockResource(hTemplate));
}

BOOL CDialog::CreateDlgIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst)
{
    if (lpDialogTemplate == nullptr || m_hWnd != nullptr)
        return FALSE;
    AfxHookWindowCreate(this);
    HWND hWnd = ::CreateDialogIndirectParamA(hInst, lpDialogTemplate, pParentWnd->GetSafeHwnd(), &AfxDlgProc, 0);
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();
    if (hWnd == nullptr && m_hWnd != nullptr)
        Detach();
    return hWnd != nullptr;
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd)
{
    return Create(MAKEINTRESOURCEA(nIDTemplate), pParentWnd);
}

BOOL CDialog::Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd)
{
    m_lpszTemplateName = lpszTemplateName;
    if (IS_INTRESOURCE(lpszTemplateName))
        m_nIDHelp = static_cast<UINT>(reinterpret_cast<UINT_PTR>(lpszTemplateName));
    if (pParentWnd != nullptr)
        m_pParentWnd = pParentWnd;
    HINSTANCE hInst = nullptr;
    LPCDLGTEMPLATE lpTemplate = LoadTemplate(&hInst);
    return CreateDlgIndirect(lpTemplate, m_pParentWnd, hInst);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void*)
{
    if (pParentWnd != nullptr)
        m_pParentWnd = pParentWnd;
    return CreateDlgIndirect(lpDialogTemplate, m_pParentWnd, AfxGetResourceHandle());
}

INT_PTR CDialog::DoModal()
{
    HINSTANCE hInst = AfxGetResourceHandle();
    LPCDLGTEMPLATE lpTemplate = m_lpDialogTemplate;
    if (m_lpszTemplateName != nullptr)
        lpTemplate = LoadTemplate(&hInst);
    if (lpTemplate == nullptr)
        return -1;

    // The owner is disabled while the dialog runs, as with any modal window.
    CModalOwner owner(m_pParentWnd->GetSafeHwnd());

    m_nModalResult = -1;
    m_bContinueModal = true;
    m_bInModalLoop = true;
    if (CreateDlgIndirect(lpTemplate, CWnd::FromHandle(owner.Get()), hInst))
    {
        if (m_bContinueModal)
            RunModalLoop(MLF_SHOWONIDLE);
        if (m_hWnd != nullptr)
            ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                           SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
    }
    m_bInModalLoop = false;
    m_bContinueModal = false;

    owner.Release(m_hWnd);
    DestroyWindow();
    return m_nModalResult;
}

int CDialog::RunModalLoop(DWORD dwFlags)
{
    struct Ctx
    {
        static BOOL Continue(void* p) { return static_cast<CDialog*>(p)->ContinueModal(); }
    };
    int nResult = AfxRunModalLoop(m_hWnd, (dwFlags & MLF_SHOWONIDLE) != 0, &Ctx::Continue, this);
    if (nResult == -1 && m_bContinueModal)
    {
        m_bContinueModal = false;   // WM_QUIT ended the loop
        m_nModalResult = -1;
    }
    return m_nModalResult;
}

BOOL CDialog::ContinueModal()
{
    return m_bContinueModal;
}

void CDialog::EndModalLoop(int nResult)
{
    m_nModalResult = nResult;
    if (m_bContinueModal)
    {
        m_bContinueModal = false;
        ::PostMessageA(m_hWnd, WM_NULL, 0, 0);   // wake the loop
    }
}

void CDialog::EndDialog(int nResult)
{
    if (m_bInModalLoop)
        EndModalLoop(nResult);
    else
        ::EndDialog(m_hWnd, nResult);
}

BOOL CDialog::OnInitDialog()
{
    return TRUE;
}

void CDialog::OnOK()
{
    if (!UpdateData(TRUE))
        return;
    EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg)
{
    // Keyboard and mouse input of the dialog and its controls gets the dialog keys (Tab,
    // Return, Escape, mnemonics).
    bool bInput = (pMsg->message >= WM_KEYFIRST && pMsg->message <= WM_KEYLAST) ||
                  (pMsg->message >= WM_MOUSEFIRST && pMsg->message <= WM_MOUSELAST);
    if (!bInput || m_hWnd == nullptr)
        return FALSE;
    if (pMsg->hwnd != m_hWnd && !::IsChild(m_hWnd, pMsg->hwnd))
        return FALSE;
    return ::IsDialogMessageA(m_hWnd, pMsg);
}

void CDialog::NextDlgCtrl() const
{
    ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, 0, 0);
}

void CDialog::PrevDlgCtrl() const
{
    ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, 1, 0);
}

void CDialog::GotoDlgCtrl(CWnd* pWndCtrl)
{
    ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(pWndCtrl->GetSafeHwnd()), 1);
}

void CDialog::SetDefID(UINT nID)
{
    ::SendMessageA(m_hWnd, DM_SETDEFID, nID, 0);
}

DWORD CDialog::GetDefID() const
{
    return static_cast<DWORD>(::SendMessageA(m_hWnd, DM_GETDEFID, 0, 0));
}

void CDialog::MapDialogRect(LPRECT lpRect) const
{
    ::MapDialogRect(m_hWnd, lpRect);
}

INT_PTR CALLBACK CDialog::AfxDlgProc(HWND hWnd, UINT message, WPARAM, LPARAM)
{
    if (message != WM_INITDIALOG)
        return 0;
    // Every window that uses this procedure was attached to a CDialog by the creation hook.
    CDialog* pDlg = static_cast<CDialog*>(CWnd::FromHandlePermanent(hWnd));
    if (pDlg == nullptr)
        return 1;
    BOOL bResult = TRUE;
    try
    {
        bResult = pDlg->OnInitDialog();
    }
    catch (...)
    {
        bResult = TRUE;
    }
    return bResult;
}
