// Resource ids of the framework test program.
#pragma once

// A dialog with a label, an edit and OK/Cancel, present only in the test program.
#define IDD_KELFW_TEST_EDIT 2001
#define IDC_KELFW_TEST_LABEL 2002
#define IDC_KELFW_TEST_EDIT 2003

// Property pages with one edit each.
#define IDD_KELFW_TEST_PAGE_ONE 2010
#define IDD_KELFW_TEST_PAGE_TWO 2011
#define IDC_KELFW_TEST_PAGE_EDIT 2012

// Strings present only in the test program.
#define IDS_KELFW_TEST_ONLY_HERE 2020
#define IDS_KELFW_TEST_PAGE_ONE 2021
#define IDS_KELFW_TEST_PAGE_TWO 2022
#define IDS_KELFW_TEST_COMPANY 2023
#define IDS_KELFW_TEST_PROMPT 2024
