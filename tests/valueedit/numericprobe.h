// Number fields for the tests: any of the library's number fields with its inner state in
// reach, a parent that records what is posted to it, and typing helpers.
#pragma once
#include <afxwin.h>
#include <valueedit.h>

#include "valueeditfixture.h"

#include <string>
#include <vector>

namespace kel_ve_test
{
// A number field of class TField whose behavior state a test may read.
template <class TField>
class CNumericProbe : public TField
{
public:
    using TField::TField;

    // The valid form of the current text, as a set text sees it and as typing sees it (the
    // decimals are not filled while the keys reshape the text).
    CString ValidText() const { return this->_GetValidText(); }
    CString ValidTextWhileTyping()
    {
        int32_t old = this->m_bAdjusting;
        this->m_bAdjusting = 1;
        CString valid = this->_GetValidText();
        this->m_bAdjusting = old;
        return valid;
    }
    uint32_t Flags() const { return this->m_uFlags; }
    bool DeletedArmed() const { return this->m_bDeleted != 0; }
    char NegativeSign() const { return this->m_cNegativeSign; }
    CString NumericText(const char* text, bool math) const { return this->GetNumericText(text, math); }
    CString SeparatedText(const char* text) const { return this->GetSeparatedText(text); }
    CString DoubleText(double value, bool trim) const { return this->GetDoubleText(value, trim); }
    int SeparatorCount() const { return this->GetGroupSeparatorCount(this->GetText()); }
    void ZerosInto(CString& text, int position, int count) const { this->InsertZeros(text, position, count); }
    void PullIntoRange() { this->AdjustWithinRange(); }

    // Calls of the redraw hook.
    int redraws = 0;
    void _Redraw() override
    {
        ++redraws;
        TField::_Redraw();
    }

    // Calls of the error message, counted before the box shows.
    mutable int errorMessages = 0;
    void ShowErrorMessage() const override
    {
        ++errorMessages;
        TField::ShowErrorMessage();
    }
};

using CNumericField = CNumericProbe<CKelValueNumericEdit>;
using CIntegerField = CNumericProbe<CKelValueIntegerEdit>;
using CCurrencyField = CNumericProbe<CKelValueCurrencyEdit>;

// A recording frame that also logs the messages posted to it from the field.
class CValueDeletedFrame : public CRecordingFrame
{
public:
    int valueDeleted = 0;   // KEL_WM_VALUE_DELETED received

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

// A fixture with a frame, a field created in it and a second field to move the focus to.
struct NumericTest : ::testing::Test
{
    CValueDeletedFrame frame;
    CEdit other;   // takes the focus away from the field under test
    void SetUp() override;
    void TearDown() override;
    // Creates the field as child 1 of the frame.
    template <class TField>
    bool Create(TField& field, DWORD extraStyle = 0)
    {
        return field.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL | extraStyle, CRect(10, 10, 250, 34),
                            &frame, 1) != FALSE;
    }
};

// Posts each character as WM_CHAR, as the keyboard's translation would, and pumps.
void Type(CWnd& field, const std::string& chars);
// Presses a key (WM_KEYDOWN through the message loop, with its translation) and pumps.
void Press(CWnd& field, UINT vk);
// Selects from start to end (end -1: to the end of the text).
void Select(CEdit& field, int start, int end);
// The caption of the boxes the library shows in this program.
std::string BoxCaption();
}
