// The gallery's host entries: the functions it hands to the library in KelWinCtrlInitRecord.
//
//     KelWinCtrlInitRecord record = {};
//     record.cbSize = sizeof(record);
//     record.dwVersion = KELWINCTRL_RECORD_VERSION;
//     FillGalleryHostEntries(record);
//     KelWinCtrlInic(&record);
#pragma once
#include <kelwinctrl.h>

#include <stdint.h>

// Puts the gallery's entries into the record; cbSize and dwVersion are left to the caller.
void FillGalleryHostEntries(KelWinCtrlInitRecord& record);

// The window that pfnGetMainWindow answers: the gallery's sheet while it exists, else null.
void SetGalleryMainWindow(HWND hWnd);

// What pfnSetLengthFormat last received, so that a page can show that the library called it.
struct GalleryLengthFormatCall
{
    int calls;         // number of calls so far
    int32_t cell1;     // the three cells of the last call
    int32_t cell2;
    double cell3;
};
GalleryLengthFormatCall GetGalleryLengthFormatCalls();

// The entries themselves, in record order. Each uses the C calling convention, as the record
// requires, and none lets an exception out.
uint32_t __cdecl GalleryGetColorRgb(int32_t* colorNumber);
void __cdecl GalleryDrawEfline(HDC hDC, double* scaleFactor, double* rect, int* clipRect, int* lineNumber,
                               int* penNumber, int* cell1, int* cell2, int* colour, double factor, int documentId,
                               int mode);
void __cdecl GalleryDrawSurface(int kind, int value, HDC hDC, double* rect, int documentId, int flags);
int32_t __cdecl GalleryGetMasstabText(char* buffer, int size, int index);
int32_t __cdecl GalleryIsMaskeFnAborted();
HWND __cdecl GalleryGetMainWindow();
HWND __cdecl GalleryGetEmbeddedMainWindow();
void __cdecl GallerySetLengthFormat(int32_t* cell1, int32_t* cell2, double* cell3);
void __cdecl GalleryDrawTransparentBitmap(HDC hDC, HBITMAP hBitmap, int x, int y, int width, int height,
                                          uint32_t transparentColor, int flag);
