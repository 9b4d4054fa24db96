// CKelValueEditEx::SelectionSaver: keeps an edit's selection across a change of its text.
#include "valueedit.h"

CKelValueEditEx::SelectionSaver::SelectionSaver(CEdit* edit) : m_pEdit(edit), m_nStart(0), m_nEnd(0)
{
    Update();
}

CKelValueEditEx::SelectionSaver::SelectionSaver(CEdit* edit, int start, int end)
    : m_pEdit(edit), m_nStart(start), m_nEnd(end)
{
}

CKelValueEditEx::SelectionSaver::~SelectionSaver()
{
    if (m_pEdit != nullptr)
        m_pEdit->SetSel(m_nStart, m_nEnd, TRUE);
}

void CKelValueEditEx::SelectionSaver::MoveTo(int start, int end)
{
    m_nStart = start;
    m_nEnd = end;
}

void CKelValueEditEx::SelectionSaver::MoveBy(int start, int end)
{
    m_nStart += start;
    m_nEnd += end;
}

CKelValueEditEx::SelectionSaver& CKelValueEditEx::SelectionSaver::operator+=(int by)
{
    MoveBy(by, by);
    return *this;
}

void CKelValueEditEx::SelectionSaver::Update()
{
    if (m_pEdit != nullptr)
        m_pEdit->GetSel(m_nStart, m_nEnd);
}

void CKelValueEditEx::SelectionSaver::Disable()
{
    m_pEdit = nullptr;
}
