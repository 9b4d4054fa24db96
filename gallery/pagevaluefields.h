// CPageValueFields: the gallery's page of value fields. It shows plain and coloured fields,
// a length field that reads expressions in the unit chosen on the page (the choice changes
// what the gallery's unit service answers), and a list whose length cells are edited in
// place with an edit that reports back by LVN_ENDLABELEDITA.
#pragma once
#include "pages.h"

#include <afxwin.h>
#include <valueedit.h>

#include <vector>

class CPageValueFields : public CPropertyPage
{
public:
    explicit CPageValueFields(const GalleryHostState& host);

    BOOL OnInitDialog() override;

protected:
    afx_msg void OnUnitChosen();
    afx_msg void OnLengthChange();
    afx_msg void OnShowAsValue();
    afx_msg void OnListDblClk(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg void OnInPlaceEnd(NMHDR* pNMHDR, LRESULT* pResult);
    DECLARE_MESSAGE_MAP()

private:
    // Makes the unit of the checked radio button the current one.
    void ApplyUnitChoice();
    // Shows what the length field's text means in the current unit.
    void ShowLengthValue();
    // Writes the list's length cells from the stored millimetres, in the current unit.
    void FillLengthCells();
    // Opens an in-place edit over the length cell of a row.
    void EditLengthInPlace(int item);

    CKelValueEditEx m_plain;
    CKelValueEditEx m_coloured;
    CKelValueEditEx m_readOnly;
    CKelValueEditEx m_length;
    int m_unitChoice;                  // 0 mm, 1 m, 2 feet-inch
    std::vector<double> m_rowLengthsMm; // the list's lengths, kept in millimetres
};
