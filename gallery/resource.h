// Resource identifiers of the gallery program.
#pragma once

// Page templates
#define IDD_PAGE_WELCOME 200
#define IDD_PAGE_VALUEFIELDS 201
#define IDD_PAGE_PROPERTIES 203

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

// Controls of the properties page
#define IDC_PP_TREE_PLACE 1301
#define IDC_PP_TREE 1302
#define IDC_PP_READOUT 1303
#define IDC_PP_EVENT 1304
