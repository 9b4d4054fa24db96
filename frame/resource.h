// Resource identifiers of the library's own resources.
#pragma once

// The keys an in-place edit keeps for itself (IsReservedKeyForEditControl).
#define IDR_EDIT_ACCELERATORS 108
