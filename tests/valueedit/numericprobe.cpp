// Helpers of the number field tests.
#include "numericprobe.h"

#include <behaviors.h>

namespace kel_ve_test
{
LRESULT CValueDeletedFrame::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == KEL_WM_VALUE_DELETED)
        ++valueDeleted;
    return CRecordingFrame::WindowProc(message, wParam, lParam);
}

void NumericTest::SetUp()
{
    ASSERT_TRUE(frame.CreateFrame("number field test"));
    ASSERT_TRUE(other.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 50, 250, 74), &frame, 2));
}

void NumericTest::TearDown()
{
    if (frame.m_hWnd != nullptr)
        frame.DestroyWindow();
    kel_test::PumpPending();
}

void Type(CWnd& field, const std::string& chars)
{
    for (char c : chars)
    {
        ::PostMessageA(field.m_hWnd, WM_CHAR, static_cast<unsigned char>(c), 1);
        kel_test::PumpPending();
    }
}

void Press(CWnd& field, UINT vk)
{
    PostKeyDown(field.m_hWnd, vk);
    kel_test::PumpPending();
}

void Select(CEdit& field, int start, int end)
{
    field.SetSel(start, end);
}

std::string BoxCaption()
{
    CWinApp* pApp = AfxGetApp();
    if (pApp != nullptr && pApp->m_pszAppName != nullptr)
        return pApp->m_pszAppName;
    return "Error";
}
}
