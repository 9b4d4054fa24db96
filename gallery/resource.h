// Resource identifiers of the gallery program.
#pragma once

// Page templates
#define IDD_PAGE_WELCOME 200
#define IDD_PAGE_VALUEFIELDS 201
// BEGIN numbers page template
#define IDD_PAGE_NUMBERS 202
// END numbers page template

// Controls of the welcome page
#define IDC_WELCOME_ABOUT 1001
#define IDC_WELCOME_INIC 1002
#define IDC_WELCOME_KEY 1003
#define IDC_WELCOME_PROFILE 1004
#define IDC_WELCOME_SERVICES 1005
#define IDC_WELCOME_SCALES 1006
#define IDC_WELCOME_COLOURS 1007
#define IDC_WELCOME_BASE 1008
#define IDC_WELCOME_ABOUT2 1009
#define IDC_WELCOME_SAMPLES 1010

// Controls of the value fields page
#define IDC_VF_PLAIN 1101
#define IDC_VF_COLOURED 1102
#define IDC_VF_READONLY 1103
#define IDC_VF_UNIT_MM 1104
#define IDC_VF_UNIT_M 1105
#define IDC_VF_UNIT_FTIN 1106
#define IDC_VF_LENGTH 1107
#define IDC_VF_SHOWASVALUE 1108
#define IDC_VF_LENGTH_VALUE 1109
#define IDC_VF_LIST 1110
#define IDC_VF_LIST_STATUS 1111
#define IDC_VF_INPLACE 1112

// BEGIN controls of the numbers page
#define IDC_NUM_LENGTH 1201
#define IDC_NUM_COUNT 1202
#define IDC_NUM_PRICE 1203
#define IDC_NUM_ITEM 1204
#define IDC_NUM_LENGTH_VALUE 1205
#define IDC_NUM_COUNT_VALUE 1206
#define IDC_NUM_PRICE_VALUE 1207
#define IDC_NUM_ITEM_VALUE 1208
#define IDC_NUM_DELETED 1209
#define IDC_NUM_PRICE_FORMAT 1210
// END controls of the numbers page
