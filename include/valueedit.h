// KelWinCtrl value fields: the single-line edit in its layers, and text to number and back.
//
// Classes in this header:
//   CKelValueEdit                      the edit with in-place mode and the number bridge
//   CKelValueEditEx                    colours, the clipboard frame and the hooks of the rules
//   CKelValueEditEx::Behavior          base of the behaviors that hold a field's rules
//   CKelValueEditEx::SelectionSaver    puts an edit's selection back at the end of a scope
//   CKelValueNumericEdit               a number field: digits, sign, decimals, grouping, range
//   CKelValueIntegerEdit               a number field without decimal places
//   CKelValueCurrencyEdit              a money field in the user's currency format
//   (the behaviors that hold the fields' rules are in behaviors.h)
//
// A field in a dialog is a member subclassed over the template's edit:
//
//     CKelValueEditEx m_length;
//     m_length.SubclassDlgItem(IDC_LENGTH, this);
//     m_length.SetBackgroundColor(RGB(255, 255, 224));
//     double value = 0;
//     if (m_length.GetItemValue(value)) ...
//
// An in-place edit over a list cell lives on the heap and deletes itself when its window is
// gone; it reports to the list's parent with LVN_ENDLABELEDITA (pszText null on Escape):
//
//     CKelValueEdit* pEdit = new CKelValueEdit(item, subItem);
//     pEdit->Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, cellRect, &list, 1);
#pragma once
#include "kelwinctrl.h"

#include <afxwin.h>

#include <stdint.h>

// ---- text to number and back (numbertext.cpp) ----
// BEGIN number text conversions
// Every number that passes as text goes through these two, so that lengths read and show in
// the user's current unit and input mode. Each call makes a parser of its own, so a change of
// the units takes effect at the next call. flag is handed to the parser (true for lengths).

// Text to number at nDecimals; false when the text is not understood (*value is then as the
// parser left it: set a default before the call).
KELWINCTRL_API bool GetEditValueFromString(const char* text, double* value, bool flag, int nDecimals);
// The same at 4 decimals.
KELWINCTRL_API bool GetEditValueFromString(const char* text, double* value, bool flag);
// Number to text at nDecimals; an empty text when no parser could be made.
KELWINCTRL_API CString GetStringFromEditValue(double value, bool flag, int nDecimals);
// The same at 4 decimals.
KELWINCTRL_API CString GetStringFromEditValue(double value, bool flag);
// value modulo the full circle of the angle unit in *angleDef; the sign follows value, so
// -30 degrees stays -30.
KELWINCTRL_API double RollWinkelValue(double* angleDef, double value);
// END number text conversions

// ---- the edit layers ----

class KELWINCTRL_API CKelValueEdit : public CEdit
{
public:
    CKelValueEdit();
    // An in-place edit for the given list cell.
    CKelValueEdit(int item, int subItem);
    ~CKelValueEdit() override;

    // Creates the stock edit under this object, with the library's module current.
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // Turns the edit into an in-place edit for the given list cell.
    void DoInPlace(int item, int subItem);
    // In place only: takes the parent's font and the focus.
    void Initialize();

    // The number in the text of an LVN_ENDLABELEDITA item, at 4 decimals.
    static bool GetEndlabeleditValue(LVITEMA* item, double* value, bool flag);
    // Shows the value as text at 4 decimals; true.
    bool SetWindowText(double value, bool flag);
    using CEdit::SetWindowText;

    // Return commits: it moves the focus before the dialog sees the key. Escape in place
    // cancels.
    BOOL PreTranslateMessage(MSG* pMsg) override;

    // Handlers; public because the behaviors call them on the control.
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnNcDestroy();
    afx_msg BOOL OnSetfocusReflect();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);

protected:
    // An in-place edit deletes itself here.
    void PostNcDestroy() override;

    bool m_bInPlace;      // floats over a list cell and owns itself
    int32_t m_nItem;      // list row being edited
    int32_t m_nSubItem;   // list column being edited
    int32_t m_bCancelled; // 1 once Escape was pressed in place

    DECLARE_MESSAGE_MAP()
};

class KELWINCTRL_API CKelValueEditEx : public CKelValueEdit
{
public:
    class Behavior;
    class SelectionSaver;
    class NumericBehavior;

    CKelValueEditEx();
    ~CKelValueEditEx() override;

    // Attributes
    CString GetText() const;
    // The text without spaces at either end.
    CString GetTrimmedText() const;
    void SetText(const CString& text);
    void SetWindowText(const char* text);
    using CKelValueEdit::SetWindowText;

    void SetBackgroundColor(uint32_t color);
    // Without a brush of its own, the control takes the background colour of its device
    // context and keeps a brush of it from then on.
    uint32_t GetBackgroundColor() const;
    void SetTextColor(uint32_t color);
    // Without a stored colour, the control takes the text colour of its device context and
    // keeps it.
    uint32_t GetTextColor() const;
    bool IsReadOnly() const;

    // Text to number: 1, or 0 with a beep when the text is no number (value then 0.0).
    int32_t GetItemValue(double& value);
    int32_t SetItemValue(double value);

    // Hooks of the rules: override as required
    // Replaces the text by its valid form when the two differ.
    virtual void Redraw();
    // The text as the rules accept it; here the text itself.
    virtual CString GetValidText() const;
    // Last veto on a character that the rules let through; here always true.
    virtual bool ShouldEnter(char c) const;

    // Handlers; public because the behaviors call them on the control.
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg LRESULT OnCut(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnPaste(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnClear(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnSetText(WPARAM wParam, LPARAM lParam);

    // Colour requests of the parent, reflected to the control.
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

protected:
    mutable CBrush m_brBackground;   // without a handle until a colour is set or read
    mutable uint32_t m_crText;       // text colour, COLORREF
    mutable uint32_t m_uColorFlags;  // bit 0: m_crText holds a value

    DECLARE_MESSAGE_MAP()
};

// The rules of a field. A behavior does not derive from the window: it keeps a pointer to the
// control it serves and works on it through that pointer. A concrete edit class inherits from
// CKelValueEditEx and one behavior, and redirects its messages to the behavior's hooks.
class KELWINCTRL_API CKelValueEditEx::Behavior
{
public:
    explicit Behavior(CKelValueEditEx* edit);
    virtual ~Behavior();
    Behavior(const Behavior&) = delete;
    Behavior& operator=(const Behavior&) = delete;

    // New flags are (flags & ~remove) | add. False when they did not change; otherwise the
    // text is brought in line with the rules and the answer is true.
    bool ModifyFlags(uint32_t add, uint32_t remove);

protected:
    // Hooks: override as required
    virtual CString _GetValidText() const = 0;
    // Pure, but with a body for subclasses: in place, Escape and Return end the edit; all
    // else goes to the stock edit.
    virtual void _OnChar(UINT nChar, UINT nRepCnt, UINT nFlags) = 0;
    virtual void _OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    virtual void _OnKillFocus(CWnd* pNewWnd);
    virtual LRESULT _OnPaste(WPARAM wParam, LPARAM lParam);
    virtual LRESULT _Default();
    virtual void _Redraw();
    virtual bool _ShouldEnter(char c) const;

    CKelValueEditEx* m_pEdit;   // the control served; not owned
    uint32_t m_uFlags;          // meaning defined by each behavior
};

// Remembers an edit's selection and sets it back when it goes out of scope.
//
//     CKelValueEditEx::SelectionSaver saver(&edit);   // reads the selection
//     edit.SetWindowText("...");                        // would move it
//     // destructor: the selection is back
class KELWINCTRL_API CKelValueEditEx::SelectionSaver
{
public:
    explicit SelectionSaver(CEdit* edit);
    SelectionSaver(CEdit* edit, int start, int end);
    ~SelectionSaver();
    SelectionSaver(const SelectionSaver&) = delete;
    SelectionSaver& operator=(const SelectionSaver&) = delete;

    void MoveTo(int start, int end);
    void MoveBy(int start, int end);
    SelectionSaver& operator+=(int by);
    // Reads the selection again.
    void Update();
    // Leaves the selection alone at the end.
    void Disable();

    int GetStart() const { return m_nStart; }
    int GetEnd() const { return m_nEnd; }

protected:
    CEdit* m_pEdit;
    int m_nStart;
    int m_nEnd;
};

// ---- Numeric fields ----
// The behaviors nest in CKelValueEditEx; behaviors.h holds them and is read here, once the
// classes above are complete.
#define KELWINCTRL_VALUEEDIT_LAYERS_DECLARED
#include "behaviors.h"

// A number field: the text is kept a well-formed number while it is typed, and its range is
// checked when the focus leaves.
//
//     CKelValueNumericEdit m_height(4, 2);    // up to 9999.99
//     m_height.SubclassDlgItem(IDC_HEIGHT, this);
//     m_height.SetRange(0.0, 2500.0);
//     m_height.SetDouble(1250.0);
//     double height = m_height.GetDouble();
//
// When the user wiped the field and left it, the parent receives KEL_WM_VALUE_DELETED (posted)
// and may ask GetDeletedItemText for what stood there.
class KELWINCTRL_API CKelValueNumericEdit : public CKelValueEditEx, public CKelValueEditEx::NumericBehavior
{
public:
    // A negative maxWholeDigits allows no sign.
    CKelValueNumericEdit(int maxWholeDigits, int maxDecimalPlaces);
    ~CKelValueNumericEdit() override;

    // The text as the number rules accept it.
    CString GetValidText() const override;

protected:
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    // Cut is a copy followed by the Delete key, so that the number rules decide what goes.
    afx_msg LRESULT OnCut(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnPaste(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()
};

// A number field without decimal places.
class KELWINCTRL_API CKelValueIntegerEdit : public CKelValueNumericEdit
{
public:
    // A negative maxWholeDigits allows no sign.
    explicit CKelValueIntegerEdit(int maxWholeDigits);
    ~CKelValueIntegerEdit() override;
};

// A money field: 9 whole digits, the currency symbol in front, digits in groups, and the
// decimals filled up when a value is set or the field is left. Symbol, grouping, decimal
// places, symbol placement and separators follow the user's currency settings.
class KELWINCTRL_API CKelValueCurrencyEdit : public CKelValueNumericEdit
{
public:
    CKelValueCurrencyEdit();
    ~CKelValueCurrencyEdit() override;
};
