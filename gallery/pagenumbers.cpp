// CPageNumbers: number, integer and currency fields, their values and the wiped-field report.
#include "pagenumbers.h"

#include "resource.h"

#include <behaviors.h>

namespace
{
using Num = CKelValueEditEx::NumericBehavior;
const uint32_t kEmptyBits = Num::NumBeepIfEmpty | Num::NumFixIfEmpty | Num::NumFocusIfEmpty | Num::NumMessageIfEmpty;
}

BEGIN_MESSAGE_MAP(CPageNumbers, CPropertyPage)
    ON_EN_CHANGE(IDC_NUM_LENGTH, &CPageNumbers::OnFieldChange)
    ON_EN_CHANGE(IDC_NUM_COUNT, &CPageNumbers::OnFieldChange)
    ON_EN_CHANGE(IDC_NUM_PRICE, &CPageNumbers::OnFieldChange)
    ON_EN_CHANGE(IDC_NUM_ITEM, &CPageNumbers::OnFieldChange)
    ON_MESSAGE(KEL_WM_VALUE_DELETED, &CPageNumbers::OnValueDeleted)
END_MESSAGE_MAP()

CPageNumbers::CPageNumbers(const GalleryHostState&)
    : CPropertyPage(IDD_PAGE_NUMBERS), m_length(3, 2), m_count(-4), m_item(9, 0), m_deletedReports(0)
{
}

BOOL CPageNumbers::OnInitDialog()
{
    CPropertyPage::OnInitDialog();

    // The library's defaults: a value out of range beeps, is pulled in, is named, and the
    // focus stays; so does an empty field.
    m_length.SubclassDlgItem(IDC_NUM_LENGTH, this);
    m_length.SetRange(0.5, 100.0);
    m_length.SetDouble(12.75);

    // The other fields may be left empty, so that a wipe is only reported.
    m_count.SubclassDlgItem(IDC_NUM_COUNT, this);
    m_count.ModifyFlags(0, kEmptyBits);
    m_count.SetInt(48);

    m_price.SubclassDlgItem(IDC_NUM_PRICE, this);
    m_price.ModifyFlags(0, kEmptyBits);
    m_price.SetDouble(1249.9);
    char decimal = 0, group = 0;
    m_price.GetSeparators(&decimal, &group);
    CString format;
    format.Format("The user's currency: \"%s\", decimal \"%c\", group \"%c\".",
                  static_cast<const char*>(m_price.GetMask()), decimal, group != 0 ? group : ' ');
    SetDlgItemText(IDC_NUM_PRICE_FORMAT, format);

    m_item.SubclassDlgItem(IDC_NUM_ITEM, this);
    m_item.ModifyFlags(0, kEmptyBits);
    m_item.SetMask("Nr. ###,###,###");
    m_item.SetInt(1204587);

    ShowValues();
    SetDlgItemText(IDC_NUM_DELETED, "No field wiped yet.");
    return TRUE;
}

void CPageNumbers::ShowValues()
{
    struct Readout
    {
        const CKelValueEditEx::NumericBehavior* field;
        const CWnd* window;
        int id;
    } readouts[] = {
        {&m_length, &m_length, IDC_NUM_LENGTH_VALUE},
        {&m_count, &m_count, IDC_NUM_COUNT_VALUE},
        {&m_price, &m_price, IDC_NUM_PRICE_VALUE},
        {&m_item, &m_item, IDC_NUM_ITEM_VALUE},
    };
    for (const Readout& readout : readouts)
    {
        if (readout.window->m_hWnd == nullptr)
            continue;
        CString text;
        text.Format("GetDouble() = %.10g", readout.field->GetDouble());
        SetDlgItemText(readout.id, text);
    }
}

void CPageNumbers::OnFieldChange()
{
    ShowValues();
}

LRESULT CPageNumbers::OnValueDeleted(WPARAM, LPARAM)
{
    // The message names no field: the wiped one is the field that is empty now.
    ++m_deletedReports;
    struct Named
    {
        CKelValueEditEx::NumericBehavior* field;
        CKelValueEditEx* window;
        const char* name;
    } fields[] = {
        {&m_length, &m_length, "Length"}, {&m_count, &m_count, "Count"},
        {&m_price, &m_price, "Price"},    {&m_item, &m_item, "Element"},
    };
    CString report;
    report.Format("KEL_WM_VALUE_DELETED received (%d so far).", m_deletedReports);
    for (const Named& named : fields)
    {
        if (!named.window->GetText().IsEmpty())
            continue;
        CString deleted;
        named.field->GetDeletedItemText(deleted);
        if (deleted.IsEmpty())
            continue;
        CString line;
        line.Format("\n%s was wiped; it held \"%s\".", named.name, static_cast<const char*>(deleted));
        report += line;
    }
    SetDlgItemText(IDC_NUM_DELETED, report);
    return 0;
}
