// CPageProperties: the gallery's page of a property tree. It shows the properties of one
// wall: name, layer, thickness (a number with a range), height (an expression the page
// evaluates), material, a group of build-up layers with switch boxes, a locked row and a
// row marked for deletion. Each value row is bound to a member of this page; the read-out
// beside the tree shows the members, so it changes only when a row commits.
#pragma once
#include "pages.h"

#include <afxwin.h>
#include <propertytree.h>

#include <string>

class CPageProperties : public CPropertyPage
{
public:
    explicit CPageProperties(const GalleryHostState& host);

    BOOL OnInitDialog() override;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

private:
    void FillTree();
    // Writes the bound members into the read-out.
    void ShowVariables();
    // Notes the last notification the tree sent.
    void ShowEvent(unsigned code, CKelPropertyTreeItem* pItem);

    CKelPropertyTree m_tree;
    CKelPropertyTreeItemEdit* m_pThicknessRow = nullptr;

    // The wall's properties, as the host's model holds them.
    CString m_name = "Outer wall, north";
    std::string m_layer = "A-WALL-EXT";
    double m_thickness = 365.0;
    CString m_height = "2 * 1250 + 0.5m";
    CString m_material = "Brick, perforated";
    int m_courses = 36;
    CString m_fireRating = "REI 90";
    CString m_oldOpening = "O-7, 1010 x 2135";
    int m_commits = 0;
};
