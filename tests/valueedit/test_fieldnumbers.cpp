// The number paths of the value fields: GetItemValue, SetItemValue, SetWindowText with a
// number, and the value of an in-place edit's notification, over a host unit service.
#include "valueeditfixture.h"

#include <unitservice.h>

#include <cstring>

using namespace kel_ve_test;

namespace
{
class FieldUnits : public IKelUnitSettings
{
public:
    int GetLengthUnit() override { return unit; }
    int GetInputMode() override { return mode; }
    int unit = eKelUnitMillimetre;
    int mode = 0;
};
FieldUnits g_fieldUnits;

int32_t __cdecl FieldQueryService(int id, void** service)
{
    *service = id == KELHOSTKIT_SERVICE_UNIT_SETTINGS ? static_cast<IKelUnitSettings*>(&g_fieldUnits) : nullptr;
    return *service != nullptr ? 1 : 0;
}
int32_t __cdecl FieldReleaseService(int, void*)
{
    return 1;
}
void __cdecl FieldSetLengthFormat(int32_t*, int32_t*, double*)
{
}

struct FieldNumbersTest : ::testing::Test
{
    CRecordingFrame frame;
    CKelValueEditEx field;
    void SetUp() override
    {
        KelWinCtrlInitRecord record;
        std::memset(&record, 0, sizeof(record));
        record.cbSize = sizeof(record);
        record.dwVersion = KELWINCTRL_RECORD_VERSION;
        record.pfnQueryService = &FieldQueryService;
        record.pfnReleaseService = &FieldReleaseService;
        record.pfnSetLengthFormat = &FieldSetLengthFormat;
        ASSERT_EQ(1u, KelWinCtrlInic(&record));
        g_fieldUnits.unit = eKelUnitMillimetre;
        g_fieldUnits.mode = 0;
        ASSERT_TRUE(frame.CreateFrame());
        ASSERT_TRUE(field.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, CRect(10, 10, 210, 34), &frame, 100));
    }
    void TearDown() override
    {
        frame.DestroyWindow();
        kel_test::PumpPending();
    }
};
}

TEST_F(FieldNumbersTest, GetItemValueReadsAnExpressionInTheCurrentUnit)
{
    field.SetWindowText("1000 + 250");
    double value = -1;
    EXPECT_EQ(1, field.GetItemValue(value));
    EXPECT_DOUBLE_EQ(1250.0, value);

    g_fieldUnits.unit = eKelUnitMetre;   // the next conversion sees the new unit
    field.SetWindowText("250mm");
    EXPECT_EQ(1, field.GetItemValue(value));
    EXPECT_DOUBLE_EQ(0.25, value);
}

TEST_F(FieldNumbersTest, GetItemValueOfTextThatIsNoNumberAnswersZeroWithValueZero)
{
    for (const char* text : {"abc", "1+", ""})
    {
        field.SetWindowText(text);
        double value = 99.0;
        EXPECT_EQ(0, field.GetItemValue(value)) << text;
        EXPECT_EQ(0.0, value) << text;
        EXPECT_STREQ(text, field.GetText()) << text;   // the field's text is left as it was
    }
}

TEST_F(FieldNumbersTest, SetItemValueShowsTheNumberInTheCurrentMode)
{
    EXPECT_EQ(1, field.SetItemValue(12.5));
    EXPECT_STREQ("12.5", field.GetText());

    g_fieldUnits.unit = eKelUnitInch;
    g_fieldUnits.mode = 3;
    EXPECT_EQ(1, field.SetItemValue(42.5));
    EXPECT_STREQ("3' 6 1/2\"", field.GetText());
    double value = 0;
    EXPECT_EQ(1, field.GetItemValue(value));
    EXPECT_DOUBLE_EQ(42.5, value);
}

TEST_F(FieldNumbersTest, SetWindowTextWithANumberWritesFourDecimals)
{
    CKelValueEdit plain;
    ASSERT_TRUE(plain.Create(WS_CHILD | WS_VISIBLE, CRect(10, 50, 210, 74), &frame, 101));
    EXPECT_TRUE(plain.SetWindowText(0.25, true));
    CString text;
    plain.GetWindowText(text);
    EXPECT_STREQ("0.25", text);
    EXPECT_TRUE(plain.SetWindowText(1.23456789, true));
    plain.GetWindowText(text);
    EXPECT_STREQ(GetStringFromEditValue(1.23456789, true, 4), text);
    EXPECT_STRNE(GetStringFromEditValue(1.23456789, true, 6), text);
    // The text form is still there beside the number form.
    plain.SetWindowText("free text");
    plain.GetWindowText(text);
    EXPECT_STREQ("free text", text);
}

TEST_F(FieldNumbersTest, EndlabeleditValueReadsTheNotifiedText)
{
    LVITEMA item = {};
    item.pszText = const_cast<char*>("2.5m");
    double value = 0;
    EXPECT_TRUE(CKelValueEdit::GetEndlabeleditValue(&item, &value, true));
    EXPECT_DOUBLE_EQ(2500.0, value);
    item.pszText = const_cast<char*>("2.5 apples");
    EXPECT_FALSE(CKelValueEdit::GetEndlabeleditValue(&item, &value, true));
    item.pszText = nullptr;   // a cancelled edit carries no text: no value
    EXPECT_FALSE(CKelValueEdit::GetEndlabeleditValue(&item, &value, true));
}

TEST_F(FieldNumbersTest, InPlaceEditReportsAValueTheOwnerCanRead)
{
    HWND hList = ::CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | LVS_REPORT, 10, 50, 300, 150,
                                   frame.m_hWnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(600)), nullptr, nullptr);
    ASSERT_NE(nullptr, hList);
    CKelValueEditEx* pEdit = new CKelValueEditEx;
    pEdit->DoInPlace(0, 1);
    ASSERT_TRUE(pEdit->Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(100, 20, 280, 42), CWnd::FromHandle(hList), 1));
    HWND hEdit = pEdit->m_hWnd;
    kel_test::PostChars(hEdit, "1.5m+20");
    PostKeyDown(hEdit, VK_RETURN);
    kel_test::PumpPending();
    std::vector<NotifySeen> ends = frame.EndLabelEdits();
    ASSERT_EQ(1u, ends.size());
    LVITEMA item = {};
    std::string text = ends[0].text;
    item.pszText = &text[0];
    double value = 0;
    EXPECT_TRUE(CKelValueEdit::GetEndlabeleditValue(&item, &value, true));
    EXPECT_DOUBLE_EQ(1520.0, value);
    EXPECT_FALSE(::IsWindow(hEdit));
}
