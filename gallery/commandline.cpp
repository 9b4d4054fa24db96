// Reading the gallery's command line.
#include "commandline.h"

#include "console.h"

#include <windows.h>
#include <shellapi.h>

#include <vector>

const char kGalleryUsage[] =
    "usage: KelGallery.exe [--shots DIR]\n"
    "  (no option)   show the gallery\n"
    "  --shots DIR   write every page as DIR\\NN-<page>.png and exit";

bool ParseGalleryCommandLine(const wchar_t* commandLine, GalleryOptions& options, std::string& error)
{
    options = GalleryOptions();
    int argc = 0;
    LPWSTR* argv = CommandLineToArgvW(commandLine, &argc);
    if (argv == nullptr)
    {
        error = "cannot read the command line";
        return false;
    }
    std::vector<std::wstring> args(argv + 1, argv + argc);   // argv[0] is the program
    LocalFree(argv);

    const std::wstring kShots = L"--shots";
    for (size_t i = 0; i < args.size(); ++i)
    {
        const std::wstring& arg = args[i];
        if (arg == L"--help" || arg == L"-h" || arg == L"/?")
        {
            options.help = true;
        }
        else if (arg == kShots)
        {
            if (i + 1 >= args.size() || args[i + 1].empty())
            {
                error = "--shots needs a folder";
                return false;
            }
            options.shots = true;
            options.shotsFolder = args[++i];
        }
        else if (arg.compare(0, kShots.size() + 1, kShots + L"=") == 0)
        {
            options.shots = true;
            options.shotsFolder = arg.substr(kShots.size() + 1);
            if (options.shotsFolder.empty())
            {
                error = "--shots needs a folder";
                return false;
            }
        }
        else
        {
            error = "unknown argument \"" + NarrowText(arg) + "\"";
            return false;
        }
    }
    return true;
}
