// Builds dialog templates in memory for tests: a header and items, word-aligned as the
// system expects.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

namespace kel_test
{
class DlgTemplateBuilder
{
public:
    // Dialog units; the font is "MS Shell Dlg" 8 when DS_SETFONT is in the style.
    DlgTemplateBuilder(const char* title, DWORD style, short x, short y, short cx, short cy);

    // Stock classes by their atoms: 0x0080 button, 0x0081 edit, 0x0082 static.
    void AddItem(WORD classAtom, const char* text, WORD id, DWORD style, short x, short y, short cx, short cy);
    void AddButton(const char* text, WORD id, DWORD style, short x, short y, short cx, short cy)
    {
        AddItem(0x0080, text, id, style | WS_CHILD | WS_VISIBLE | WS_TABSTOP, x, y, cx, cy);
    }
    void AddEdit(WORD id, short x, short y, short cx, short cy)
    {
        AddItem(0x0081, "", id, WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, x, y, cx, cy);
    }

    LPCDLGTEMPLATE Get() const { return reinterpret_cast<LPCDLGTEMPLATE>(m_words.data()); }

private:
    void AddString(const char* text);
    void Align();
    std::vector<WORD> m_words;
    size_t m_countIndex;
};
}
