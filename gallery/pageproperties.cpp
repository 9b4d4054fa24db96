// CPageProperties: a property tree of one wall, bound to the page's members.
#include "pageproperties.h"

#include "resource.h"

#include <valueedit.h>

namespace
{
const UINT kTreeID = IDC_PP_TREE;

const char* NotifyName(unsigned code)
{
    switch (code)
    {
    case PTN_ITEM_INSERTED: return "item inserted";
    case PTN_ITEM_DELETING: return "item deleting";
    case PTN_ITEM_CHANGED: return "item changed";
    case PTN_SELECTION_CHANGED: return "selection changed";
    case PTN_ITEM_EXPANDING: return "item expanding";
    case PTN_ITEM_CLICKED: return "item clicked";
    case PTN_ITEM_ACTIVATING: return "item activating";
    case PTN_SWITCH_CHANGED: return "switch changed";
    case PTN_CONTEXT_MENU: return "context menu";
    case PTN_KEY_RETURN: return "Return";
    case PTN_KEY_ESCAPE: return "Escape";
    case PTN_LOCKED_CLICK: return "locked click";
    case PTN_LOCKED_DOUBLE_CLICK: return "locked double click";
    case PTN_FOCUS_GAINED: return "focus gained";
    case PTN_DOUBLE_CLICK: return "double click";
    default: return "other";
    }
}

CKelPropertyTreeItem* AddBand(CKelPropertyTree& tree, const char* label)
{
    CKelPropertyTreeItem* pBand = tree.InsertItem(new CKelPropertyTreeItem());
    pBand->SetLabelText(label);
    pBand->Expand();
    return pBand;
}

CKelPropertyTreeItemEdit* AddEdit(CKelPropertyTree& tree, CKelPropertyTreeItem* pParent, const char* label,
                                  CKelPropertyTreeItemEdit::ValueFormat format, void* pVariable)
{
    CKelPropertyTreeItemEdit* pRow = new CKelPropertyTreeItemEdit();
    tree.InsertItem(pRow, pParent);
    pRow->SetLabelText(label);
    pRow->SetValueFormat(format);
    pRow->SetItemDataExchange(pVariable);
    pRow->UpdateData();
    return pRow;
}
}

CPageProperties::CPageProperties(const GalleryHostState&) : CPropertyPage(IDD_PAGE_PROPERTIES)
{
}

BOOL CPageProperties::OnInitDialog()
{
    CPropertyPage::OnInitDialog();
    CRect place;
    HWND hPlace = ::GetDlgItem(m_hWnd, IDC_PP_TREE_PLACE);
    ::GetWindowRect(hPlace, &place);
    ScreenToClient(&place);
    ::ShowWindow(hPlace, SW_HIDE);
    m_tree.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | PTS_NOTIFY, place, this, kTreeID);
    m_tree.SetTreeItemsSwitchable(1);
    m_tree.SetColumn(110);
    FillTree();
    m_tree.SetPopulated(1);
    m_tree.SelectItems(m_pThicknessRow, 1);
    m_tree.SetFocusedItem(m_pThicknessRow);
    m_tree.GetCtrlParent()->Invalidate();
    ShowVariables();
    SetDlgItemText(IDC_PP_EVENT, "No notification yet.");
    // The keyboard starts in the tree, on the selected row.
    m_tree.GetCtrlParent()->SetFocus();
    return FALSE;
}

void CPageProperties::FillTree()
{
    CKelPropertyTreeItem* pWall = AddBand(m_tree, "Wall W-3");
    AddEdit(m_tree, pWall, "Name", CKelPropertyTreeItemEdit::VALUE_FORMAT_TEXT, &m_name);
    AddEdit(m_tree, pWall, "Layer", CKelPropertyTreeItemEdit::VALUE_FORMAT_STD_STRING, &m_layer);
    CKelPropertyTreeItemEdit* pThickness =
        AddEdit(m_tree, pWall, "Thickness", CKelPropertyTreeItemEdit::VALUE_FORMAT_DOUBLE, &m_thickness);
    pThickness->SetMinMax(50.0, 600.0);
    pThickness->SetAdditionalTextInfo("mm");
    m_pThicknessRow = pThickness;
    AddEdit(m_tree, pWall, "Height", CKelPropertyTreeItemEdit::VALUE_FORMAT_TEXT, &m_height);
    AddEdit(m_tree, pWall, "Courses", CKelPropertyTreeItemEdit::VALUE_FORMAT_INTEGER, &m_courses);
    AddEdit(m_tree, pWall, "Material", CKelPropertyTreeItemEdit::VALUE_FORMAT_TEXT, &m_material);
    CKelPropertyTreeItemEdit* pFire =
        AddEdit(m_tree, pWall, "Fire rating", CKelPropertyTreeItemEdit::VALUE_FORMAT_TEXT, &m_fireRating);
    pFire->Lock(1);

    // The build-up: each layer can be switched off; a switched-off layer is greyed.
    CKelPropertyTreeItem* pBuildUp = AddBand(m_tree, "Build-up");
    static const struct
    {
        const char* name;
        int thickness;
        int on;
    } kLayers[] = {{"Plaster", 15, 1}, {"Insulation", 120, 1}, {"Masonry", 240, 1}, {"Render", 20, 0}};
    for (const auto& layer : kLayers)
    {
        CKelPropertyTreeItemEdit* pRow = new CKelPropertyTreeItemEdit();
        m_tree.InsertItem(pRow, pBuildUp);
        pRow->SetLabelText(layer.name);
        pRow->SetValueFormat(CKelPropertyTreeItemEdit::VALUE_FORMAT_INTEGER);
        pRow->SetItemValue(layer.thickness);
        pRow->SetAdditionalTextInfo("mm");
        pRow->SetItemSwitching(1);
        pRow->SetItemSwitchStatus(layer.on, 1);
    }

    CKelPropertyTreeItem* pOpenings = AddBand(m_tree, "Openings");
    AddEdit(m_tree, pOpenings, "Door D-12", CKelPropertyTreeItemEdit::VALUE_FORMAT_TEXT, nullptr)
        ->SetItemValue(CString("1010 x 2135"));
    CKelPropertyTreeItemEdit* pOld =
        AddEdit(m_tree, pOpenings, "Old opening", CKelPropertyTreeItemEdit::VALUE_FORMAT_TEXT, &m_oldOpening);
    pOld->DeleteItem(1, 0);
}

void CPageProperties::ShowVariables()
{
    double heightMm = 0.0;
    CString height;
    if (GetEditValueFromString(m_height, &heightMm, true))
        height.Format("%s\r\n   = %.1f mm", static_cast<const char*>(m_height), heightMm);
    else
        height.Format("%s\r\n   (not a length)", static_cast<const char*>(m_height));
    CString text;
    text.Format("Bound variables\r\n\r\n"
                "Name: %s\r\nLayer: %s\r\nThickness: %.1f mm\r\nHeight: %s\r\nCourses: %d\r\n"
                "Material: %s\r\nFire rating: %s\r\n\r\nCommits: %d",
                static_cast<const char*>(m_name), m_layer.c_str(), m_thickness, static_cast<const char*>(height),
                m_courses, static_cast<const char*>(m_material), static_cast<const char*>(m_fireRating), m_commits);
    SetDlgItemText(IDC_PP_READOUT, text);
}

void CPageProperties::ShowEvent(unsigned code, CKelPropertyTreeItem* pItem)
{
    CString text;
    text.Format("Last: %s%s%s", NotifyName(code), pItem ? ", " : "",
                pItem ? static_cast<const char*>(pItem->GetLabelText()) : "");
    SetDlgItemText(IDC_PP_EVENT, text);
}

// Every code the tree sends comes here; the tree reads a zero answer as "go on".
BOOL CPageProperties::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    const NMHDR* pNMHDR = reinterpret_cast<const NMHDR*>(lParam);
    if (pNMHDR->idFrom != kTreeID || pNMHDR->code < PTN_FIRST || pNMHDR->code > PTN_LAST)
        return CPropertyPage::OnNotify(wParam, lParam, pResult);
    *pResult = 0;
    const PropertyTreeNotify* pNotify = reinterpret_cast<const PropertyTreeNotify*>(pNMHDR);
    if (pNMHDR->code == PTN_ITEM_CHANGED)
    {
        ++m_commits;
        ShowVariables();
    }
    if (pNMHDR->code != PTN_ITEM_INSERTED)
        ShowEvent(pNMHDR->code, pNotify->pItem);
    return TRUE;
}
