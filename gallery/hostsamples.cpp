// CHostSampleStrip: line, surface and picture samples drawn by the host's entries.
#include "hostsamples.h"

BEGIN_MESSAGE_MAP(CHostSampleStrip, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

namespace
{
// Line types 1 to 5, each with its own pen, as a line-type picker lists them.
struct LineSample
{
    int line;
    int pen;
};
const LineSample kLineSamples[] = {{1, 1}, {2, 2}, {3, 2}, {4, 1}, {5, 3}};

// Surface samples: kind and value as the library passes them.
struct SurfaceSample
{
    int kind;
    int value;
};
const SurfaceSample kSurfaceSamples[] = {
    {-5, HS_DIAGCROSS},   // a hatch
    {-1, HS_FDIAGONAL},   // a pattern
    {2, 5},               // a filling of colour 5
};

// The colour number the library passes for "the line's own colour".
const int kOwnColour = -254;
// The colour that the picture sample keeps out.
const COLORREF kTransparent = RGB(255, 0, 255);
const int kPictureSize = 16;
}

void CHostSampleStrip::SetHostRecord(const KelWinCtrlInitRecord* pRecord)
{
    m_pRecord = pRecord;
    if (m_hWnd != nullptr)
        Invalidate();
}

BOOL CHostSampleStrip::OnEraseBkgnd(CDC*)
{
    // OnPaint covers every pixel.
    return TRUE;
}

void CHostSampleStrip::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    dc.FillSolidRect(&client, ::GetSysColor(COLOR_3DFACE));
    if (m_pRecord == nullptr)
        return;

    // Half the width for the lines, the rest for the surfaces and the picture.
    CRect lines(client.left, client.top, client.left + client.Width() / 2, client.bottom);
    CRect surfaces(lines.right, client.top, client.right - kPictureSize - 12, client.bottom);
    CRect picture(surfaces.right, client.top, client.right, client.bottom);
    DrawLineSamples(dc, lines);
    DrawSurfaceSamples(dc, surfaces);
    DrawPictureSample(dc, picture);
}

void CHostSampleStrip::DrawLineSamples(CDC& dc, CRect area)
{
    if (m_pRecord->pfnDrawEfline == nullptr)
        return;
    int nCount = static_cast<int>(sizeof(kLineSamples) / sizeof(kLineSamples[0]));
    int nCellWidth = area.Width() / nCount;
    for (int i = 0; i < nCount; ++i)
    {
        CRect cell(area.left + i * nCellWidth, area.top, area.left + (i + 1) * nCellWidth - 4, area.bottom);
        dc.FillSolidRect(&cell, ::GetSysColor(COLOR_WINDOW));
        // End points and clip as the library's line-type rows give them.
        double y = cell.top + cell.Height() / 2;
        double xy[4] = {static_cast<double>(cell.left + 3), y, static_cast<double>(cell.right - 3), y};
        int clip[4] = {cell.left + 1, cell.top + 1, cell.right - 1, cell.bottom - 1};
        double scale = 1.0;
        int line = kLineSamples[i].line;
        int pen = kLineSamples[i].pen;
        int cell1 = 0, cell2 = 0;
        int colour = kOwnColour;
        m_pRecord->pfnDrawEfline(dc.GetSafeHdc(), &scale, xy, clip, &line, &pen, &cell1, &cell2, &colour, 1.0, 0, 6);
        dc.Draw3dRect(&cell, ::GetSysColor(COLOR_3DSHADOW), ::GetSysColor(COLOR_3DHILIGHT));
    }
}

void CHostSampleStrip::DrawSurfaceSamples(CDC& dc, CRect area)
{
    if (m_pRecord->pfnDrawSurface == nullptr)
        return;
    int nCount = static_cast<int>(sizeof(kSurfaceSamples) / sizeof(kSurfaceSamples[0]));
    int nCellWidth = area.Width() / nCount;
    for (int i = 0; i < nCount; ++i)
    {
        CRect cell(area.left + i * nCellWidth, area.top, area.left + (i + 1) * nCellWidth - 4, area.bottom);
        // As the library does: the background first, then the host's sample, then a frame.
        dc.FillSolidRect(&cell, ::GetSysColor(COLOR_WINDOW));
        double bounds[4] = {static_cast<double>(cell.left + 1), static_cast<double>(cell.top + 1),
                            static_cast<double>(cell.right - 1), static_cast<double>(cell.bottom - 1)};
        m_pRecord->pfnDrawSurface(kSurfaceSamples[i].kind, kSurfaceSamples[i].value, dc.GetSafeHdc(), bounds, 0, 2);
        CBrush frame(::GetSysColor(COLOR_WINDOWTEXT));
        dc.FrameRect(&cell, &frame);
    }
}

void CHostSampleStrip::DrawPictureSample(CDC& dc, CRect area)
{
    if (m_pRecord->pfnDrawTransparentBitmap == nullptr)
        return;
    // A small picture on a transparent ground: a diamond with a dot, over a light cell, so
    // that the cell shows wherever the ground was.
    CBitmap picture;
    picture.CreateCompatibleBitmap(&dc, kPictureSize, kPictureSize);
    {
        CDC memDC;
        memDC.CreateCompatibleDC(&dc);
        CSelectObjectScope keepBitmap(memDC, picture);
        memDC.FillSolidRect(0, 0, kPictureSize, kPictureSize, kTransparent);
        CBrush fill(RGB(0, 0, 128));
        CPen outline(PS_SOLID, 1, RGB(0, 0, 128));
        CSelectObjectScope keepBrush(memDC, fill);
        CSelectObjectScope keepPen(memDC, outline);
        const POINT diamond[] = {{8, 1}, {15, 8}, {8, 15}, {1, 8}};
        memDC.Polygon(diamond, 4);
        memDC.FillSolidRect(7, 7, 2, 2, RGB(255, 255, 0));
    }
    CRect cell(area.left, area.top, area.right, area.bottom);
    dc.FillSolidRect(&cell, RGB(255, 255, 192));
    int x = cell.left + (cell.Width() - kPictureSize) / 2;
    int y = cell.top + (cell.Height() - kPictureSize) / 2;
    m_pRecord->pfnDrawTransparentBitmap(dc.GetSafeHdc(), static_cast<HBITMAP>(picture.GetSafeHandle()), x, y,
                                        kPictureSize, kPictureSize, kTransparent, 0);
    dc.Draw3dRect(&cell, ::GetSysColor(COLOR_3DSHADOW), ::GetSysColor(COLOR_3DHILIGHT));
}
