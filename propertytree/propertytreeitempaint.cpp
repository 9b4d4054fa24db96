// Row painting: draws one row and its open subtree, and writes every rectangle that hit
// testing reads afterwards. A row that was not painted does not exist for the mouse.
#include "propertytree.h"

#include "ck_attrib.h"

#include <algorithm>

namespace
{
// A run of single pixels at every second position, horizontal or vertical.
void DottedLine(CDC* pDC, long x, long y, long length, bool horizontal)
{
    const COLORREF shadow = GetSysColor(COLOR_3DSHADOW);
    for (long i = 0; i < length; i += 2)
    {
        if (horizontal)
            pDC->SetPixel(static_cast<int>(x + i), static_cast<int>(y), shadow);
        else
            pDC->SetPixel(static_cast<int>(x), static_cast<int>(y + i), shadow);
    }
}

// Keeps the clip region of a context and puts it back when the scope ends, so that a row can
// clip its label and value without losing the clip of the surface it is painted into.
class ClipScope
{
public:
    explicit ClipScope(CDC* pDC) : m_pDC(pDC)
    {
        m_rgn.CreateRectRgn(0, 0, 0, 0);
        m_bHad = ::GetClipRgn(pDC->GetSafeHdc(), static_cast<HRGN>(m_rgn.GetSafeHandle())) == 1;
    }
    ~ClipScope() { Restore(); }
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;
    void Restore()
    {
        if (m_bHad)
            m_pDC->SelectClipRgn(&m_rgn);
        else
            m_pDC->SelectClipRgn(nullptr);
    }

private:
    CDC* m_pDC;
    CRgn m_rgn;
    bool m_bHad = false;
};

// A dotted pen line from x1 to x2 at y, as drawn over locked rows.
void StrikeThrough(CDC* pDC, long x1, long x2, long y)
{
    CPen pen(PS_DOT, 1, GetSysColor(COLOR_3DSHADOW));
    CSelectObjectScope keepPen(pDC, &pen);
    const int oldMode = pDC->SetBkMode(TRANSPARENT);
    pDC->MoveTo(static_cast<int>(x1), static_cast<int>(y));
    pDC->LineTo(static_cast<int>(x2), static_cast<int>(y));
    pDC->SetBkMode(oldMode);
}

bool IsAncestor(const CKelPropertyTreeItem* pAncestor, const CKelPropertyTreeItem* pItem)
{
    for (const CKelPropertyTreeItem* p = pItem->GetParent(); p; p = p->GetParent())
        if (p == pAncestor)
            return true;
    return false;
}
}

long CKelPropertyTreeItem::DrawItem(CDC* pDC, const RECT& client, long x, long y)
{
    CKelPropertyTree* tree = m_pOwner;
    if (!tree || !pDC)
        return 0;
    const long V = tree->GetOrigin().y;
    const long H = tree->GetOriginOffsetHorz();
    const long C = tree->GetColumn();
    const long h = GetHeight();
    const long m = h / 2 - 6;
    const long T = y - V;
    const long L = x - H;
    const bool topLevel = IsRootLevel() != 0;
    CImageList* switchList = tree->GetTreeItemSwitchImageList();
    // Rows outside the drawing area get their geometry but no pixels: the whole open tree is
    // walked at every paint, and only one screen of it costs drawing.
    const bool onScreen = T + h > client.top && T < client.bottom;

    // The visible list and the location
    tree->AppendToVisibleList(this);
    m_ptLocation.x = L;
    m_ptLocation.y = y;

    // The value column on the screen
    m_rcAttribute = {static_cast<LONG>(C + 5), static_cast<LONG>(y + 2 - V), client.right,
                     static_cast<LONG>(y + h - 1 - V)};

    // Room taken by a switching parent's box
    long P = 0;
    if (switchList && m_pParent && m_pParent->IsItemSwitching())
        P = m_pParent->m_rcSwitchBox.right - m_pParent->m_rcSwitchBox.left;

    // The label rectangle
    CRect R(static_cast<int>(topLevel ? L + 16 : L + P + 16), static_cast<int>(T),
            static_cast<int>(topLevel ? client.right : C), static_cast<int>(T + h));

    // The band behind a top-level row
    if (topLevel && onScreen)
        pDC->FillSolidRect(client.left, R.top, client.right - client.left + 1, R.Height(),
                           GetSysColor(COLOR_BTNFACE));

    // The special button
    if (m_pSpecialButtonRect)
    {
        if (m_nShowSpecialButton && m_nEditableManuallyForExternal && !IsReadOnly())
        {
            CRect button(client.right - 20, static_cast<int>(y + m - 2), client.right - 4,
                         static_cast<int>(y + m + 14));
            button.OffsetRect(0, static_cast<int>(-V));
            if (onScreen)
            {
                CSelectObjectScope keepFont(pDC, CKelPropertyTree::GetBoldFont());
                const COLORREF light = GetSysColor(COLOR_3DHIGHLIGHT);
                const COLORREF dark = GetSysColor(COLOR_3DSHADOW);
                if (m_nSpecialButtonPressed)
                    pDC->Draw3dRect(&button, dark, light);
                else
                    pDC->Draw3dRect(&button, light, dark);
                CRect inner = button;
                inner.DeflateRect(1, 1);
                pDC->FillSolidRect(&inner, GetSysColor(COLOR_BTNFACE));
                if (m_nSpecialButtonIcon >= 0)
                {
                    int index = tree->GetImageListNrByIconNr(m_nSpecialButtonIcon);
                    if (index < 0)
                        index = m_nSpecialButtonIcon;
                    if (index < tree->GetIconImageList()->GetImageCount())
                        tree->GetIconImageList()->Draw(pDC, index, inner.TopLeft(), ILD_TRANSPARENT);
                }
                else if (m_pszSpecialButtonText && *m_pszSpecialButtonText)
                {
                    inner.DeflateRect(1, 1);
                    if (m_nSpecialButtonPressed)
                        inner.OffsetRect(1, 1);
                    const COLORREF oldText = pDC->SetTextColor(GetSysColor(COLOR_BTNTEXT));
                    const int oldMode = pDC->SetBkMode(TRANSPARENT);
                    pDC->DrawText(m_pszSpecialButtonText, -1, &inner, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
                    pDC->SetBkMode(oldMode);
                    pDC->SetTextColor(oldText);
                }
            }
            // Kept in tree coordinates.
            button.OffsetRect(static_cast<int>(H), static_cast<int>(V));
            *m_pSpecialButtonRect = button;
        }
        else
            SetRectEmpty(m_pSpecialButtonRect);
    }

    // Where the expand box stands: screen x, tree y
    if (m_pChild || m_bParentFlagForDrawing || m_nIconNr > 0 || switchList)
        m_rcExpand = {static_cast<LONG>(L + 4), static_cast<LONG>(y + m), static_cast<LONG>(L + 12),
                      static_cast<LONG>(y + m + 8)};

    // The switch box
    CRect S(0, 0, 0, 0);
    bool haveD = false;
    long D = 0;
    if (switchList)
    {
        CRect box(m_rcExpand);
        box.InflateRect(5, 5);
        box.OffsetRect(static_cast<int>(17 + H + (topLevel ? 4 : 0)), 2);
        if (m_pParent && m_pParent->GetLevel() == 0 && m_pParent->IsItemSwitching())
            box.OffsetRect(m_pParent->m_rcSwitchBox.right - m_pParent->m_rcSwitchBox.left, 0);
        m_rcSwitchBox = box;
        S = box;
        S.OffsetRect(static_cast<int>(1 - H), static_cast<int>(1 - V));
        if (!DrawAsParent() && !m_bLockDotVLine)
        {
            D = S.left + 18;
            haveD = true;
            if (onScreen)
                DottedLine(pDC, D, S.top - 2, 20, false);
        }
        m_nSwitchableCheckHidden = (!isAttributChangeable(m_nResID) && tree->GetDrawingFlag(2)) ? 1 : 0;
        if (IsItemSwitching() && !m_nSwitchableCheckHidden)
        {
            if (onScreen)
            {
                if (m_nSwitchStatus == 2)
                    pDC->FillSolidRect(S.left + 2, S.top + 1, 12, 12, GetSysColor(COLOR_3DSHADOW));
                int image = m_nSwitchStatus ? PT_IMAGE_SWITCH_ON : PT_IMAGE_SWITCH_OFF;
                if (m_nSwitchLocked)
                    image = m_nSwitchStatus ? PT_IMAGE_LOCKED_SWITCH_ON : PT_IMAGE_LOCKED_SWITCH_OFF;
                m_pSwitchingImageList->Draw(pDC, image, S.TopLeft(), ILD_TRANSPARENT);
            }
        }
        else
            SetRectEmpty(&m_rcSwitchBox);
    }
    else
        SetRectEmpty(&m_rcSwitchBox);

    // A row switched off is drawn disabled
    if (!DrawAsParent() && IsItemSwitching() && m_nSwitchStatus == 0 &&
        tree->IsDisablingRowOnUncheckedSwitchingStatus() && !m_bEnabledEvenGloballyUnchecked)
    {
        const long left = haveD ? D : S.left + 18;
        if (onScreen)
            pDC->FillSolidRect(static_cast<int>(left), S.top - 2, static_cast<int>(H + client.right - 34), 20,
                               GetSysColor(COLOR_BTNFACE));
        m_nRowDisabled = 1;
    }
    else
        m_nRowDisabled = 0;

    // The icon
    bool hasIcon = false;
    if (m_nIconNr > 0)
    {
        CRect icon;
        if (IsItemSwitching())
        {
            icon = S;
            icon.OffsetRect(S.Width() + 6, 0);
        }
        else
        {
            icon = m_rcExpand;
            const int level = GetLevel();
            // Deeper rows move less, on purpose.
            icon.OffsetRect(level != 0 ? 18 / level : 0, static_cast<int>(-m));
            icon.OffsetRect(0, static_cast<int>(1 - V));
        }
        m_ptIcon = icon.TopLeft();
        if (onScreen)
        {
            const int index = tree->GetImageListNrByIconNr(m_nIconNr);
            if (index >= 0)
                tree->GetIconImageList()->Draw(pDC, index, m_ptIcon, ILD_TRANSPARENT);
        }
        // The stored point is not the drawn one.
        m_ptIcon.x += L + 16;
        hasIcon = true;
    }

    // The expand box drawn, with the link of joined rows
    if (m_pChild && !m_nNoExpandBox)
    {
        CRect B(m_rcExpand);
        B.OffsetRect(0, static_cast<int>(-V));
        if (onScreen)
        {
            CRect J(0, 0, 0, 0);
            if (m_pParent && m_pParent->m_nResID == tree->GetJoiningCheckItemResID() && m_pSibling &&
                m_pSibling->m_nJoinIdx == m_nJoinIdx)
            {
                J = B;
                J.bottom += 40 * (IsExpanded() ? GetChildCount() + 1 : 1);
                if (J.IsRectEmpty())
                {
                    J = m_rcExpand;
                    J.OffsetRect(0, 20);
                }
            }
            if (!J.IsRectEmpty())
            {
                const long mx = B.left + 4;
                const long y0 = B.top + 4;
                const long y1 = (J.top + J.bottom) / 2;
                DottedLine(pDC, mx, y0, y1 - y0, false);
                DottedLine(pDC, mx - 1, y0 + 1, y1 - y0 - 1, false);
                DottedLine(pDC, mx + 1, y0 + 1, y1 - y0 - 1, false);
            }
            {
                CPen pen(PS_SOLID, 1, GetSysColor(COLOR_3DSHADOW));
                CSelectObjectScope keepPen(pDC, &pen);
                CSelectObjectScope keepBrush(pDC->GetSafeHdc(),
                                             ::GetStockObject(topLevel ? NULL_BRUSH : WHITE_BRUSH));
                pDC->Rectangle(B.left, B.top, B.left + 9, B.top + 9);
            }
            CSelectObjectScope keepPen(pDC->GetSafeHdc(), ::GetStockObject(BLACK_PEN));
            pDC->MoveTo(B.left + 2, B.top + 4);
            pDC->LineTo(B.left + 7, B.top + 4);
            if (!IsExpanded())
            {
                pDC->MoveTo(B.left + 4, B.top + 2);
                pDC->LineTo(B.left + 4, B.top + 7);
            }
        }
    }
    else
        SetRectEmpty(&m_rcExpand);

    // The label, clipped to its column except on bands and static rows
    if (!m_strLabel.IsEmpty())
    {
        CRect rc = R;
        const long switchExtra = !IsRectEmpty(&m_rcSwitchBox) ? (m_rcSwitchBox.right - m_rcSwitchBox.left) + 5 : 0;
        if (haveD)
            rc.left = static_cast<int>(D + 5);
        else if (IsRectEmpty(&m_rcExpand) && !DrawAsParent())
            rc.left = static_cast<int>(L + 5 + (switchList ? 0 : 17) + switchExtra);
        else
            rc.left = static_cast<int>(R.left + 5 + switchExtra);
        if (hasIcon)
            rc.left += 26;
        rc.OffsetRect(0, 2);
        m_nLabelHorizOffset = rc.left;
        if (onScreen)
        {
            ClipScope clip(pDC);
            if (!topLevel && GetIdentifier() != ITEM_TYPE_STATIC)
                pDC->IntersectClipRect(&R);
            const bool bold = topLevel || m_nResID == PT_RESID_HEADER || m_bBoldFont;
            CSelectObjectScope keepFont(pDC, bold ? CKelPropertyTree::GetBoldFont() : CKelPropertyTree::GetNormalFont());
            const int oldMode = pDC->SetBkMode(TRANSPARENT);
            const COLORREF oldText = pDC->SetTextColor(GetSysColor(COLOR_BTNTEXT));
            CRect measured = rc;
            pDC->DrawText(m_strLabel, &measured, DT_CALCRECT | DT_SINGLELINE | DT_VCENTER);
            const bool focus = tree->GetCtrlParent()->IsFocusOnTreeList() != 0;
            if (IsSelected())
            {
                CRect band = measured;
                band.InflateRect(4, 2);
                CBrush brush(GetSysColor(focus ? COLOR_HIGHLIGHT : COLOR_BTNFACE));
                CSelectObjectScope keepBrush(pDC, &brush);
                CSelectObjectScope keepPen(pDC->GetSafeHdc(), ::GetStockObject(NULL_PEN));
                pDC->Rectangle(&band);
                m_rcLabelHighlight = band;
                pDC->SetTextColor(GetSysColor(focus ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT));
            }
            else
                SetRectEmpty(&m_rcLabelHighlight);
            if (m_nRowDisabled)
            {
                const COLORREF keep = pDC->SetTextColor(GetSysColor(COLOR_3DHIGHLIGHT));
                CRect raised = measured;
                raised.OffsetRect(1, 1);
                pDC->DrawText(m_strLabel, &raised, DT_SINGLELINE | DT_VCENTER);
                pDC->SetTextColor(keep);
            }
            if (!tree->IsWindowEnabled() || m_nRowDisabled)
                pDC->SetTextColor(GetSysColor(COLOR_3DSHADOW));
            pDC->DrawText(m_strLabel, &measured, DT_SINGLELINE | DT_VCENTER);
            pDC->SetTextColor(oldText);
            pDC->SetBkMode(oldMode);
        }
        else
            SetRectEmpty(&m_rcLabelHighlight);
    }
    else
        SetRectEmpty(&m_rcLabelHighlight);

    CKelPropertyTreeItem* layer = nullptr;
    bool layerLocked = false;
    if (onScreen)
    {
        layer = tree->GetLayerLevel(this);
        layerLocked = layer && layer != this && IsAncestor(layer, this) && layer->IsLocked() &&
                      tree->GetMacroDefinitionLevel(this) != this;
    }

    if (onScreen)
    {
        // Lines under the row
        const long lineX = 16 - H;
        const long lineLength = H + client.right - 15;
        const long bottom = R.bottom - 1;
        if (DrawAsParent() && IsExpanded() && m_nResID != PT_RESID_HEADER && m_nResID != PT_RESID_GROUP_ROOT)
        {
            if (!m_nSeparatorLineDisabled)
                DottedLine(pDC, lineX, bottom, lineLength, true);
        }
        else if (topLevel && ((IsExpanded() && m_pChild) || !m_pChild))
        {
            if (!m_nSeparatorLineDisabled)
            {
                DottedLine(pDC, lineX, T, lineLength, true);
                DottedLine(pDC, lineX + 1, T - 1, lineLength - 1, true);
            }
        }
        else if (!DrawAsParent())
        {
            if (!m_nSeparatorLineDisabled)
                DottedLine(pDC, lineX, bottom, lineLength, true);
            if (IsItemReadyForColumnSeparator())
            {
                pDC->FillSolidRect(static_cast<int>(C), R.top, 1, R.Height(), GetSysColor(COLOR_3DSHADOW));
                pDC->FillSolidRect(static_cast<int>(C + 1), R.top, 1, R.Height(), GetSysColor(COLOR_3DHIGHLIGHT));
            }
        }

        // The deleted mark
        if (m_nDeleted && m_nResID != PT_RESID_GROUP_ROOT && m_nResID != PT_RESID_LAYER)
            tree->GetInternalImageList()->Draw(pDC, PT_IMAGE_DELETED, CPoint(R.right - 16, R.top + 1), ILD_TRANSPARENT);

        // A locked layer strikes through the labels of the rows under it
        if (layerLocked)
            StrikeThrough(pDC, 16, client.right, (R.top + R.bottom) / 2 - 1);
    }

    // The value column
    if (!topLevel)
    {
        bool special = false;
        CRect buttonRect;
        tree->GetSpecialButtonProperties(special, buttonRect);
        const long W = special ? buttonRect.Width() + 7 : 0;
        tree->SetSeparatorMaxHorizPos(static_cast<int>(m_rcAttribute.right - W));
        if (onScreen && m_bVisible)
        {
            ClipScope clip(pDC);
            pDC->IntersectClipRect(m_rcAttribute.left, m_rcAttribute.top, static_cast<int>(m_rcAttribute.right - W),
                                   m_rcAttribute.bottom);
            DrawAttribute(pDC, m_rcAttribute);
        }
    }

    // A locked row, or one under a locked layer, strikes through its value
    if (onScreen && (m_nResID < PT_RESID_HEADER || m_nResID > PT_RESID_LAYER))
    {
        const bool ownLockShows = m_nLocked && !m_nLockKeepsPlainLook;
        if (layerLocked || ownLockShows)
            StrikeThrough(pDC, m_rcAttribute.left, client.right, (m_rcAttribute.top + m_rcAttribute.bottom) / 2 - 1);
    }

    // The rows below
    long total = h;
    if (m_pChild && IsExpanded())
    {
        const long childX = topLevel ? x : x + 16;
        for (CKelPropertyTreeItem* child = m_pChild; child; child = child->m_pSibling)
            total += child->DrawItem(pDC, client, childX, y + total);
    }
    return total;
}
