// CGalleryApp: the gallery program. It starts the library as a host does, then shows its
// sheet of pages, or with --shots writes every page as a PNG file and exits.
#pragma once
#include "pages.h"

#include <afxwin.h>

#include <string>

class CGallerySheet;

class CGalleryApp : public CWinApp
{
public:
    CGalleryApp();

    BOOL InitInstance() override;
    // Answers the program's exit code: 0, or non-zero after a failure.
    int ExitInstance() override;

private:
    // Fills the host record, hands it to the library and lets it derive its registry place.
    bool StartLibrary();
    // Shows the sheet until the user closes it.
    void RunInteractive();
    // Writes NN-<page>.png for every page into the folder; the exit code.
    int RunShots(const std::wstring& folder);

    GalleryHostState m_host;
    int m_nExitCode;
};
