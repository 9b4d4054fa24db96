// The edit row's model: value forms, formats, settings, the variable both ways, copying.
#include <gtest/gtest.h>

#include "pttest.h"

#include <string>

namespace
{
using Edit = CKelPropertyTreeItemEdit;
}

TEST(EditModel, NewRowIsAnEditOfTextWithItsDefaults)
{
    Edit row;
    EXPECT_EQ(ITEM_TYPE_EDIT, row.GetIdentifier());
    EXPECT_EQ(Edit::VALUE_FORMAT_TEXT, row.GetValueFormat());
    EXPECT_EQ(0, row.IsPassword());
    EXPECT_EQ(0, row.HasMinMax());
    EXPECT_EQ(1.0, row.GetMax());
    EXPECT_EQ(0.0, row.GetMin());
    EXPECT_EQ(32767u, row.GetLimitText());
    EXPECT_FALSE(row.IsEditBoxSizeAutoAdapt());
    EXPECT_EQ(0u, row.GetLastChar());
    EXPECT_EQ(nullptr, row.GetJoinedEdit());
    EXPECT_EQ(nullptr, row.GetItemLabelOwner());
    EXPECT_EQ(0, row.IsCommitted());
    EXPECT_EQ(nullptr, row.m_hWnd);   // the window comes with the first activation
    EXPECT_EQ(CString(""), row.GetItemText(1));
}

TEST(EditModel, DateFormatMarksTheRowAsDateBox)
{
    Edit row;
    row.SetValueFormat(Edit::VALUE_FORMAT_DOUBLE);
    EXPECT_FALSE(row.IsDateBox());
    row.SetValueFormat(Edit::VALUE_FORMAT_DATE);
    EXPECT_TRUE(row.IsDateBox());
}

TEST(EditModel, SetItemValueDoubleFormatsOnlyInDoubleFormat)
{
    Edit row;
    row.SetItemValue(CString("keep"));
    row.SetValueFormat(Edit::VALUE_FORMAT_INTEGER);
    row.SetItemValue(2.25);   // silently ignored on an integer row
    EXPECT_EQ(CString("keep"), row.GetItemText(1));
    row.SetValueFormat(Edit::VALUE_FORMAT_TEXT);
    row.SetItemValue(2.25);
    EXPECT_EQ(CString("keep"), row.GetItemText(1));
    row.SetValueFormat(Edit::VALUE_FORMAT_DOUBLE);
    row.SetItemValue(2.25);
    EXPECT_EQ(CString("2.250000"), row.GetItemText(1));
}

TEST(EditModel, SetItemValueIntFormatsOnlyInIntegerFormat)
{
    Edit row;
    row.SetValueFormat(Edit::VALUE_FORMAT_DOUBLE);
    row.SetItemValue(CString("1.000000"));
    row.SetItemValue(7);
    EXPECT_EQ(CString("1.000000"), row.GetItemText(1));
    row.SetValueFormat(Edit::VALUE_FORMAT_INTEGER);
    row.SetItemValue(-7);
    EXPECT_EQ(CString("-7"), row.GetItemText(1));
    int i = 0;
    row.GetItemValue(i, 1);
    EXPECT_EQ(-7, i);
    double d = 0;
    row.GetItemValue(d, 1);
    EXPECT_EQ(-7.0, d);
}

TEST(EditModel, SetItemValueTextStoresInEveryFormat)
{
    for (int f = 0; f <= 4; ++f)
    {
        Edit row;
        row.SetValueFormat(static_cast<Edit::ValueFormat>(f));
        row.SetItemValue(CString("abc"));
        EXPECT_EQ(CString("abc"), row.GetItemText(1)) << "format " << f;
    }
}

TEST(EditModel, AddItemValueAppendsABlankAndTheTextToANonEmptyValueOnly)
{
    Edit row;
    row.AddItemValue("mm");
    EXPECT_EQ(CString(""), row.GetItemText(1));
    row.SetItemValue(CString("12"));
    row.AddItemValue("mm");
    EXPECT_EQ(CString("12 mm"), row.GetItemText(1));
}

TEST(EditModel, CommaIsReadAsPointWhenAValueIsAskedAsNumber)
{
    Edit row;
    row.SetItemValue(CString("1,5"));
    double d = 0;
    row.GetItemValue(d, 1);
    EXPECT_EQ(1.5, d);
}

TEST(EditModel, SetMinMaxNeedsMinBelowMax)
{
    Edit row;
    row.SetMinMax(5, 5);   // changes nothing
    EXPECT_EQ(0, row.HasMinMax());
    EXPECT_EQ(0.0, row.GetMin());
    EXPECT_EQ(1.0, row.GetMax());
    row.SetMinMax(6, 5);
    EXPECT_EQ(0, row.HasMinMax());
    row.SetMinMax(-2, 3);
    EXPECT_EQ(1, row.HasMinMax());
    EXPECT_EQ(-2.0, row.GetMin());
    EXPECT_EQ(3.0, row.GetMax());
}

TEST(EditModel, JoinIgnoresANullPartnerAndGreaterWithLess)
{
    Edit a, b;
    a.JoinConditionWith(nullptr, Edit::JOIN_LESS);
    EXPECT_EQ(nullptr, a.GetJoinedEdit());
    EXPECT_EQ(0u, a.GetJoinFlags());
    a.JoinConditionWith(&b, Edit::JOIN_LESS | Edit::JOIN_GREATER);
    EXPECT_EQ(nullptr, a.GetJoinedEdit());
    a.JoinConditionWith(&b, Edit::JOIN_LESS | Edit::JOIN_EQUAL);
    EXPECT_EQ(&b, a.GetJoinedEdit());
    EXPECT_EQ(12u, a.GetJoinFlags());
}

TEST(EditModel, SetWindowTextStoresTheValueWithoutAWindow)
{
    Edit row;
    row.SetWindowText("typed");   // the name every caller of a window uses
    EXPECT_EQ(CString("typed"), row.GetItemText(1));
    EXPECT_EQ(CString("typed"), row.GetItemText(0));   // no window: the value
}

TEST(EditModel, UpdateDataTakesTheVariableInEachFormat)
{
    Edit none;
    none.SetItemValue(CString("stays"));
    none.UpdateData();   // no variable: nothing
    EXPECT_EQ(CString("stays"), none.GetItemText(1));

    double d = 2.5;
    Edit rd;
    rd.SetValueFormat(Edit::VALUE_FORMAT_DOUBLE);
    rd.SetItemDataExchange(&d);
    rd.UpdateData();
    EXPECT_EQ(CString("2.500000"), rd.GetItemText(1));

    int i = -42;
    Edit ri;
    ri.SetValueFormat(Edit::VALUE_FORMAT_INTEGER);
    ri.SetItemDataExchange(&i);
    ri.UpdateData();
    EXPECT_EQ(CString("-42"), ri.GetItemText(1));

    std::string s = "std text";
    Edit rs;
    rs.SetValueFormat(Edit::VALUE_FORMAT_STD_STRING);
    rs.SetItemValue(CString("old"));
    rs.UpdateData();   // a null variable is skipped
    EXPECT_EQ(CString("old"), rs.GetItemText(1));
    rs.SetItemDataExchange(&s);
    rs.UpdateData();
    EXPECT_EQ(CString("std text"), rs.GetItemText(1));

    CString c = "mfc text";
    for (Edit::ValueFormat f : {Edit::VALUE_FORMAT_TEXT, Edit::VALUE_FORMAT_DATE})
    {
        Edit rc;
        rc.SetValueFormat(f);
        rc.SetItemDataExchange(&c);
        rc.UpdateData();
        EXPECT_EQ(CString("mfc text"), rc.GetItemText(1));
    }
}

TEST(EditModel, DoItemDataExchangeWritesTheVariableInEachFormat)
{
    Edit none;
    none.SetItemValue(CString("x"));
    none.DoItemDataExchange();   // nothing bound, nothing written, no crash

    double d = 0;
    Edit rd;
    rd.SetValueFormat(Edit::VALUE_FORMAT_DOUBLE);
    rd.SetItemDataExchange(&d);
    rd.SetItemValue(CString("3.25"));
    rd.DoItemDataExchange();
    EXPECT_EQ(3.25, d);

    int i = 0;
    Edit ri;
    ri.SetValueFormat(Edit::VALUE_FORMAT_INTEGER);
    ri.SetItemDataExchange(&i);
    ri.SetItemValue(CString("17"));
    ri.DoItemDataExchange();
    EXPECT_EQ(17, i);

    std::string s;
    Edit rs;
    rs.SetValueFormat(Edit::VALUE_FORMAT_STD_STRING);
    rs.SetItemDataExchange(&s);
    rs.SetItemValue(CString("std"));
    rs.DoItemDataExchange();
    EXPECT_EQ("std", s);

    CString c;
    Edit rc;
    rc.SetItemDataExchange(&c);
    rc.SetItemValue(CString("cstr"));
    rc.DoItemDataExchange();
    EXPECT_EQ(CString("cstr"), c);
}

TEST(EditModel, TypeIndependentValueIsTheValueTextAndCopiesIntoAnotherEditRow)
{
    Edit a, b;
    a.SetItemValue(CString("walls"));
    void* p = a.GetTypeIndependentItemValue();
    ASSERT_NE(nullptr, p);
    EXPECT_EQ(CString("walls"), *static_cast<CString*>(p));
    b.SetItemValue(p);
    EXPECT_EQ(CString("walls"), b.GetItemText(1));
    b.SetItemValue(static_cast<void*>(nullptr));   // nothing to copy
    EXPECT_EQ(CString("walls"), b.GetItemText(1));
}

TEST(EditModel, TreeCopiesEditValuesBetweenLayers)
{
    CKelPropertyTree tree;
    CKelPropertyTreeItem* layerA = tree.InsertItem(new CKelPropertyTreeItem());
    CKelPropertyTreeItem* layerB = tree.InsertItem(new CKelPropertyTreeItem());
    layerA->SetResID(PT_RESID_LAYER);
    layerB->SetResID(PT_RESID_LAYER);
    Edit* source = new Edit();
    Edit* destination = new Edit();
    tree.InsertItem(source, layerA);
    tree.InsertItem(destination, layerB);
    source->SetItemValue(CString("3.5 m"));
    destination->SetItemValue(CString("old"));
    std::vector<CKelPropertyTreeItem*> sources = {layerA}, destinations = {layerB};
    tree.CopyItemValues(sources, destinations);
    EXPECT_EQ(CString("3.5 m"), destination->GetItemText(1));
}

TEST(EditModel, CopyTakesValueAndSettingsButNoWindow)
{
    Edit a;
    a.SetValueFormat(Edit::VALUE_FORMAT_DOUBLE);
    a.SetMinMax(1, 9);
    a.SetAsPassword(1);
    a.SetItemValue(CString("4.000000"));
    a.SetAdditionalTextInfo("m");
    Edit b(a);
    EXPECT_EQ(ITEM_TYPE_EDIT, b.GetIdentifier());
    EXPECT_EQ(Edit::VALUE_FORMAT_DOUBLE, b.GetValueFormat());
    EXPECT_EQ(1, b.HasMinMax());
    EXPECT_EQ(9.0, b.GetMax());
    EXPECT_EQ(1, b.IsPassword());
    EXPECT_EQ(CString("4.000000"), b.GetItemText(1));
    EXPECT_EQ(CString("m"), b.GetAdditionalTextInfo());
    EXPECT_EQ(nullptr, b.m_hWnd);
    Edit c;
    c = a;
    EXPECT_EQ(CString("4.000000"), c.GetItemText(1));
    EXPECT_EQ(Edit::VALUE_FORMAT_DOUBLE, c.GetValueFormat());
}

TEST(EditModel, AdditionalTextNullIsEmpty)
{
    Edit row;
    row.SetAdditionalTextInfo("x");
    row.SetAdditionalTextInfo(nullptr);
    EXPECT_EQ(CString(""), row.GetAdditionalTextInfo());
}

TEST(EditModel, ActivationWithoutATreeWindowLeavesTheRowInactive)
{
    CKelPropertyTree tree;   // no window, so no list to lay an edit on
    Edit* row = new Edit();
    tree.InsertItem(row);
    row->Activate();
    EXPECT_FALSE(row->IsActivated());
    EXPECT_EQ(nullptr, tree.GetItemLastActivated());
    EXPECT_EQ(nullptr, row->m_hWnd);
}
