// CHostSampleStrip: samples drawn by the host's drawing entries, as the library's pickers
// will ask for them: line types through pfnDrawEfline, a hatch, a pattern and a filling
// through pfnDrawSurface, and a picture through pfnDrawTransparentBitmap.
//
//     m_samples.SubclassDlgItem(IDC_SAMPLES, this);   // any static of the template
//     m_samples.SetHostRecord(&hostState.record);
#pragma once
#include <afxwin.h>
#include <kelwinctrl.h>

class CHostSampleStrip : public CWnd
{
public:
    CHostSampleStrip() = default;

    // The record whose entries draw the samples; kept, not copied.
    void SetHostRecord(const KelWinCtrlInitRecord* pRecord);

protected:
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    DECLARE_MESSAGE_MAP()

private:
    void DrawLineSamples(CDC& dc, CRect area);
    void DrawSurfaceSamples(CDC& dc, CRect area);
    void DrawPictureSample(CDC& dc, CRect area);

    const KelWinCtrlInitRecord* m_pRecord = nullptr;
};
