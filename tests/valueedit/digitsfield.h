// A field with simple rules for the tests: only digits are valid, and with flag 1 at most
// three of them. It records what reaches its behavior hooks and each WM_SETTEXT pass.
#pragma once
#include <valueedit.h>

#include <string>
#include <vector>

namespace kel_ve_test
{
class CDigitsField : public CKelValueEditEx, public CKelValueEditEx::Behavior
{
public:
    static constexpr uint32_t kAtMostThree = 1;

    CDigitsField() : CKelValueEditEx::Behavior(this) {}

    CString GetValidText() const override { return _GetValidText(); }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    uint32_t Flags() const { return m_uFlags; }
    bool IsCancelled() const { return m_bCancelled > 0; }

    bool refuseDelete = false;               // the behavior refuses the Delete key
    int redraws = 0;                         // calls of _Redraw
    std::vector<UINT> keyDowns;              // keys that reached _OnKeyDown
    std::vector<std::string> setTextPasses;  // the strings of each WM_SETTEXT

protected:
    CString _GetValidText() const override;
    void _OnChar(UINT nChar, UINT nRepCnt, UINT nFlags) override { CKelValueEditEx::Behavior::_OnChar(nChar, nRepCnt, nFlags); }
    void _OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) override;
    void _Redraw() override;

    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags) { _OnChar(nChar, nRepCnt, nFlags); }
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) { _OnKeyDown(nChar, nRepCnt, nFlags); }
    afx_msg void OnKillFocus(CWnd* pNewWnd) { _OnKillFocus(pNewWnd); }
    afx_msg LRESULT OnPasteMsg(WPARAM wParam, LPARAM lParam) { return _OnPaste(wParam, lParam); }
    DECLARE_MESSAGE_MAP()
};
}
