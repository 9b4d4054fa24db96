// CPageValueFields: value fields, a length field in the chosen unit, in-place list editing.
#include "pagevaluefields.h"

#include "galleryunits.h"
#include "resource.h"

#include <algebraicparser.h>

namespace
{
struct UnitChoice
{
    int lengthUnit;
    int inputMode;
    double millimetres;   // one unit in millimetres
    const char* name;
};
const UnitChoice kUnits[] = {
    {eKelUnitMillimetre, eInputModeMetric, 1.0, "mm"},
    {eKelUnitMetre, eInputModeMetric, 1000.0, "m"},
    {eKelUnitInch, eInputModeFeetInchFraction, 25.4, "inches"},
};

struct SampleRow
{
    const char* element;
    double lengthMm;
};
const SampleRow kRows[] = {
    {"Wall A-3", 4250.0}, {"Door D-12", 1010.0}, {"Window W-4", 1260.0}, {"Beam B-1", 6096.0}, {"Slab S-2", 320.0},
};
}

BEGIN_MESSAGE_MAP(CPageValueFields, CPropertyPage)
    ON_BN_CLICKED(IDC_VF_UNIT_MM, &CPageValueFields::OnUnitChosen)
    ON_BN_CLICKED(IDC_VF_UNIT_M, &CPageValueFields::OnUnitChosen)
    ON_BN_CLICKED(IDC_VF_UNIT_FTIN, &CPageValueFields::OnUnitChosen)
    ON_EN_CHANGE(IDC_VF_LENGTH, &CPageValueFields::OnLengthChange)
    ON_BN_CLICKED(IDC_VF_SHOWASVALUE, &CPageValueFields::OnShowAsValue)
    ON_NOTIFY(NM_DBLCLK, IDC_VF_LIST, &CPageValueFields::OnListDblClk)
    ON_NOTIFY(LVN_ENDLABELEDITA, IDC_VF_INPLACE, &CPageValueFields::OnInPlaceEnd)
END_MESSAGE_MAP()

CPageValueFields::CPageValueFields(const GalleryHostState&) : CPropertyPage(IDD_PAGE_VALUEFIELDS), m_unitChoice(0)
{
}

BOOL CPageValueFields::OnInitDialog()
{
    CPropertyPage::OnInitDialog();
    m_plain.SubclassDlgItem(IDC_VF_PLAIN, this);
    m_plain.SetWindowText("Outer wall, north");
    m_coloured.SubclassDlgItem(IDC_VF_COLOURED, this);
    m_coloured.SetBackgroundColor(RGB(255, 244, 176));
    m_coloured.SetTextColor(RGB(0, 64, 160));
    m_coloured.SetWindowText("Layer 12 - Walls");
    m_readOnly.SubclassDlgItem(IDC_VF_READONLY, this);
    m_readOnly.SetBackgroundColor(RGB(224, 236, 224));
    m_readOnly.SetTextColor(RGB(96, 96, 96));
    m_readOnly.SetWindowText("Computed: 38.25 m2");

    ::CheckRadioButton(m_hWnd, IDC_VF_UNIT_MM, IDC_VF_UNIT_FTIN, IDC_VF_UNIT_MM);
    m_unitChoice = 0;
    SetGalleryUnits(kUnits[0].lengthUnit, kUnits[0].inputMode);
    m_length.SubclassDlgItem(IDC_VF_LENGTH, this);
    m_length.SetWindowText("2 * 1250 + 0.5m");
    ShowLengthValue();

    HWND hList = ::GetDlgItem(m_hWnd, IDC_VF_LIST);
    ::SendMessageA(hList, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES,
                   LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    LVCOLUMNA col = {};
    col.mask = LVCF_TEXT | LVCF_WIDTH;
    col.cx = 120;
    col.pszText = const_cast<char*>("Element");
    ::SendMessageA(hList, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&col));
    col.cx = 150;
    col.pszText = const_cast<char*>("Length");
    ::SendMessageA(hList, LVM_INSERTCOLUMNA, 1, reinterpret_cast<LPARAM>(&col));
    for (int i = 0; i < static_cast<int>(sizeof(kRows) / sizeof(kRows[0])); ++i)
    {
        LVITEMA item = {};
        item.mask = LVIF_TEXT;
        item.iItem = i;
        item.pszText = const_cast<char*>(kRows[i].element);
        ::SendMessageA(hList, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
        m_rowLengthsMm.push_back(kRows[i].lengthMm);
    }
    FillLengthCells();
    SetDlgItemText(IDC_VF_LIST_STATUS, "No edit yet.");
    return TRUE;
}

void CPageValueFields::ApplyUnitChoice()
{
    int choice = 0;
    if (IsDlgButtonChecked(IDC_VF_UNIT_M))
        choice = 1;
    else if (IsDlgButtonChecked(IDC_VF_UNIT_FTIN))
        choice = 2;
    if (choice == m_unitChoice)
        return;
    // Keep the length the field shows: read it in the old unit, show it in the new one.
    double value = 0.0;
    bool bHadValue = GetEditValueFromString(m_length.GetText(), &value, true);
    double millimetres = value * kUnits[m_unitChoice].millimetres;
    m_unitChoice = choice;
    SetGalleryUnits(kUnits[choice].lengthUnit, kUnits[choice].inputMode);
    if (bHadValue)
        m_length.SetItemValue(millimetres / kUnits[choice].millimetres);
    FillLengthCells();
    ShowLengthValue();
}

void CPageValueFields::OnUnitChosen()
{
    ApplyUnitChoice();
}

void CPageValueFields::ShowLengthValue()
{
    double value = 0.0;
    CString text;
    if (GetEditValueFromString(m_length.GetText(), &value, true))
        text.Format("= %.4g %s   (%.1f mm)", value, kUnits[m_unitChoice].name,
                    value * kUnits[m_unitChoice].millimetres);
    else
        text = "not a length in the current unit";
    SetDlgItemText(IDC_VF_LENGTH_VALUE, text);
}

void CPageValueFields::OnLengthChange()
{
    if (m_length.m_hWnd != nullptr)
        ShowLengthValue();
}

void CPageValueFields::OnShowAsValue()
{
    double value = 0.0;
    if (m_length.GetItemValue(value))   // beeps when the text is no length
        m_length.SetItemValue(value);
    m_length.SetFocus();
}

void CPageValueFields::FillLengthCells()
{
    HWND hList = ::GetDlgItem(m_hWnd, IDC_VF_LIST);
    for (size_t i = 0; i < m_rowLengthsMm.size(); ++i)
    {
        CString text = GetStringFromEditValue(m_rowLengthsMm[i] / kUnits[m_unitChoice].millimetres, true);
        LVITEMA item = {};
        item.iSubItem = 1;
        item.pszText = text.GetBuffer();
        ::SendMessageA(hList, LVM_SETITEMTEXTA, i, reinterpret_cast<LPARAM>(&item));
    }
}

void CPageValueFields::EditLengthInPlace(int item)
{
    HWND hList = ::GetDlgItem(m_hWnd, IDC_VF_LIST);
    CRect cell;
    cell.top = 1;   // the length column
    cell.left = LVIR_BOUNDS;
    if (!::SendMessageA(hList, LVM_GETSUBITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&cell)))
        return;
    char text[128] = {};
    LVITEMA lvi = {};
    lvi.iSubItem = 1;
    lvi.pszText = text;
    lvi.cchTextMax = sizeof(text);
    ::SendMessageA(hList, LVM_GETITEMTEXTA, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&lvi));

    // The edit owns itself from here: it reports to this page and deletes itself.
    CKelValueEditEx* pEdit = new CKelValueEditEx;
    pEdit->DoInPlace(item, 1);
    if (!pEdit->Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, cell, CWnd::FromHandle(hList),
                       IDC_VF_INPLACE))
        return;
    pEdit->SetWindowText(text);
    pEdit->SetSel(0, -1);
}

void CPageValueFields::OnListDblClk(NMHDR* pNMHDR, LRESULT* pResult)
{
    const NMITEMACTIVATE* pActivate = reinterpret_cast<const NMITEMACTIVATE*>(pNMHDR);
    if (pActivate->iItem >= 0)
        EditLengthInPlace(pActivate->iItem);
    *pResult = 0;
}

void CPageValueFields::OnInPlaceEnd(NMHDR* pNMHDR, LRESULT* pResult)
{
    NMLVDISPINFOA* pInfo = reinterpret_cast<NMLVDISPINFOA*>(pNMHDR);
    *pResult = 0;
    int item = pInfo->item.iItem;
    CString status;
    double value = 0.0;
    if (pInfo->item.pszText == nullptr)
        status.Format("Row %d: cancelled with Escape (pszText null); the length stays.", item + 1);
    else if (!CKelValueEdit::GetEndlabeleditValue(&pInfo->item, &value, true))
        status.Format("Row %d: \"%s\" is not a length; the length stays.", item + 1, pInfo->item.pszText);
    else if (item >= 0 && item < static_cast<int>(m_rowLengthsMm.size()))
    {
        m_rowLengthsMm[static_cast<size_t>(item)] = value * kUnits[m_unitChoice].millimetres;
        status.Format("Row %d: \"%s\" taken as %.4g %s.", item + 1, pInfo->item.pszText, value,
                      kUnits[m_unitChoice].name);
        FillLengthCells();
    }
    SetDlgItemText(IDC_VF_LIST_STATUS, status);
}
