// Typing into an edit row: numbers are checked with every character, texts are not.
#include <gtest/gtest.h>

#include "editfixture.h"

#include <string>

using pttest::EditTest;
using Edit = CKelPropertyTreeItemEdit;

namespace
{
struct TypingCase
{
    Edit::ValueFormat format;
    const char* typed;     // posted as WM_CHAR, one by one, into an empty edit
    const char* shown;     // the window's text afterwards
};
}

TEST_F(EditTest, NumbersAreCheckedWithEveryCharacter)
{
    const TypingCase cases[] = {
        {Edit::VALUE_FORMAT_DOUBLE, "1,5", "1,5"},
        {Edit::VALUE_FORMAT_DOUBLE, "1.25", "1.25"},
        {Edit::VALUE_FORMAT_DOUBLE, "-2.5", "-2.5"},
        {Edit::VALUE_FORMAT_DOUBLE, "-", "-"},
        {Edit::VALUE_FORMAT_DOUBLE, "1 5", "15"},    // a blank is swallowed
        {Edit::VALUE_FORMAT_INTEGER, "4 2", "42"},
        {Edit::VALUE_FORMAT_INTEGER, "-17", "-17"},
        {Edit::VALUE_FORMAT_INTEGER, "-", "-"},
        {Edit::VALUE_FORMAT_TEXT, "a b-1", "a b-1"},   // texts take anything
        {Edit::VALUE_FORMAT_STD_STRING, "x,y z", "x,y z"},
    };
    for (const TypingCase& c : cases)
    {
        Edit* row = AddEdit(c.format);
        Activate(row);
        Type(row->m_hWnd, c.typed);
        EXPECT_EQ(c.shown, WindowText(row->m_hWnd)) << "format " << c.format << " typed " << c.typed;
        EXPECT_EQ(static_cast<unsigned>(static_cast<unsigned char>(c.typed[std::string(c.typed).size() - 1])),
                  row->GetLastChar());
        Press(row->m_hWnd, VK_ESCAPE);
        tree.Delete(row);
    }
}

TEST_F(EditTest, RejectedCharacterPutsTheOldTextBackSelectedAndDropsWhatWasTypedAhead)
{
    const TypingCase cases[] = {
        {Edit::VALUE_FORMAT_INTEGER, "12x34", "12"},    // the rest typed after x is dropped
        {Edit::VALUE_FORMAT_INTEGER, "1.5", "1"},
        {Edit::VALUE_FORMAT_INTEGER, "1-", "1"},        // a sign inside fails
        {Edit::VALUE_FORMAT_INTEGER, "--", "-"},
        {Edit::VALUE_FORMAT_DOUBLE, "2,5,", "2,5"},
        {Edit::VALUE_FORMAT_DOUBLE, "3-", "3"},
        {Edit::VALUE_FORMAT_DOUBLE, "a", ""},
        {Edit::VALUE_FORMAT_DOUBLE, "-x1", "-"},
    };
    for (const TypingCase& c : cases)
    {
        Edit* row = AddEdit(c.format);
        Activate(row);
        Type(row->m_hWnd, c.typed);
        EXPECT_EQ(c.shown, WindowText(row->m_hWnd)) << "format " << c.format << " typed " << c.typed;
        DWORD start = 1, end = 0;
        ::SendMessageA(row->m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        EXPECT_EQ(0u, start) << c.typed;
        EXPECT_EQ(static_cast<DWORD>(strlen(c.shown)), end) << c.typed;
        Press(row->m_hWnd, VK_ESCAPE);
        tree.Delete(row);
    }
}

TEST_F(EditTest, CharactersTypedAheadForAnotherWindowSurviveARejection)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    Edit* other = AddEdit(Edit::VALUE_FORMAT_TEXT, "other");
    Activate(other);
    Press(other->m_hWnd, VK_ESCAPE);
    Activate(row);
    ::PostMessageA(row->m_hWnd, WM_CHAR, 'x', 1);
    ::PostMessageA(other->m_hWnd, WM_CHAR, 'k', 1);
    kel_test::PumpPending();
    EXPECT_EQ("", WindowText(row->m_hWnd));
    EXPECT_EQ("k", WindowText(other->m_hWnd));
}

TEST_F(EditTest, BackspaceIsNotCheckedSoANumberCanBeWipedAndStaysEmpty)
{
    int i = 5;
    Edit* row = AddEdit(Edit::VALUE_FORMAT_INTEGER);
    row->SetItemDataExchange(&i);
    row->UpdateData();
    Activate(row);
    ::SendMessageA(row->m_hWnd, EM_SETSEL, 1, 1);
    Type(row->m_hWnd, "\b");
    EXPECT_EQ("", WindowText(row->m_hWnd));
    EXPECT_EQ(static_cast<unsigned>(VK_BACK), row->GetLastChar());
    Press(row->m_hWnd, VK_RETURN);
    EXPECT_EQ(0, i);   // an empty number commits as 0
}

TEST_F(EditTest, TypingIntoTheWholeSelectionReplacesIt)
{
    Edit* row = AddEdit(Edit::VALUE_FORMAT_DOUBLE);
    row->SetItemValue(CString("12.000000"));
    Activate(row);   // the whole text is selected
    Type(row->m_hWnd, "7");
    EXPECT_EQ("7", WindowText(row->m_hWnd));
}
