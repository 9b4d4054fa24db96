// KelWinCtrl: initialisation of the library by its host, and the host's services.
//
// Classes and types in this header:
//   KelWinCtrlInitRecord   the record of host entries handed in once at start-up
//   IKelRegistryService    host service 20: where the library keeps its registry values
//   IKelHostStateGuard     host service 34: brackets each host call that runs a dialog
//   CKelWinApp             the library's application object
// and the shared text and key utilities (texts by number, fixed-length names, shortening,
// name search, key state, the reserved keys of in-place editors).
//
// A host initialises the library once, on its user-interface thread, before it creates a
// control:
//
//     KelWinCtrlInitRecord rec = {};
//     rec.cbSize = sizeof(rec);
//     rec.dwVersion = KELWINCTRL_RECORD_VERSION;
//     rec.pfnGetColorRgb = &MyGetColorRgb;     // ... every entry the host's dialogs use
//     rec.pfnQueryService = &MyQueryService;
//     rec.pfnReleaseService = &MyReleaseService;
//     if (KelWinCtrlInic(&rec))
//         GetKelWinApp()->InitRegistry();
//
// Threads: every entry is called on the user-interface thread. The host selection calls also
// run entries 7, 8 (surface selection), 9, 10 (services), 12, 13 (main windows) and 16
// (bitmap path) on a worker thread of the library; a host has to accept that.
#pragma once
#include <afxwin.h>

#include <stdint.h>

#ifdef KELWINCTRL_BUILDING
#define KELWINCTRL_API __declspec(dllexport)
#else
#define KELWINCTRL_API __declspec(dllimport)
#endif

class ArrayData;

// The version a host must put into KelWinCtrlInitRecord::dwVersion.
#define KELWINCTRL_RECORD_VERSION 0x24060502u

// Numbers of the host services reached through pfnQueryService.
#define KELWINCTRL_SERVICE_REGISTRY 20
#define KELWINCTRL_SERVICE_HOST_STATE_GUARD 34

// Host entries. All use the C calling convention; a host supplies what its dialogs use.
typedef uint32_t(__cdecl* PFN_KEL_GETCOLORRGB)(int32_t* colorNumber);
typedef void(__cdecl* PFN_KEL_DRAWEFLINE)(HDC hDC, double* scaleFactor, double* rect, int* clipRect, int* lineNumber,
                                          int* penNumber, int* cell1, int* cell2, int* colour, double factor,
                                          int documentId, int mode);
typedef void(__cdecl* PFN_KEL_DRAWSURFACE)(int documentId, int surface, HDC hDC, double* rect, int mode,
                                           int flags);
typedef int32_t(__cdecl* PFN_KEL_GETMASSTABTEXT)(char* buffer, int size, int index);
typedef int32_t(__cdecl* PFN_KEL_SELECTLAYER)(ArrayData* data, HWND owner, int* layerId, int* cell1, int* cell2,
                                              int* cell3, int* cell4, int* cell5, int* cell6);
typedef void(__cdecl* PFN_KEL_SHOWWINDOWS)(int show, void* call);
typedef void(__cdecl* PFN_KEL_EDITSURFACE)(int documentId, char* path, char* name, const char* frameTag,
                                           int* result, PFN_KEL_SHOWWINDOWS showWindows, void* call);
typedef int32_t(__cdecl* PFN_KEL_QUERYSERVICE)(int serviceId, void** service);
typedef int32_t(__cdecl* PFN_KEL_RELEASESERVICE)(int serviceId, void* service);
typedef int32_t(__cdecl* PFN_KEL_ISMASKEFNABORTED)();
typedef HWND(__cdecl* PFN_KEL_GETMAINWINDOW)();
typedef void(__cdecl* PFN_KEL_SETLENGTHFORMAT)(int32_t* cell1, int32_t* cell2, double* cell3);
typedef void(__cdecl* PFN_KEL_DRAWTRANSPARENTBITMAP)(HDC hDC, HBITMAP hBitmap, int x, int y, int width, int height,
                                                     uint32_t transparentColor, int flag);
typedef int32_t(__cdecl* PFN_KEL_EDITBITMAPPATH)(int documentId, wchar_t* path, wchar_t* name);

// The record a host hands to KelWinCtrlInic. On 32-bit Windows it is exactly 18 words,
// 72 bytes; on 64-bit Windows the entry words are pointer-sized and cbSize is its size.
struct KelWinCtrlInitRecord
{
    uint32_t cbSize;                                       // sizeof(KelWinCtrlInitRecord)
    uint32_t dwVersion;                                    // KELWINCTRL_RECORD_VERSION
    PFN_KEL_GETCOLORRGB pfnGetColorRgb;                    // colour number to 0x00RRGGBB
    PFN_KEL_DRAWEFLINE pfnDrawEfline;                      // draws a line-type sample
    PFN_KEL_DRAWSURFACE pfnDrawSurface;                    // draws a surface sample
    PFN_KEL_GETMASSTABTEXT pfnGetMasstabText;              // text of the n-th scale, -1 past the last
    PFN_KEL_SELECTLAYER pfnSelectLayer;                    // modal layer selection
    PFN_KEL_EDITSURFACE pfnEditSurfaceAlt;                 // surface selection, second form
    PFN_KEL_EDITSURFACE pfnEditSurface;                    // surface selection, first form
    PFN_KEL_QUERYSERVICE pfnQueryService;                  // service object by number
    PFN_KEL_RELEASESERVICE pfnReleaseService;              // gives the object back
    PFN_KEL_ISMASKEFNABORTED pfnIsMaskeFnAborted;          // last selection asked to leave the dialog
    PFN_KEL_GETMAINWINDOW pfnGetMainWindow;                // the host's main window
    PFN_KEL_GETMAINWINDOW pfnGetEmbeddedMainWindow;        // frame of an embedding host, or null
    PFN_KEL_SETLENGTHFORMAT pfnSetLengthFormat;            // brings the length format up to date
    PFN_KEL_DRAWTRANSPARENTBITMAP pfnDrawTransparentBitmap;// transparent blit
    PFN_KEL_EDITBITMAPPATH pfnEditBitmapPath;              // bitmap path selection
    void* reserved;                                        // never read
};

#if defined(_WIN64)
static_assert(sizeof(KelWinCtrlInitRecord) == 8 + 16 * sizeof(void*), "record: natural 64-bit layout");
#else
static_assert(sizeof(KelWinCtrlInitRecord) == 72, "record: 18 words of 4 bytes");
static_assert(offsetof(KelWinCtrlInitRecord, cbSize) == 0, "word 0");
static_assert(offsetof(KelWinCtrlInitRecord, dwVersion) == 4, "word 1");
static_assert(offsetof(KelWinCtrlInitRecord, pfnGetColorRgb) == 8, "word 2");
static_assert(offsetof(KelWinCtrlInitRecord, pfnDrawEfline) == 12, "word 3");
static_assert(offsetof(KelWinCtrlInitRecord, pfnDrawSurface) == 16, "word 4");
static_assert(offsetof(KelWinCtrlInitRecord, pfnGetMasstabText) == 20, "word 5");
static_assert(offsetof(KelWinCtrlInitRecord, pfnSelectLayer) == 24, "word 6");
static_assert(offsetof(KelWinCtrlInitRecord, pfnEditSurfaceAlt) == 28, "word 7");
static_assert(offsetof(KelWinCtrlInitRecord, pfnEditSurface) == 32, "word 8");
static_assert(offsetof(KelWinCtrlInitRecord, pfnQueryService) == 36, "word 9");
static_assert(offsetof(KelWinCtrlInitRecord, pfnReleaseService) == 40, "word 10");
static_assert(offsetof(KelWinCtrlInitRecord, pfnIsMaskeFnAborted) == 44, "word 11");
static_assert(offsetof(KelWinCtrlInitRecord, pfnGetMainWindow) == 48, "word 12");
static_assert(offsetof(KelWinCtrlInitRecord, pfnGetEmbeddedMainWindow) == 52, "word 13");
static_assert(offsetof(KelWinCtrlInitRecord, pfnSetLengthFormat) == 56, "word 14");
static_assert(offsetof(KelWinCtrlInitRecord, pfnDrawTransparentBitmap) == 60, "word 15");
static_assert(offsetof(KelWinCtrlInitRecord, pfnEditBitmapPath) == 64, "word 16");
static_assert(offsetof(KelWinCtrlInitRecord, reserved) == 68, "word 17");
#endif

// Host service 20.
class IKelRegistryService
{
public:
    // Writes the registry base string, at most 260 bytes with the terminator, such as
    // "Software\Company\Product\Version".
    virtual void GetRegistryBase(char* buffer) = 0;

protected:
    ~IKelRegistryService() = default;
};

// Host service 34.
class IKelHostStateGuard
{
public:
    virtual void Enter() = 0;   // before a host call that runs a selection dialog
    virtual void Leave() = 0;   // after it

protected:
    ~IKelHostStateGuard() = default;
};

// Takes the host's entries. 1 when the record was taken, 0 when the user refused a record
// of another size or version. A null entry leaves the one given earlier in place.
extern "C" KELWINCTRL_API uint32_t __cdecl KelWinCtrlInic(const KelWinCtrlInitRecord* record);

// The library's application object.
class KELWINCTRL_API CKelWinApp : public CWinApp
{
public:
    CKelWinApp();

    // Kept for hosts that call it: does nothing and answers 1.
    int InitBitmaps(int);
    // Derives the registry key and profile name from the host's service 20. Call it after
    // KelWinCtrlInic. Answers 1.
    int InitRegistry();

    DECLARE_MESSAGE_MAP()
};

// The library's one application object.
KELWINCTRL_API CKelWinApp* GetKelWinApp();

// ---- text and key utilities ----
//
//     CString caption;
//     GetDorvatText(caption, 2100177);          // a text of the host's table, blanks cut
//     CString name("Wall");
//     ConvertToAscii(name, 8);                  // "Wall    ", for a fixed-length field
//     ConvertToIso(name);                       // "Wall" again

// Bits of GetKelWinCtrlAsyncKeyState.
#define KELWINCTRL_KEY_SHIFT 0x1
#define KELWINCTRL_KEY_CONTROL 0x2
#define KELWINCTRL_KEY_ALT 0x4

// Text `number` of the host's table with line breaks, at most 256 characters, trailing blanks
// cut; "" when the table has no such text. parameters is null or a parameter block: the
// values in order, each followed by the character 30, the block ended by 31, 31.
KELWINCTRL_API void GetDorvatText(CString& text, uint32_t number);
KELWINCTRL_API void GetDorvatText(CString& text, uint32_t number, char* parameters);
// The same as one line: line breaks become blanks.
KELWINCTRL_API void GetDorvatTextSingleLine(CString& text, uint32_t number);
KELWINCTRL_API void GetDorvatTextSingleLine(CString& text, uint32_t number, char* parameters);

// A blank-padded name of the host's fixed-length fields to a text: trailing blanks cut.
KELWINCTRL_API void ConvertToIso(CString& text);
// A text to a fixed-length field: padded with blanks on the right up to length; a longer
// text stays as it is.
KELWINCTRL_API void ConvertToAscii(CString& text, int length);
// False for an empty name and for one that ends with a blank.
KELWINCTRL_API bool IsCorrectName(const char* name);
// text, or its longest prefix followed by "..." such that it fits into width with offset
// added; "..." alone when no prefix fits. An empty text stays empty.
KELWINCTRL_API CString MakeShortedString(CDC* dc, const char* text, int width, int offset);
// whole: name equals text; otherwise name occurs in text. Without caseSensitive both are
// compared in upper case.
KELWINCTRL_API bool FindNameIsInText(const char* name, const char* text, bool caseSensitive, bool whole);
// The keys held right now: KELWINCTRL_KEY_SHIFT, _CONTROL, _ALT.
KELWINCTRL_API int32_t GetKelWinCtrlAsyncKeyState();
// 1 when the key message belongs to an edit control rather than to the host's accelerators:
// the clipboard keys, Delete and Space (sent to hwnd as WM_COMMAND 0 through the library's
// accelerator table), or a character key pressed without Control and Alt. 0 otherwise.
KELWINCTRL_API int32_t IsReservedKeyForEditControl(HWND hwnd, MSG* msg);
