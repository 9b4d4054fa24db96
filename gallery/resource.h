// Resource identifiers of the gallery program.
#pragma once

// Page templates
#define IDD_PAGE_WELCOME 200

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
