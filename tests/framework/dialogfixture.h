// The fixture of the dialog tests: an owner window, a template with a label and an edit,
// and a check that every window a test made is gone at its end.
#pragma once
#include <afxwin.h>
#include <gtest/gtest.h>

#include "dlgtemplate.h"
#include "testsupport.h"

namespace fwtest
{
const WORD kLabelId = 100;
const WORD kEditId = 101;

// The dialog used by the in-memory tests: a label, an edit, OK and Cancel.
inline kel_test::DlgTemplateBuilder MakeEditTemplate(const char* title)
{
    kel_test::DlgTemplateBuilder b(title, DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU, 0, 0, 200,
                                   70);
    b.AddItem(0x0082, "Symbol name:", kLabelId, WS_CHILD | WS_VISIBLE | SS_LEFT, 7, 9, 45, 10);
    b.AddEdit(kEditId, 55, 7, 135, 14);
    b.AddButton("OK", IDOK, BS_DEFPUSHBUTTON, 85, 48, 50, 14);
    b.AddButton("Cancel", IDCANCEL, BS_PUSHBUTTON, 140, 48, 50, 14);
    return b;
}

// A top-level window that owns the dialogs under test.
class CDialogOwner : public CWnd
{
public:
    bool CreateOwner()
    {
        return CreateEx(0, nullptr, "dialog owner", WS_POPUP | WS_CAPTION | WS_VISIBLE, 30, 30, 320, 220, nullptr,
                        nullptr) != FALSE;
    }
};

struct DialogTest : ::testing::Test
{
    CDialogOwner owner;
    long windowsBefore = 0;
    void SetUp() override
    {
        windowsBefore = AfxGetLiveCount(afxLiveWindows);
        ASSERT_TRUE(owner.CreateOwner());
        kel_test::PumpPending();
    }
    void TearDown() override
    {
        if (owner.m_hWnd != nullptr)
            owner.DestroyWindow();
        kel_test::PumpPending();
        EXPECT_EQ(windowsBefore, AfxGetLiveCount(afxLiveWindows));
    }
};
}
