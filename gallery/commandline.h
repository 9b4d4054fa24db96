// The gallery's command line:
//
//     KelGallery.exe                 shows the gallery
//     KelGallery.exe --shots DIR     writes every page as DIR\NN-<page>.png and exits
//     KelGallery.exe --help          lists these forms
#pragma once
#include <string>

struct GalleryOptions
{
    bool help = false;
    bool shots = false;
    std::wstring shotsFolder;
};

// The usage text printed by --help and after a wrong command line.
extern const char kGalleryUsage[];

// Reads the whole command line of the process (the program's name first). False, with a
// message in error, when it is not one of the forms above.
bool ParseGalleryCommandLine(const wchar_t* commandLine, GalleryOptions& options, std::string& error);
