// Helpers of the edit row tests: a tree in a recording parent, rows placed as painting places
// them, typing into the edit and a recording external message box.
#pragma once
#include <gtest/gtest.h>

#include "pttest.h"
#include "testsupport.h"

#include <string>
#include <vector>

namespace pttest
{
// One call of the host's external message box.
struct MessageBoxCall
{
    int textID = 0;
    std::string text;
};

struct EditTest : ::testing::Test
{
    RecordingParent parent;
    CKelPropertyTree tree;
    CKelPropertyTreeItem* group = nullptr;

    void SetUp() override;
    void TearDown() override;

    // An edit row under the group, placed and painted-in as a row of the value column.
    CKelPropertyTreeItemEdit* AddEdit(CKelPropertyTreeItemEdit::ValueFormat format, const char* label = "row",
                                      CKelPropertyTreeItem* parentRow = nullptr);
    // Lays the rows out as painting does and writes each row's value column rectangle.
    void Place();
    // Activates the row as a click in its value column does.
    void Activate(CKelPropertyTreeItem* row);
    // Posts the characters to the window as typed keys would and pumps them.
    static void Type(HWND hWnd, const char* text);
    // Posts a key press to the window and pumps it, with its translation.
    static void Press(HWND hWnd, UINT vk);
    // Moves the focus to the list surface, as a press on the list does.
    void FocusList();
    static std::string WindowText(HWND hWnd);
    std::vector<unsigned> Codes() const { return parent.codes; }
    void ClearCodes();
    void ExpectCodes(const std::vector<unsigned>& expected, const char* what);
    int CountCode(unsigned code) const;

    // The external message box: records its calls; can move the focus away as a modal box would.
    static std::vector<MessageBoxCall> s_boxCalls;
    static HWND s_stealFocusTo;
    static int ExternalBox(int textID, char* text);
};

std::string CodeList(const std::vector<unsigned>& codes);
}
