// Dialogs: modal and modeless, from a resource template or a template built in memory;
// property pages and the property sheet that holds them.
//
//     CDialog dlg(IDD_ABOUT, pParent);
//     if (dlg.DoModal() == IDOK) { ... }
//
// DoModal runs the framework's own modal loop, so PreTranslateMessage of the dialog and of
// its controls sees every message, as in any other loop of the framework.
#pragma once
#include "fwdefs.h"
#include "fwwnd.h"

#include <prsht.h>
#include <vector>

// Flags of RunModalLoop.
#define MLF_NOIDLEMSG 0x0001
#define MLF_NOKICKIDLE 0x0002
#define MLF_SHOWONIDLE 0x0004

class KELFW_API CDialog : public CWnd
{
public:
    CDialog();
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    explicit CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    ~CDialog() override;

    // Modal
    BOOL InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr, void* lpDialogInit = nullptr);
    virtual INT_PTR DoModal();
    void EndDialog(int nResult);

    // Modeless
    virtual BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    virtual BOOL Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd = nullptr);
    virtual BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = nullptr,
                                void* lpDialogInit = nullptr);

    // Operations
    void NextDlgCtrl() const;
    void PrevDlgCtrl() const;
    void GotoDlgCtrl(CWnd* pWndCtrl);
    void SetDefID(UINT nID);
    DWORD GetDefID() const;
    void MapDialogRect(LPRECT lpRect) const;

    // Overridables: override as required
    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    BOOL PreTranslateMessage(MSG* pMsg) override;

    // The modal loop; ends when EndModalLoop is called. Not meant to be overridden.
    int RunModalLoop(DWORD dwFlags = 0);
    virtual BOOL ContinueModal();
    virtual void EndModalLoop(int nResult);

    // The dialog procedure of every dialog and page of the framework.
    static INT_PTR CALLBACK AfxDlgProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);

    LPCTSTR m_lpszTemplateName;        // resource template (name or MAKEINTRESOURCE id)
    UINT m_nIDHelp;
    LPCDLGTEMPLATE m_lpDialogTemplate;  // in-memory template, when no resource is used
    CWnd* m_pParentWnd;

protected:
    // Creates the dialog window from a template; the window is attached to this object.
    BOOL CreateDlgIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst);
    // Finds the template resource in the current resource module.
    LPCDLGTEMPLATE LoadTemplate(HINSTANCE* phInst) const;

    static const AFX_MSGMAP* GetThisMessageMap();
    const AFX_MSGMAP* GetMessageMap() const override;

    int m_nModalResult;
    bool m_bContinueModal;
    bool m_bInModalLoop;
};

class CPropertySheet;

class KELFW_API CPropertyPage : public CDialog
{
public:
    explicit CPropertyPage(UINT nIDTemplate, UINT nIDCaption = 0);
    explicit CPropertyPage(LPCTSTR lpszTemplateName, UINT nIDCaption = 0);
    CPropertyPage();
    ~CPropertyPage() override;

    // A page built from an in-memory template (kept by the caller while the sheet lives).
    void ConstructIndirect(LPCDLGTEMPLATE lpDialogTemplate, LPCTSTR lpszCaption = nullptr);
    void SetCaption(LPCTSTR lpszCaption);

    PROPSHEETPAGEA m_psp;

    // Overridables
    virtual BOOL OnSetActive();
    virtual BOOL OnKillActive();
    virtual void OnOK();
    virtual void OnCancel();
    virtual BOOL OnApply();
    virtual void OnReset();
    void SetModified(BOOL bChanged = TRUE);
    CPropertySheet* GetParentSheet() const;

    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

    static UINT CALLBACK PropPageCallback(HWND hWnd, UINT message, LPPROPSHEETPAGEA pPropPage);

private:
    void CommonConstruct(LPCTSTR lpszTemplateName, UINT nIDCaption);
    CString m_strCaption;
};

class KELFW_API CPropertySheet : public CWnd
{
public:
    explicit CPropertySheet(UINT nIDCaption, CWnd* pParentWnd = nullptr, UINT iSelectPage = 0);
    explicit CPropertySheet(LPCTSTR pszCaption, CWnd* pParentWnd = nullptr, UINT iSelectPage = 0);
    ~CPropertySheet() override;

    void AddPage(CPropertyPage* pPage);
    void RemovePage(CPropertyPage* pPage);
    void RemovePage(int nPage);
    int GetPageCount() const;
    CPropertyPage* GetPage(int nPage) const;
    int GetPageIndex(CPropertyPage* pPage) const;
    CPropertyPage* GetActivePage() const;
    int GetActiveIndex() const;
    BOOL SetActivePage(int nPage);
    BOOL SetActivePage(CPropertyPage* pPage);
    void SetTitle(LPCTSTR lpszText, UINT nStyle = 0);
    CWnd* GetTabControl() const;
    void PressButton(int nButton);

    // Modal: runs the framework's modal loop; IDOK or IDCANCEL.
    virtual INT_PTR DoModal();
    // Modeless
    virtual BOOL Create(CWnd* pParentWnd = nullptr, DWORD dwStyle = static_cast<DWORD>(-1), DWORD dwExStyle = 0);
    void EndDialog(int nEndID);

    BOOL PreTranslateMessage(MSG* pMsg) override;
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    virtual BOOL OnInitDialog();

    PROPSHEETHEADERA m_psh;

protected:
    BOOL ContinueModal();
    void BuildPropPageArray();

    std::vector<CPropertyPage*> m_pages;
    std::vector<PROPSHEETPAGEA> m_pageArray;
    CString m_strCaption;
    CWnd* m_pParentWnd;
    int m_nModalResult;
    bool m_bModeless;
};
