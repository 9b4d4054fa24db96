// CHostColourStrip: a row of swatches painted from the host's colour entry, one per
// colour number, each labelled with its number.
//
//     m_strip.SubclassDlgItem(IDC_COLOURS, this);        // any static of the template
//     m_strip.SetColourSource(record.pfnGetColorRgb, 0, 15);
#pragma once
#include <afxwin.h>
#include <kelwinctrl.h>

class CHostColourStrip : public CWnd
{
public:
    CHostColourStrip() = default;

    // Paints colour numbers nFirst to nLast (both included) through pfnGetColorRgb.
    void SetColourSource(PFN_KEL_GETCOLORRGB pfnGetColorRgb, int nFirst, int nLast);

    // The rectangle of the swatch of colour number nColour in client coordinates; empty when
    // the number is not shown.
    CRect GetSwatchRect(int nColour) const;

protected:
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    DECLARE_MESSAGE_MAP()

private:
    void Draw(CDC& dc);

    PFN_KEL_GETCOLORRGB m_pfnGetColorRgb = nullptr;
    int m_nFirst = 0;
    int m_nLast = -1;
};
