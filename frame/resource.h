// Resource identifiers of the library's own resources.
#pragma once

// The keys an in-place edit keeps for itself (IsReservedKeyForEditControl).
#define IDR_EDIT_ACCELERATORS 108

// Cursors of a row drag: no drop here, drop as a child, drop as a sibling.
#define IDC_PT_DROP 105
#define IDC_PT_NODROP 106
#define IDC_PT_DROP_SIBLING 113
