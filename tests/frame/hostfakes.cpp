// Fake host entries for the frame tests.
#include "hostfakes.h"

#include <cstddef>
#include <cstring>

namespace frame_test
{
namespace
{
// Each fake leaves its set's tag behind, so that every instance has a body of its own and an
// address of its own.
volatile int g_lastTag = 0;

template <int Tag>
uint32_t __cdecl GetColorRgb(int32_t*)
{
    return Tag + 2;
}
template <int Tag>
void __cdecl DrawEfline(HDC, double*, double*, int*, int*, int*, int*, int*, int*, double, int, int)
{
    g_lastTag = Tag + 3;
}
template <int Tag>
void __cdecl DrawSurface(int, int, HDC, double*, int, int)
{
    g_lastTag = Tag + 4;
}
template <int Tag>
int32_t __cdecl GetMasstabText(char*, int, int)
{
    return Tag + 5;
}
template <int Tag>
int32_t __cdecl SelectLayer(ArrayData*, HWND, int*, int*, int*, int*, int*, int*, int*)
{
    return Tag + 6;
}
template <int Tag>
void __cdecl EditSurfaceAlt(int, char*, char*, const char*, int*, PFN_KEL_SHOWWINDOWS, void*)
{
    g_lastTag = Tag + 7;
}
template <int Tag>
void __cdecl EditSurface(int, char*, char*, const char*, int*, PFN_KEL_SHOWWINDOWS, void*)
{
    g_lastTag = Tag + 8;
}
template <int Tag>
int32_t __cdecl QueryService(int, void**)
{
    return Tag + 9;
}
template <int Tag>
int32_t __cdecl ReleaseService(int, void*)
{
    return Tag + 10;
}
template <int Tag>
int32_t __cdecl IsMaskeFnAborted()
{
    return Tag + 11;
}
template <int Tag>
HWND __cdecl GetMainWindow()
{
    return reinterpret_cast<HWND>(static_cast<INT_PTR>(Tag + 12));
}
template <int Tag>
HWND __cdecl GetEmbeddedMainWindow()
{
    return reinterpret_cast<HWND>(static_cast<INT_PTR>(Tag + 13));
}
template <int Tag>
void __cdecl SetLengthFormat(int32_t*, int32_t*, double*)
{
    g_lastTag = Tag + 14;
}
template <int Tag>
void __cdecl DrawTransparentBitmap(HDC, HBITMAP, int, int, int, int, uint32_t, int)
{
    g_lastTag = Tag + 15;
}
template <int Tag>
int32_t __cdecl EditBitmapPath(int, wchar_t*, wchar_t*)
{
    return Tag + 16;
}

template <int Tag>
KelWinCtrlInitRecord FullRecord()
{
    KelWinCtrlInitRecord record = EmptyRecord();
    record.pfnGetColorRgb = &GetColorRgb<Tag>;
    record.pfnDrawEfline = &DrawEfline<Tag>;
    record.pfnDrawSurface = &DrawSurface<Tag>;
    record.pfnGetMasstabText = &GetMasstabText<Tag>;
    record.pfnSelectLayer = &SelectLayer<Tag>;
    record.pfnEditSurfaceAlt = &EditSurfaceAlt<Tag>;
    record.pfnEditSurface = &EditSurface<Tag>;
    record.pfnQueryService = &QueryService<Tag>;
    record.pfnReleaseService = &ReleaseService<Tag>;
    record.pfnIsMaskeFnAborted = &IsMaskeFnAborted<Tag>;
    record.pfnGetMainWindow = &GetMainWindow<Tag>;
    record.pfnGetEmbeddedMainWindow = &GetEmbeddedMainWindow<Tag>;
    record.pfnSetLengthFormat = &SetLengthFormat<Tag>;
    record.pfnDrawTransparentBitmap = &DrawTransparentBitmap<Tag>;
    record.pfnEditBitmapPath = &EditBitmapPath<Tag>;
    return record;
}

template <typename Fn>
const void* Address(Fn fn)
{
    return reinterpret_cast<const void*>(fn);
}

// Words 2 to 16 follow one another as pointer-sized words.
static_assert(offsetof(KelWinCtrlInitRecord, pfnEditBitmapPath) ==
                  offsetof(KelWinCtrlInitRecord, pfnGetColorRgb) + 14 * sizeof(void*),
              "entry words are consecutive");

size_t OffsetOfWord(int word)
{
    return offsetof(KelWinCtrlInitRecord, pfnGetColorRgb) + static_cast<size_t>(word - 2) * sizeof(void*);
}

// Taken while the test program starts, after the library was loaded and before any test.
const EntryValues g_entriesAtStart = CurrentEntries();
}

EntryValues CurrentEntries()
{
    return {Address(::pfnGetColorRgb),     Address(::pfnDrawEfline),
            Address(::pfnDrawSurface),     Address(::pfnGetMasstabText),
            Address(::pfnSelectLayer),     Address(::pfnEditSurfaceAlt),
            Address(::pfnEditSurface),     Address(::pfnQueryService),
            Address(::pfnReleaseService),  Address(::pfnIsMaskeFnAborted),
            Address(::pfnGetMainWindow),   Address(::pfnGetEmbeddedMainWindow),
            Address(::pfnSetLengthFormat), Address(::pfnDrawTransparentBitmap),
            Address(::pfnEditBitmapPath)};
}

EntryValues RecordEntries(const KelWinCtrlInitRecord& record)
{
    EntryValues values;
    for (int word = 2; word <= 16; ++word)
        std::memcpy(&values[static_cast<size_t>(word - 2)],
                    reinterpret_cast<const char*>(&record) + OffsetOfWord(word), sizeof(void*));
    return values;
}

KelWinCtrlInitRecord EmptyRecord()
{
    KelWinCtrlInitRecord record;
    std::memset(&record, 0, sizeof(record));
    record.cbSize = sizeof(KelWinCtrlInitRecord);
    record.dwVersion = KELWINCTRL_RECORD_VERSION;
    return record;
}

KelWinCtrlInitRecord FullRecordA()
{
    return FullRecord<1000>();
}

KelWinCtrlInitRecord FullRecordB()
{
    return FullRecord<2000>();
}

void CopyWord(KelWinCtrlInitRecord& to, const KelWinCtrlInitRecord& from, int word)
{
    std::memcpy(reinterpret_cast<char*>(&to) + OffsetOfWord(word),
                reinterpret_cast<const char*>(&from) + OffsetOfWord(word), sizeof(void*));
}

const EntryValues& EntriesAtStart()
{
    return g_entriesAtStart;
}
}
