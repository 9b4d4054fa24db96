// The gallery's pages: what each page is told about the host, and the list of pages.
//
// A new page is one line in GetGalleryPages() (pages.cpp):
//
//     {"valueedit", &MakeGalleryPage<CPageValueEdit>},
//
// where CPageValueEdit is a CPropertyPage with a constructor taking const GalleryHostState&.
#pragma once
#include <afxwin.h>
#include <kelwinctrl.h>

#include <memory>
#include <stdint.h>
#include <vector>

// What the gallery knows about its own start-up; every page may show it.
struct GalleryHostState
{
    KelWinCtrlInitRecord record;   // the record as handed to KelWinCtrlInic
    uint32_t inicResult;           // KelWinCtrlInic's answer
    int initRegistryResult;        // CKelWinApp::InitRegistry's answer (0 when not called)
};

struct GalleryPageEntry
{
    const char* name;   // short name of the page; its shot is NN-<name>.png
    std::unique_ptr<CPropertyPage> (*create)(const GalleryHostState& host);
};

template <class TPage>
std::unique_ptr<CPropertyPage> MakeGalleryPage(const GalleryHostState& host)
{
    return std::make_unique<TPage>(host);
}

// The gallery's pages, in the order of their tabs.
const std::vector<GalleryPageEntry>& GetGalleryPages();
