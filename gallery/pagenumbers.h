// CPageNumbers: the gallery's page of number fields. A length with a range that is checked
// when the field is left, a count without decimals or sign, a price in the user's currency
// format, and an element number with a prefix and groups; beside each the value the field
// reads as, and below what the page heard of wiped fields.
#pragma once
#include "pages.h"

#include <afxwin.h>
#include <valueedit.h>

class CPageNumbers : public CPropertyPage
{
public:
    explicit CPageNumbers(const GalleryHostState& host);

    BOOL OnInitDialog() override;

protected:
    afx_msg void OnFieldChange();
    afx_msg LRESULT OnValueDeleted(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    // Shows what each field reads as with GetDouble.
    void ShowValues();

    CKelValueNumericEdit m_length;
    CKelValueIntegerEdit m_count;
    CKelValueCurrencyEdit m_price;
    CKelValueNumericEdit m_item;
    int m_deletedReports;   // KEL_WM_VALUE_DELETED received so far
};
