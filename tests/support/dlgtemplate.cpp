// Builds dialog templates in memory for tests.
#include "dlgtemplate.h"

namespace kel_test
{
DlgTemplateBuilder::DlgTemplateBuilder(const char* title, DWORD style, short x, short y, short cx, short cy)
{
    m_words.reserve(512);
    // DLGTEMPLATE: style, extended style, item count, x, y, cx, cy.
    m_words.push_back(LOWORD(style));
    m_words.push_back(HIWORD(style));
    m_words.push_back(0);
    m_words.push_back(0);
    m_countIndex = m_words.size();
    m_words.push_back(0);
    m_words.push_back(static_cast<WORD>(x));
    m_words.push_back(static_cast<WORD>(y));
    m_words.push_back(static_cast<WORD>(cx));
    m_words.push_back(static_cast<WORD>(cy));
    m_words.push_back(0);   // no menu
    m_words.push_back(0);   // the standard dialog class
    AddString(title);
    if (style & DS_SETFONT)
    {
        m_words.push_back(8);
        AddString("MS Shell Dlg");
    }
}

void DlgTemplateBuilder::AddString(const char* text)
{
    int n = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    std::vector<wchar_t> wide(static_cast<size_t>(n));
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), n);
    for (wchar_t c : wide)
        m_words.push_back(static_cast<WORD>(c));
}

void DlgTemplateBuilder::Align()
{
    // Items start on DWORD boundaries.
    if (m_words.size() % 2 != 0)
        m_words.push_back(0);
}

void DlgTemplateBuilder::AddItem(WORD classAtom, const char* text, WORD id, DWORD style, short x, short y, short cx,
                                 short cy)
{
    Align();
    m_words.push_back(LOWORD(style));
    m_words.push_back(HIWORD(style));
    m_words.push_back(0);
    m_words.push_back(0);
    m_words.push_back(static_cast<WORD>(x));
    m_words.push_back(static_cast<WORD>(y));
    m_words.push_back(static_cast<WORD>(cx));
    m_words.push_back(static_cast<WORD>(cy));
    m_words.push_back(id);
    m_words.push_back(0xFFFF);
    m_words.push_back(classAtom);
    AddString(text);
    m_words.push_back(0);   // no creation data
    ++m_words[m_countIndex];
}
}
