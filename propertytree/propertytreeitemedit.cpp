// The edit row's model: value, formats, range and partner checks, commit and the caller's variable.
#include "propertytree.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

CKelPropertyTreeItemEdit::CKelPropertyTreeItemEdit()
{
    SetIdentifier(ITEM_TYPE_EDIT);
}

CKelPropertyTreeItemEdit::CKelPropertyTreeItemEdit(const CKelPropertyTreeItemEdit& other)
    : CEdit(),
      CKelPropertyTreeItem(other),
      m_strValue(other.m_strValue),
      m_strUndoValue(other.m_strUndoValue),
      m_eValueFormat(other.m_eValueFormat),
      m_nPassword(other.m_nPassword),
      m_nHasMinMax(other.m_nHasMinMax),
      m_pJoinedEdit(other.m_pJoinedEdit),
      m_nJoinFlags(other.m_nJoinFlags),
      m_dMax(other.m_dMax),
      m_dMin(other.m_dMin),
      m_pLabelOwner(other.m_pLabelOwner),
      m_strAdditionalTextInfo(other.m_strAdditionalTextInfo),
      m_nLimitText(other.m_nLimitText),
      m_bEditBoxSizeAutoAdapt(other.m_bEditBoxSizeAutoAdapt),
      m_nLastChar(other.m_nLastChar)
{
}

CKelPropertyTreeItemEdit& CKelPropertyTreeItemEdit::operator=(const CKelPropertyTreeItemEdit& other)
{
    if (this == &other)
        return *this;
    CKelPropertyTreeItem::operator=(other);
    m_strValue = other.m_strValue;
    m_strUndoValue = other.m_strUndoValue;
    m_eValueFormat = other.m_eValueFormat;
    m_nPassword = other.m_nPassword;
    m_nHasMinMax = other.m_nHasMinMax;
    m_pJoinedEdit = other.m_pJoinedEdit;
    m_nJoinFlags = other.m_nJoinFlags;
    m_dMax = other.m_dMax;
    m_dMin = other.m_dMin;
    m_pLabelOwner = other.m_pLabelOwner;
    m_strAdditionalTextInfo = other.m_strAdditionalTextInfo;
    m_nLimitText = other.m_nLimitText;
    m_bEditBoxSizeAutoAdapt = other.m_bEditBoxSizeAutoAdapt;
    m_nLastChar = other.m_nLastChar;
    return *this;
}

// The window goes first, while the row is whole: a focused edit hears of its focus loss
// during the destruction, and a dying row must not commit.
CKelPropertyTreeItemEdit::~CKelPropertyTreeItemEdit()
{
    m_bDestroying = true;
    if (m_hWnd != nullptr && FromHandlePermanent(m_hWnd) == this)
        DestroyWindow();
}

// ---- helpers ----

double CKelPropertyTreeItemEdit::NumberOf(const CString& text)
{
    CString copy(text);
    copy.Replace(',', '.');
    return std::atof(copy);
}

// The window's text alone; the value stays.
void CKelPropertyTreeItemEdit::SetWindowTextOnly(const char* text)
{
    if (m_hWnd != nullptr)
        ::SetWindowTextA(m_hWnd, text ? text : "");
}

CKelPropertyTreeList* CKelPropertyTreeItemEdit::GetList() const
{
    CKelPropertyTree* tree = GetItemOwner();
    return tree != nullptr ? tree->GetCtrlParent() : nullptr;
}

// ---- value access ----

CString CKelPropertyTreeItemEdit::GetItemText(int committed)
{
    CString text;
    GetItemText(text, committed);
    return text;
}

void CKelPropertyTreeItemEdit::GetItemText(CString& text, int committed)
{
    if (committed || m_hWnd == nullptr)
        text = m_strValue;
    else
        CWnd::GetWindowText(text);
}

void CKelPropertyTreeItemEdit::GetItemValue(double& value, int committed)
{
    value = NumberOf(GetItemText(committed));
}

void CKelPropertyTreeItemEdit::GetItemValue(int& value, int committed)
{
    value = std::atoi(GetItemText(committed));
}

void CKelPropertyTreeItemEdit::SetItemValue(CString value)
{
    m_strValue = value;
}

void CKelPropertyTreeItemEdit::SetItemValue(double value)
{
    if (m_eValueFormat == VALUE_FORMAT_DOUBLE)
        m_strValue.Format("%f", value);
}

void CKelPropertyTreeItemEdit::SetItemValue(int value)
{
    if (m_eValueFormat == VALUE_FORMAT_INTEGER)
        m_strValue.Format("%d", value);
}

// Appends a blank and the text, and only to a value that is not empty.
void CKelPropertyTreeItemEdit::AddItemValue(const char* text)
{
    if (m_strValue.IsEmpty())
        return;
    m_strValue += " ";
    m_strValue += text ? text : "";
}

void* CKelPropertyTreeItemEdit::GetTypeIndependentItemValue()
{
    return &m_strValue;
}

// A value copied between rows is the text of another edit row.
void CKelPropertyTreeItemEdit::SetItemValue(void* pValue)
{
    if (pValue != nullptr)
        SetItemValue(*static_cast<CString*>(pValue));
}

void CKelPropertyTreeItemEdit::SetAdditionalTextInfo(const char* text)
{
    m_strAdditionalTextInfo = text ? text : "";
}

void CKelPropertyTreeItemEdit::SetWindowTextA(const char* text)
{
    m_strValue = text ? text : "";
    SetWindowTextOnly(m_strValue);
}

// ---- settings ----

// A date row opens the date dialog when clicked, not this edit.
void CKelPropertyTreeItemEdit::SetValueFormat(ValueFormat format)
{
    m_eValueFormat = format;
    if (format == VALUE_FORMAT_DATE)
        SetDateBox(1);
}

void CKelPropertyTreeItemEdit::SetMinMax(double min, double max)
{
    if (!(min < max))
        return;
    m_dMin = min;
    m_dMax = max;
    m_nHasMinMax = 1;
}

void CKelPropertyTreeItemEdit::JoinConditionWith(CKelPropertyTreeItemEdit* pOther, unsigned flags)
{
    if (pOther == nullptr)
        return;
    if ((flags & JOIN_GREATER) && (flags & JOIN_LESS))
        return;
    m_pJoinedEdit = pOther;
    m_nJoinFlags = flags;
}

void CKelPropertyTreeItemEdit::SetLimitText(unsigned limit)
{
    m_nLimitText = limit;
    if (m_hWnd != nullptr && (m_eValueFormat == VALUE_FORMAT_TEXT || m_eValueFormat == VALUE_FORMAT_STD_STRING))
        SendMessage(EM_LIMITTEXT, limit);
}

// ---- validation ----

// Numbers must scan as one number and nothing else; a sign is allowed in front only, and
// a lone sign is a number being typed. Texts are always valid.
int CKelPropertyTreeItemEdit::IsValid()
{
    if (m_eValueFormat != VALUE_FORMAT_INTEGER && m_eValueFormat != VALUE_FORMAT_DOUBLE)
        return 1;
    CString text;
    CWnd::GetWindowText(text);
    if (text == "-")
        return 1;
    if (m_eValueFormat == VALUE_FORMAT_DOUBLE)
        text.Replace(',', '.');
    const char* body = text;
    if (*body == '-')
        ++body;
    std::string rest(std::strlen(body) + 1, '\0');
    if (m_eValueFormat == VALUE_FORMAT_DOUBLE)
    {
        double number = 0.0;
        if (std::sscanf(body, "%lf%s", &number, &rest[0]) != 1)
            return 0;
        return number >= 0.0 ? 1 : 0;
    }
    int number = 0;
    if (std::sscanf(body, "%d%s", &number, &rest[0]) != 1)
        return 0;
    return number >= 0 ? 1 : 0;
}

int CKelPropertyTreeItemEdit::IsValid2Confirm()
{
    CString text;
    GetItemText(text, 0);
    const bool number = m_eValueFormat == VALUE_FORMAT_INTEGER || m_eValueFormat == VALUE_FORMAT_DOUBLE;
    if (m_nHasMinMax)
    {
        bool inside = true;
        if (number)
        {
            const double v = NumberOf(text);
            inside = v >= m_dMin && v <= m_dMax;
        }
        else if (m_eValueFormat == VALUE_FORMAT_TEXT || m_eValueFormat == VALUE_FORMAT_STD_STRING)
        {
            inside = static_cast<double>(text.GetLength()) <= m_dMax;
        }
        if (!inside)
        {
            SetWindowTextOnly(m_strValue);
            ErrorMessage_MinMax();
            return 0;
        }
    }
    if (m_pJoinedEdit != nullptr)
    {
        const double mine = NumberOf(text);
        const double other = NumberOf(m_pJoinedEdit->m_strValue);
        const bool equalAllowed = (m_nJoinFlags & JOIN_EQUAL) != 0;
        if (m_nJoinFlags & JOIN_LESS)
            return (mine < other || (equalAllowed && mine == other)) ? 1 : 0;
        if (m_nJoinFlags & JOIN_GREATER)
            return (mine > other || (equalAllowed && mine == other)) ? 1 : 0;
        if (equalAllowed)
            return mine == other ? 1 : 0;
        return 0;
    }
    return 1;
}

// The host speaks the message in its own language: it gets the text number and the limits,
// separated by 30 and closed by 31.
void CKelPropertyTreeItemEdit::ErrorMessage_MinMax()
{
    CKelPropertyTree* tree = GetItemOwner();
    if (tree == nullptr || tree->GetExternalMessageBox() == nullptr || GetValidatingMsgBoxTextID() <= 0)
        return;
    char text[160];
    switch (m_eValueFormat)
    {
    case VALUE_FORMAT_INTEGER:
        std::snprintf(text, sizeof(text), "%.0f%c%.0f%c%c", m_dMin, 30, m_dMax, 30, 31);
        break;
    case VALUE_FORMAT_TEXT:
    case VALUE_FORMAT_STD_STRING:
        std::snprintf(text, sizeof(text), "%.3f%c%c", m_dMax, 30, 31);
        break;
    default:
        std::snprintf(text, sizeof(text), "%.3f%c%.3f%c%c", m_dMin, 30, m_dMax, 30, 31);
        break;
    }
    // The host's box takes the focus while it is up; that is no end of the edit.
    const bool wasInMessage = m_bInMessage;
    m_bInMessage = true;
    tree->GetExternalMessageBox()(GetValidatingMsgBoxTextID(), text);
    m_bInMessage = wasInMessage;
}

// ---- the variable ----

void CKelPropertyTreeItemEdit::UpdateData()
{
    void* variable = GetBoundVariable();
    if (variable == nullptr)
        return;
    switch (m_eValueFormat)
    {
    case VALUE_FORMAT_DOUBLE:
        m_strValue.Format("%f", *static_cast<double*>(variable));
        break;
    case VALUE_FORMAT_INTEGER:
        m_strValue.Format("%d", *static_cast<int*>(variable));
        break;
    case VALUE_FORMAT_STD_STRING:
        m_strValue.Format("%s", static_cast<std::string*>(variable)->c_str());
        break;
    default:
        m_strValue.Format("%s", static_cast<const char*>(*static_cast<CString*>(variable)));
        break;
    }
}

void CKelPropertyTreeItemEdit::DoItemDataExchange()
{
    void* variable = GetBoundVariable();
    if (variable == nullptr)
        return;
    switch (m_eValueFormat)
    {
    case VALUE_FORMAT_DOUBLE:
        *static_cast<double*>(variable) = std::atof(m_strValue);
        break;
    case VALUE_FORMAT_INTEGER:
        *static_cast<int*>(variable) = std::atoi(m_strValue);
        break;
    case VALUE_FORMAT_STD_STRING:
        static_cast<std::string*>(variable)->assign(static_cast<const char*>(m_strValue));
        break;
    default:
        *static_cast<CString*>(variable) = m_strValue;
        break;
    }
}

// ---- the activation cycle ----

void CKelPropertyTreeItemEdit::OnActivate()
{
    m_nLastChar = 0;
    CKelPropertyTreeList* list = GetList();
    if (m_hWnd == nullptr)
    {
        if (list == nullptr || list->m_hWnd == nullptr ||
            !Create(WS_CHILD | ES_AUTOHSCROLL, GetAttributeRect(), list, GetCtrlID()))
        {
            // Nothing to edit in: the row does not stay active.
            CKelPropertyTreeItem::OnActivate();
            return;
        }
        SetFont(CKelPropertyTree::GetNormalFont(), FALSE);
    }
    SetPasswordChar(m_nPassword ? '*' : 0);
    if (m_eValueFormat == VALUE_FORMAT_TEXT || m_eValueFormat == VALUE_FORMAT_STD_STRING)
        SendMessage(EM_LIMITTEXT, m_nLimitText);
    SetWindowTextOnly(m_strValue);
    SetSel(0, -1);
    SendMessage(EM_SCROLLCARET);
    const RECT& rc = GetAttributeRect();
    SetWindowPos(nullptr, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top,
                 SWP_NOZORDER | SWP_SHOWWINDOW);
    SetFocus();
}

void CKelPropertyTreeItemEdit::OnCommit(int& notify)
{
    if (m_hWnd != nullptr)
        ShowWindow(SW_HIDE);
    m_strUndoValue = m_strValue;
    if (m_nLastChar == VK_ESCAPE)
    {
        notify = 0;
        if (m_pLabelOwner != nullptr)
            m_pLabelOwner->SetLabelText(m_strValue);
        return;
    }
    CString text;
    GetItemText(text, 0);
    if (m_eValueFormat != VALUE_FORMAT_TEXT && m_eValueFormat != VALUE_FORMAT_STD_STRING)
    {
        text.Replace(',', '.');
        if (std::atof(text) == NumberOf(m_strValue))
            notify = 0;
    }
    else if (text == m_strValue)
    {
        notify = 0;
    }
    if (m_pLabelOwner != nullptr)
    {
        m_pLabelOwner->SetLabelText(text);
        if (notify)
        {
            m_pLabelOwner->SendNotify4This(PTN_ITEM_CHANGED);
            notify = 0;
        }
    }
    m_strValue = text;
    if (m_eValueFormat == VALUE_FORMAT_DOUBLE)
        m_strValue.Format("%f", std::atof(text));
    DoItemDataExchange();
}

void CKelPropertyTreeItemEdit::OnCancel()
{
    SetWindowTextOnly(m_strValue);
    CommitChanges(0);
}

void CKelPropertyTreeItemEdit::OnUndo()
{
    m_strValue = m_strUndoValue;
    SetWindowTextOnly(m_strValue);
}

void CKelPropertyTreeItemEdit::OnRefresh()
{
    SetWindowTextOnly(m_strValue);
}

void CKelPropertyTreeItemEdit::OnMove()
{
    if (m_hWnd == nullptr)
        return;
    const RECT& rc = GetAttributeRect();
    SetWindowPos(nullptr, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top, SWP_NOZORDER | SWP_NOACTIVATE);
}
